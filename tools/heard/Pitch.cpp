#include "heard/Pitch.h"

#include "heard/Fourier.h"
#include "heard/Peak.h"

#include <algorithm>
#include <cmath>

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
    const std::vector<double> weights = hannWindow(kWindow);
    std::vector<double> mean(kPadded / 2);
    for (std::size_t begin = 0; begin == 0 || begin + kWindow <= samples.size(); begin += kHop) {
        Spectrum spectrum(kPadded);
        for (std::size_t i = 0; i < std::min(kWindow, samples.size() - begin); ++i) {
            spectrum[i] = weights[i] * static_cast<double>(samples[begin + i]);
        }
        fourier.forward(spectrum);
        for (std::size_t bin = 0; bin < mean.size(); ++bin) {
            mean[bin] += magnitudeOf(spectrum[bin]);
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
    const std::vector<double> sums = sumsUpTo(cents);
    std::vector<double> lines(kCents);
    for (std::size_t cent = 0; cent < kCents; ++cent) {
        const std::size_t from = cent < kSlope ? 0 : cent - kSlope;
        const std::size_t to = std::min(kCents, cent + kSlope);
        lines[cent] = cents[cent] - (sums[to] - sums[from]) / static_cast<double>(to - from);
    }
    return lines;
}

// The cents of a sound, to be compared with another's.
struct Cents
{
    explicit Cents(const StereoSound& sound)
        : values(centSpectrum(sound))
        , correlator(values)
        , energies(energiesUpTo(values))
    {
    }

    double energyUpTo(std::size_t end) const { return energies[end]; }
    double energyFrom(std::size_t begin) const { return energies[kCents] - energies[begin]; }

    std::vector<double> values;
    Correlator correlator;
    std::vector<double> energies;
};

// The correlation coefficients of the cents that both have when the higher one is shifted down, by none and more.
std::vector<double> likenesses(const Cents& higher, const Cents& lower)
{
    std::vector<double> likeness = higher.correlator.with(lower.values);
    likeness.resize(kReach + 1);
    for (std::size_t shift = 0; shift < likeness.size(); ++shift) {
        const double energy = higher.energyFrom(shift) * lower.energyUpTo(kCents - shift);
        likeness[shift] = energy > 0 ? likeness[shift] / std::sqrt(energy) : 0;
    }
    return likeness;
}

PitchMatch bestShift(const Cents& sound, const Cents& reference)
{
    std::vector<double> likeness = likenesses(reference, sound);
    std::reverse(likeness.begin(), likeness.end());
    likeness.pop_back();
    const std::vector<double> upwards = likenesses(sound, reference);
    likeness.insert(likeness.end(), upwards.begin(), upwards.end());
    const double peak = peakBetween(likeness, 0, likeness.size());
    return {peak - static_cast<double>(kReach), 0, likeness[static_cast<std::size_t>(std::lround(peak))]};
}

}  // namespace

PitchMatch pitchOf(const StereoSound& stretch, const StereoSound& original, const TempoMatch& tempo)
{
    const Cents sound(stretch);
    PitchMatch best;
    for (const double place : tempo.places) {
        const double to = place + stretch.seconds() * tempo.ratio;
        PitchMatch match = bestShift(sound, Cents(stretchOf(original, place, to)));
        match.originalSecond = place;
        best = match.likeness > best.likeness ? match : best;
    }
    return best;
}

}  // namespace heard
