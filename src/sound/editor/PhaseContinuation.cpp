#include "sound/editor/PhaseContinuation.h"

#include "sound/editor/SpectralJoin.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>

namespace sound {
namespace {

// A partial whose angle between the two pieces stays the same has 1, noise much less.
constexpr float steadiest = 0.9F;

// Power against the strongest partial: what is fainter is not worth turning.
constexpr float faintest = 1e-6F;

// So many times as much power as within the last window, and a note is struck.
constexpr float struck = 1.5F;

// Power against that of the beginning: what has died away.
constexpr float silent = 1e-4F;

// Above this, half a turn within a join is a bend that nobody hears, and a stretcher's own small unrest is wider
// than a peak.
constexpr std::size_t highestHertz = 2000;

// Bins that a peak reaches to both sides.
constexpr std::size_t reach = 4;

// How many windows a partial takes to go back to its own phase, about a third of a second; and how many windows the
// attack has been in before it is noticed.
constexpr std::size_t windowsBack = 16;
constexpr std::size_t windowsUnnoticed = 2;

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

float around(const std::vector<float>& power, std::size_t bin)
{
    return power[bin - 1] + power[bin] + power[bin + 1];
}

bool isPeak(const std::vector<float>& power, std::size_t bin)
{
    return power[bin] > std::max(power[bin - 2], power[bin - 1]) &&
           power[bin] >= std::max(power[bin + 1], power[bin + 2]);
}

}  // namespace

// The window is twice as long as that of the join: it is to tell the partials of a bass apart.
PhaseContinuation::PhaseContinuation(SampleRate rate, int channelCount)
    : channels(static_cast<std::size_t>(channelCount))
    , common(static_cast<std::size_t>(SpectralJoin::length(rate).value))
    , transform(common / 2)
    , firstWhole(WindowedTransform::stepsAWindow - 1)
    , spectra(channels, Spectrum(transform.bins()))
    , others(spectra)
    , power(std::min(transform.bins(),
                     highestHertz * transform.size() / static_cast<std::size_t>(std::max(1, rate.hertz))))
    , stretch(transform.size() * channels)
    , difference(stretch.size())
{
}

void PhaseContinuation::carryOn(const float* leaving, std::vector<float>& coming)
{
    findPartials(leaving, coming.data());
    followPartials(coming);
    turnPartials(coming);
}

void PhaseContinuation::findPartials(const float* leaving, const float* coming)
{
    Spectrum cross(transform.bins());
    std::vector<float> ofLeaving(transform.bins());
    std::vector<float> ofComing(transform.bins());
    for (std::size_t frame = 0; frame + transform.size() <= common; frame += transform.step()) {
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::size_t first = frame * channels + channel;
            transform.analyse(leaving + first, channels, others[channel]);
            transform.analyse(coming + first, channels, spectra[channel]);
            for (std::size_t bin = 0; bin < cross.size(); ++bin) {
                cross[bin] += std::conj(spectra[channel][bin]) * others[channel][bin];
                ofLeaving[bin] += std::norm(others[channel][bin]);
                ofComing[bin] += std::norm(spectra[channel][bin]);
            }
        }
    }

    const float strongest = std::max(*std::max_element(ofLeaving.begin(), ofLeaving.end()),
                                     *std::max_element(ofComing.begin(), ofComing.end()));
    for (std::size_t bin = 0; bin < power.size(); ++bin)
        power[bin] = ofLeaving[bin] + ofComing[bin];
    partials.clear();
    for (std::size_t bin = 2; bin + 2 < power.size(); ++bin) {
        if (power[bin] <= faintest * strongest || !isPeak(power, bin))
            continue;
        const std::complex<float> sum = cross[bin - 1] + cross[bin] + cross[bin + 1];
        const float alike = std::abs(sum) / std::sqrt(around(ofLeaving, bin) * around(ofComing, bin));
        if (alike >= steadiest) {
            Partial partial;
            partial.angle = std::arg(sum);
            partial.path.assign(firstWhole, bin);
            partial.lately.fill(std::numeric_limits<float>::infinity());
            partials.push_back(partial);
        }
    }
}

// Each partial from window to window, up to where it ends.
void PhaseContinuation::followPartials(const std::vector<float>& coming)
{
    const std::size_t wholeWindows = coming.size() / (transform.step() * channels);
    bool any = !partials.empty();
    for (std::size_t index = firstWhole; index < wholeWindows && any; ++index) {
        analyse(coming, index);
        any = false;
        std::size_t lowest = 1;  // for the next partial
        for (Partial& partial : partials) {
            if (partial.path.size() == index && soundsOn(partial, index, lowest)) {
                lowest = partial.path.back() + 1;
                any = true;
            }
        }
    }
    for (Partial& partial : partials)
        partial.end = partial.path.size() == wholeWindows ? never : partial.path.size() - windowsUnnoticed;
}

// Whether a partial is still there in this window; its place is added to its path then.
bool PhaseContinuation::soundsOn(Partial& partial, std::size_t index, std::size_t lowest) const
{
    const auto last = power.begin() + static_cast<std::ptrdiff_t>(partial.path.back());
    const auto highest = static_cast<std::size_t>(std::max_element(last - 1, last + 2) - power.begin());
    const std::size_t bin = std::clamp<std::size_t>(highest, 1, power.size() - 2);
    const float now = around(power, bin);
    if (index == firstWhole)
        partial.firstPower = now;
    const float before = *std::min_element(partial.lately.begin(), partial.lately.end());
    if (bin < lowest || now > struck * before || now < silent * partial.firstPower)
        return false;
    partial.lately[index % partial.lately.size()] = now;
    partial.path.push_back(bin);
    return true;
}

void PhaseContinuation::turnPartials(std::vector<float>& coming)
{
    const std::size_t step = transform.step() * channels;
    const std::size_t windows = (coming.size() + difference.size() - 1) / step;
    std::size_t turned = 0;
    for (const Partial& partial : partials)
        turned = std::max(turned, std::min(partial.end, windows));
    if (turned == 0)
        return;

    std::fill(difference.begin(), difference.end(), 0.0F);
    for (std::size_t index = 0; index < std::min(windows, turned + firstWhole); ++index) {
        if (index < turned) {
            analyse(coming, index);
            for (Spectrum& spectrum : others)
                std::fill(spectrum.begin(), spectrum.end(), 0.0F);
            for (const Partial& partial : partials)
                turn(partial, index);
            for (std::size_t channel = 0; channel < channels; ++channel)
                transform.add(others[channel], difference.data() + channel, channels);
        }
        addDifference(coming, index);
    }
}

void PhaseContinuation::turn(const Partial& partial, std::size_t index)
{
    if (index >= partial.end)
        return;
    const std::size_t middle = partial.path[std::min(index, partial.path.size() - 1)];
    const auto left = static_cast<float>(std::min(partial.end - index, windowsBack));
    const std::complex<float> change = std::polar(1.0F, partial.angle * left / windowsBack) - 1.0F;
    std::size_t low = middle;
    while (low > 0 && low + reach > middle && power[low - 1] < power[low])
        --low;
    std::size_t high = middle;
    while (high + 1 < power.size() && high < middle + reach && power[high + 1] < power[high])
        ++high;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t bin = low; bin <= high; ++bin)
            others[channel][bin] = change * spectra[channel][bin];
    }
}

// The spectra of the window of this number, of which the first ones begin before the piece; silence is around it.
void PhaseContinuation::analyse(const std::vector<float>& coming, std::size_t index)
{
    const auto size = static_cast<std::int64_t>(stretch.size());
    const auto step = static_cast<std::int64_t>(transform.step() * channels);
    const std::int64_t begin = (static_cast<std::int64_t>(index) + 1) * step - size;
    const std::int64_t first = std::max<std::int64_t>(0, -begin);
    const std::int64_t last = std::min(size, static_cast<std::int64_t>(coming.size()) - begin);
    std::fill(stretch.begin(), stretch.end(), 0.0F);
    std::copy(coming.begin() + begin + first, coming.begin() + begin + last, stretch.begin() + first);

    std::fill(power.begin(), power.end(), 0.0F);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        transform.analyse(stretch.data() + channel, channels, spectra[channel]);
        for (std::size_t bin = 0; bin < power.size(); ++bin)
            power[bin] += std::norm(spectra[channel][bin]);
    }
}

// The first step of this window's difference, to which no later one adds: those windows begin behind it.
void PhaseContinuation::addDifference(std::vector<float>& coming, std::size_t index)
{
    const std::size_t step = transform.step() * channels;
    if (index >= firstWhole) {
        const std::size_t begin = (index - firstWhole) * step;
        const std::size_t count = std::min(step, coming.size() - begin);
        for (std::size_t sample = 0; sample < count; ++sample)
            coming[begin + sample] += difference[sample];
    }
    const auto rest =
        std::copy(difference.begin() + static_cast<std::ptrdiff_t>(step), difference.end(), difference.begin());
    std::fill(rest, difference.end(), 0.0F);
}

}  // namespace sound
