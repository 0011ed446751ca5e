#include "sound/vocals/VocalCanceller.h"

#include "sound/dsp/WindowedTransform.h"
#include "sound/vocals/BandFilter.h"
#include "sound/vocals/BassHarmonics.h"
#include "sound/vocals/VoiceEstimate.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <numbers>
#include <vector>

namespace sound {
namespace {

// Long enough to part the harmonics of a voice from those of the instruments, short enough for its syllables.
constexpr double windowSeconds = 4096.0 / 44100;
constexpr std::size_t stepsAWindow = 4;

// Below it there is nothing to hear, and the filter of the band would be as long as songs are.
constexpr double lowestCutOff = 20;

std::size_t windowSize(SampleRate rate)
{
    const double exponent = std::log2(windowSeconds * rate.hertz);
    return std::size_t{1} << static_cast<unsigned>(std::max(4L, std::lround(exponent)));
}

}  // namespace

class VocalCanceller::Work
{
public:
    Work(SampleRate rate, const VoicePlace& place, double low, double high);

    std::size_t surroundings() const { return around; }
    std::size_t grid() const { return band.block(); }
    void remove(std::span<const float> from, std::span<float> to);

private:
    void turn(std::span<const float> from);
    void bandOf(const std::vector<float>& sound, std::vector<float>& inBand);
    TurnedSpectra analyse(std::size_t windows);
    void synthesize(const TurnedSpectra& spectra);

    float left;  // of the voice, in amplitude
    float right;
    WindowedTransform transform;
    BassHarmonics harmonics;
    BandFilter band;

    std::size_t lowBin;  // the first and the last that the voice is taken out of
    std::size_t highBin;
    std::size_t firstBin;  // of those that are looked at
    std::size_t bins;
    std::size_t around;

    std::vector<float> along;
    std::vector<float> across;
    std::vector<float> bandAlong;
    std::vector<float> bandAcross;
    std::vector<float> voice;
    Spectrum spectrum;
};

VocalCanceller::Work::Work(SampleRate rate, const VoicePlace& place, double low, double high)
    : transform(windowSize(rate), stepsAWindow)
    , harmonics(static_cast<double>(rate.hertz) / static_cast<double>(transform.size()), low)
    , band(rate.hertz, low, high, 2 * transform.step())
    , spectrum(transform.bins())
{
    const double angle = (place.pan + 100) / 200.0 * std::numbers::pi / 2;
    left = static_cast<float>(place.pan == 0 ? std::numbers::sqrt2 / 2 : std::cos(angle));
    right = static_cast<float>(place.pan == 0 ? std::numbers::sqrt2 / 2 : std::sin(angle));

    const double binWidth = static_cast<double>(rate.hertz) / static_cast<double>(transform.size());
    lowBin = static_cast<std::size_t>(std::ceil(low / binWidth));
    highBin = std::min(static_cast<std::size_t>(std::floor(high / binWidth)), transform.bins() - 1);
    firstBin = lowBin - std::min(lowBin, VoiceEstimate::binsAround);
    const std::size_t lastBin = std::min(highBin + VoiceEstimate::binsAround, transform.bins() - 1);
    bins = std::max(lastBin, firstBin) - firstBin + 1;

    // Two bands, one of the sound and one of the voice, and what an estimate needs in between.
    const std::size_t needed =
        3 * band.block() + transform.size() + VoiceEstimate::windowsAround * transform.step();
    around = (needed + band.block() - 1) / band.block() * band.block();
}

// Turns left and right by the angle at which the voice is in one channel only.
void VocalCanceller::Work::turn(std::span<const float> from)
{
    const std::size_t count = from.size() / 2;
    along.resize(count);
    across.resize(count);
    for (std::size_t frame = 0; frame < count; ++frame) {
        along[frame] = left * from[2 * frame] + right * from[2 * frame + 1];
        across[frame] = left * from[2 * frame + 1] - right * from[2 * frame];
    }
}

// In blocks of the grid. At the ends, where a block has no surroundings, there is nothing.
void VocalCanceller::Work::bandOf(const std::vector<float>& sound, std::vector<float>& inBand)
{
    inBand.assign(sound.size(), 0);
    const std::size_t block = band.block();
    for (std::size_t begin = block; begin + block + band.reach() <= sound.size(); begin += block)
        band.filter(std::span(sound).subspan(begin - band.reach(), 2 * block),
                    std::span(inBand).subspan(begin, block));
}

// A note outside the band is left out before as well as behind: what a window spreads of it would be taken for
// voice.
TurnedSpectra VocalCanceller::Work::analyse(std::size_t windows)
{
    TurnedSpectra spectra(windows, bins, harmonics.bins());
    const auto take = [this](Rows& real, Rows& imaginary, std::size_t window) {
        for (std::size_t bin = 0; bin < bins; ++bin) {
            real.row(window)[bin] = spectrum[firstBin + bin].real();
            imaginary.row(window)[bin] = spectrum[firstBin + bin].imag();
        }
    };
    for (std::size_t window = 0; window < windows; ++window) {
        const std::size_t begin = window * transform.step();
        transform.analyse(&bandAlong[begin], 1, spectrum);
        take(spectra.alongReal, spectra.alongImaginary, window);
        transform.analyse(&bandAcross[begin], 1, spectrum);
        take(spectra.acrossReal, spectra.acrossImaginary, window);
        transform.analyse(&along[begin], 1, spectrum);
        for (std::size_t bin = 0; bin < harmonics.bins(); ++bin)
            spectra.bass.row(window)[bin] = std::norm(spectrum[bin]);
    }
    return spectra;
}

void VocalCanceller::Work::synthesize(const TurnedSpectra& spectra)
{
    voice.assign(along.size(), 0);
    std::fill(spectrum.begin(), spectrum.end(), std::complex<float>{});
    const std::size_t windows = spectra.alongReal.count();
    for (std::size_t window = VoiceEstimate::windowsAround; window + VoiceEstimate::windowsAround < windows;
         ++window) {
        const float* real = spectra.alongReal.row(window);
        const float* imaginary = spectra.alongImaginary.row(window);
        for (std::size_t bin = lowBin; bin <= highBin; ++bin)
            spectrum[bin] = {real[bin - firstBin], imaginary[bin - firstBin]};
        transform.add(spectrum, voice.data() + window * transform.step(), 1);
    }
}

void VocalCanceller::Work::remove(std::span<const float> from, std::span<float> to)
{
    turn(from);
    bandOf(along, bandAlong);
    bandOf(across, bandAcross);
    TurnedSpectra spectra = analyse((along.size() - transform.size()) / transform.step() + 1);
    VoiceEstimate(spectra, firstBin, harmonics).estimate();
    synthesize(spectra);

    std::vector<float>& taken = bandAlong;
    bandOf(voice, taken);
    for (std::size_t frame = 0; frame < to.size() / 2; ++frame) {
        to[2 * frame] = from[2 * (around + frame)] - left * taken[around + frame];
        to[2 * frame + 1] = from[2 * (around + frame) + 1] - right * taken[around + frame];
    }
}

VocalCanceller::VocalCanceller(SampleRate rate, const VoicePlace& place)
{
    const double low = std::max(place.lowCutOff, lowestCutOff);
    const double high = std::min(place.highCutOff, rate.hertz / 2.0);
    if (low < high)
        work = std::make_unique<Work>(rate, place, low, high);
}

VocalCanceller::~VocalCanceller() = default;

FrameCount VocalCanceller::surroundings() const
{
    return {work ? static_cast<std::int64_t>(work->surroundings()) : 0};
}

FrameCount VocalCanceller::grid() const
{
    return {work ? static_cast<std::int64_t>(work->grid()) : 1};
}

void VocalCanceller::remove(std::span<const float> from, std::span<float> to)
{
    assert(from.size() == to.size() + 4 * static_cast<std::size_t>(surroundings().value));
    if (work)
        work->remove(from, to);
    else
        std::copy(from.begin(), from.end(), to.begin());
}

}  // namespace sound
