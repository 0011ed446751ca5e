#include "sound/editor/SpectralJoin.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr std::size_t steps = 24;  // from all of the one to all of the other
constexpr int rounds = 3;

// Long enough to tell the partials of a low chord apart.
std::size_t windowAt(SampleRate rate)
{
    return std::bit_floor(static_cast<std::size_t>(std::max(rate.hertz, 640)) / 10);
}

// The same angle between half a turn back and half a turn on.
float shortest(float angle)
{
    constexpr float whole = 2 * std::numbers::pi_v<float>;
    return angle - whole * std::round(angle / whole);
}

}  // namespace

SpectralJoin::SpectralJoin(SampleRate rate, int channelCount)
    : channels(channelCount)
    , transform(windowAt(rate))
    , pairs(static_cast<std::size_t>(channelCount), Pair{Spectrum(transform.bins()), Spectrum(transform.bins())})
    , cross(transform.bins())
    , power(transform.bins())
    , peakOf(transform.bins())
    , turn(transform.bins())
    , really(transform.bins())
    , spectra((steps + 1) * pairs.size(), Spectrum(transform.bins()))
    , sum(static_cast<std::size_t>(length(rate).value * channelCount))
    , rest(sum.size())
    , covered(static_cast<std::size_t>(length(rate).value))
{
}

FrameCount SpectralJoin::length(SampleRate rate)
{
    const std::size_t window = windowAt(rate);
    return {static_cast<std::int64_t>(window + steps * window / WindowedTransform::stepsAWindow)};
}

void SpectralJoin::join(const float* leaving, const float* coming, float* joined)
{
    for (std::size_t index = 0; index <= steps; ++index) {
        for (int channel = 0; channel < channels; ++channel) {
            Pair& pair = pairs[static_cast<std::size_t>(channel)];
            analyse(leaving, index, channel, pair.leaving);
            analyse(coming, index, channel, pair.coming);
        }
        findPeaks();
        turnPeaks(index == 0);
        for (int channel = 0; channel < channels; ++channel)
            mix(pairs[static_cast<std::size_t>(channel)], static_cast<float>(index) / steps,
                between(index, channel));
    }

    std::copy(leaving, leaving + sum.size() / 2, rest.begin());
    std::copy(coming + sum.size() / 2, coming + sum.size(),
              rest.begin() + static_cast<std::ptrdiff_t>(sum.size() / 2));
    addUp();
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t index = 1; index < steps; ++index) {
            for (int channel = 0; channel < channels; ++channel)
                keepStrength(index, channel);
        }
        addUp();
    }
    std::copy(sum.begin(), sum.end(), joined);
}

// What noise becomes between the two is no sound's spectrum: added up, it lacks strength. The phases that it really
// has then, with the strength that it should have, come closer to one. (Griffin and Lim, "Signal estimation from
// modified short-time Fourier transform", 1984.)
void SpectralJoin::keepStrength(std::size_t index, int channel)
{
    Spectrum& wanted = between(index, channel);
    analyse(sum.data(), index, channel, really);
    for (std::size_t bin = 0; bin < really.size(); ++bin) {
        const float there = std::abs(really[bin]);
        if (there > 0)
            wanted[bin] = really[bin] * (std::abs(wanted[bin]) / there);
    }
}

// All spectra between the two sounds, and the rest of those at both ends.
void SpectralJoin::addUp()
{
    const auto stride = static_cast<std::size_t>(channels);
    std::fill(sum.begin(), sum.end(), 0.0F);
    std::fill(covered.begin(), covered.end(), 0.0F);
    for (std::size_t index = 0; index <= steps; ++index) {
        const std::size_t begin = index * transform.step();
        for (int channel = 0; channel < channels; ++channel)
            transform.add(between(index, channel), sum.data() + begin * stride + channel, stride);
        for (std::size_t frame = 0; frame < transform.size(); ++frame)
            covered[begin + frame] += transform.share(frame);
    }
    for (std::size_t sample = 0; sample < sum.size(); ++sample)
        sum[sample] += (1 - covered[sample / stride]) * rest[sample];
}

void SpectralJoin::analyse(const float* interleaved, std::size_t index, int channel, Spectrum& spectrum)
{
    const auto stride = static_cast<std::size_t>(channels);
    transform.analyse(interleaved + index * transform.step() * stride + channel, stride, spectrum);
}

// Each bin belongs to the nearest peak, as far as the valley on the way to the next.
void SpectralJoin::findPeaks()
{
    for (std::size_t bin = 0; bin < transform.bins(); ++bin) {
        cross[bin] = 0;
        power[bin] = 0;
        for (const Pair& pair : pairs) {
            cross[bin] += std::conj(pair.leaving[bin]) * pair.coming[bin];
            power[bin] += std::norm(pair.leaving[bin]) + std::norm(pair.coming[bin]);
        }
    }
    const auto isPeak = [this](std::size_t bin) {
        const auto stronger = [&](std::size_t other) {
            return other < power.size() &&
                   (power[other] > power[bin] || (power[other] == power[bin] && other < bin));
        };
        return !stronger(bin - 1) && !stronger(bin - 2) && !stronger(bin + 1) && !stronger(bin + 2);
    };
    std::size_t peak = 0;
    std::size_t begin = 0;
    bool any = false;
    for (std::size_t bin = 0; bin < power.size(); ++bin) {
        if (!isPeak(bin))
            continue;
        if (any) {
            const auto valley = std::min_element(power.begin() + static_cast<std::ptrdiff_t>(peak),
                                                 power.begin() + static_cast<std::ptrdiff_t>(bin));
            const auto border = static_cast<std::size_t>(valley - power.begin());
            std::fill(peakOf.begin() + static_cast<std::ptrdiff_t>(begin),
                      peakOf.begin() + static_cast<std::ptrdiff_t>(border), peak);
            begin = border;
        }
        peak = bin;
        any = true;
    }
    std::fill(peakOf.begin() + static_cast<std::ptrdiff_t>(begin), peakOf.end(), peak);
}

// By how much each bin turns from the leaving to the coming sound. What is half a turn apart could turn either way:
// a peak goes on the way it went before, and the bins around it go with it.
void SpectralJoin::turnPeaks(bool first)
{
    const std::vector<float>& before = turn;
    std::vector<float>& now = power;  // no longer needed
    for (std::size_t bin = 0; bin < transform.bins(); ++bin) {
        const std::size_t peak = peakOf[bin];
        const float ofPeak = std::arg(cross[peak]);
        const float led = first ? ofPeak : before[peak] + shortest(ofPeak - before[peak]);
        now[bin] = led + shortest(std::arg(cross[bin]) - led);
    }
    turn.swap(power);
}

void SpectralJoin::mix(const Pair& pair, float progress, Spectrum& mixed) const
{
    for (std::size_t bin = 0; bin < transform.bins(); ++bin) {
        const std::complex<float> leaving = pair.leaving[bin];
        const std::complex<float> coming = pair.coming[bin];
        const float strength = std::sqrt((1 - progress) * std::norm(leaving) + progress * std::norm(coming));
        const float ofChannel = turn[bin] + shortest(std::arg(std::conj(leaving) * coming) - turn[bin]);
        // From the stronger of the two, whose phase is the surer.
        const bool fromLeaving = std::norm(leaving) >= std::norm(coming);
        const float phase =
            fromLeaving ? std::arg(leaving) + progress * ofChannel : std::arg(coming) - (1 - progress) * ofChannel;
        mixed[bin] = std::polar(strength, phase);
    }
}

}  // namespace sound
