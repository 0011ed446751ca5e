#include "heard/Pitch.h"

#include "heard/Fourier.h"
#include "heard/Peak.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace heard {

namespace {

constexpr std::size_t kWindow = 16384;
constexpr std::size_t kPadded = 2 * kWindow;
constexpr std::size_t kHop = kWindow / 4;
constexpr double kLowestHertz = 80;
constexpr std::size_t kCents = 6600;  // up to 3600 Hz
constexpr std::size_t kReach = 1300;

// Mean magnitude of the whole sound in every bin.
std::vector<double> meanSpectrum(const StereoSound& sound)
{
    const std::vector<float> samples = mono(sound);
    const FourierTransform fourier(kPadded);
    std::vector<double> mean(kPadded / 2);
    for (std::size_t begin = 0; begin == 0 || begin + kWindow <= samples.size(); begin += kHop) {
        Spectrum spectrum(kPadded);
        for (std::size_t i = 0; i < std::min(kWindow, samples.size() - begin); ++i) {
            const double part = static_cast<double>(i) / kWindow;
            spectrum[i] =
                (.5 - .5 * std::cos(2 * std::numbers::pi * part)) * static_cast<double>(samples[begin + i]);
        }
        fourier.forward(spectrum);
        for (std::size_t bin = 0; bin < mean.size(); ++bin) {
            mean[bin] += std::abs(spectrum[bin]);
        }
    }
    return mean;
}

// One value a cent, from the lowest frequency up, freed of the slow slope of the sound's colour.
std::vector<double> centSpectrum(const StereoSound& sound)
{
    const std::vector<double> bins = meanSpectrum(sound);
    std::vector<double> cents(kCents);
    for (std::size_t cent = 0; cent < kCents; ++cent) {
        const double hertz = kLowestHertz * std::exp2(static_cast<double>(cent) / 1200);
        const double at = std::min(hertz * kPadded / sound.rate, static_cast<double>(bins.size() - 2));
        const auto whole = static_cast<std::size_t>(at);
        const double part = at - static_cast<double>(whole);
        cents[cent] = std::sqrt(bins[whole] * (1 - part) + bins[whole + 1] * part);
    }

    constexpr std::size_t kSlope = 400;
    std::vector<double> sums(kCents + 1);
    std::partial_sum(cents.begin(), cents.end(), sums.begin() + 1);
    std::vector<double> lines(kCents);
    for (std::size_t cent = 0; cent < kCents; ++cent) {
        const std::size_t from = cent < kSlope ? 0 : cent - kSlope;
        const std::size_t to = std::min(kCents, cent + kSlope);
        lines[cent] = cents[cent] - (sums[to] - sums[from]) / static_cast<double>(to - from);
    }
    return lines;
}

// The correlation coefficient of the cents that both have at this shift.
double likenessAt(const std::vector<double>& sound, const std::vector<double>& reference, std::ptrdiff_t shift)
{
    const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(kCents) - std::abs(shift);
    const auto one = sound.begin() + std::max<std::ptrdiff_t>(0, shift);
    const auto other = reference.begin() + std::max<std::ptrdiff_t>(0, -shift);
    const double product = std::inner_product(one, one + count, other, 0.0);
    const double energies =
        std::inner_product(one, one + count, one, 0.0) * std::inner_product(other, other + count, other, 0.0);
    return energies > 0 ? product / std::sqrt(energies) : 0;
}

PitchMatch bestShift(const std::vector<double>& sound, const std::vector<double>& reference)
{
    std::vector<double> likeness(2 * kReach + 1);
    for (std::size_t i = 0; i < likeness.size(); ++i) {
        const auto shift = static_cast<std::ptrdiff_t>(i) - static_cast<std::ptrdiff_t>(kReach);
        likeness[i] = likenessAt(sound, reference, shift);
    }
    const double peak = peakBetween(likeness, 0, likeness.size());
    return {peak - static_cast<double>(kReach), 0, likeness[static_cast<std::size_t>(std::lround(peak))]};
}

}  // namespace

PitchMatch pitchOf(const StereoSound& stretch, const StereoSound& original, const TempoMatch& tempo)
{
    const std::vector<double> sound = centSpectrum(stretch);
    PitchMatch best;
    for (const double place : tempo.places) {
        const double to = place + stretch.seconds() * tempo.ratio;
        PitchMatch match = bestShift(sound, centSpectrum(stretchOf(original, place, to)));
        match.originalSecond = place;
        best = match.likeness > best.likeness ? match : best;
    }
    return best;
}

}  // namespace heard
