#include "heard/LoopPeriod.h"

#include "heard/Fourier.h"
#include "heard/Onsets.h"
#include "heard/Peak.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace heard {

namespace {

constexpr double kShortestSeconds = .25;
constexpr double kLongestPart = .4;  // of the stretch
constexpr double kLeastLikeness = .6;
constexpr double kNearlyAsGood = .9;
constexpr std::size_t kOnsetHop = 64;

// How a signal resembles itself a lag later: the products, and what they would be were the two the same.
struct SelfLikeness
{
    std::vector<double> products;
    std::vector<double> energies;

    double at(std::size_t lag) const { return energies[lag] > 0 ? products[lag] / energies[lag] : 0; }
};

SelfLikeness selfLikenessOf(const std::vector<double>& signal)
{
    SelfLikeness self{Correlator(signal).with(signal), std::vector<double>(signal.size())};
    const std::vector<double> energy = energiesUpTo(signal);
    for (std::size_t lag = 0; lag < signal.size(); ++lag) {
        const double early = energy[signal.size() - lag];
        const double late = energy.back() - energy[lag];
        self.energies[lag] = std::sqrt(early * late);
    }
    return self;
}

std::vector<double> likenesses(const SelfLikeness& self)
{
    std::vector<double> all(self.products.size());
    for (std::size_t lag = 0; lag < all.size(); ++lag) {
        all[lag] = self.at(lag);
    }
    return all;
}

std::vector<double> likenessOfBands(Bands courses)
{
    SelfLikeness sum;
    for (std::vector<double>& band : courses.bands) {
        const double mean = std::accumulate(band.begin(), band.end(), 0.0) / static_cast<double>(band.size());
        std::transform(band.begin(), band.end(), band.begin(), [mean](double value) { return value - mean; });
        const SelfLikeness self = selfLikenessOf(band);
        sum.products.resize(band.size());
        sum.energies.resize(band.size());
        for (std::size_t lag = 0; lag < band.size(); ++lag) {
            sum.products[lag] += self.products[lag];
            sum.energies[lag] += self.energies[lag];
        }
    }
    return likenesses(sum);
}

std::vector<double> likenessOfWaves(const StereoSound& stretch)
{
    const std::vector<float> samples = mono(stretch);
    return likenesses(selfLikenessOf({samples.begin(), samples.end()}));
}

// The period in steps of the likeness, given that it lies about there. Many passes apart the same fraction of a
// step is shared by all of them.
double exactPeriod(const std::vector<double>& likeness, double near, double reach)
{
    const auto peakAround = [&](double middle) {
        return peakBetween(likeness, static_cast<std::size_t>(middle - reach),
                           static_cast<std::size_t>(middle + reach) + 1);
    };
    const double period = peakAround(near);
    const double passes = std::floor(.7 * static_cast<double>(likeness.size()) / period);
    return peakAround(passes * period) / passes;
}

}  // namespace

// A time stretcher gives every pass other phases, so that the waves themselves may not agree. The spectra do, and
// tell where the music comes back, the beginnings of its notes say when to the frame, and the waves, where they
// agree, to a fraction of it.
std::optional<LoopPeriod> loopPeriodOf(const StereoSound& stretch)
{
    const Bands spectrogram = spectrogramOf(stretch);
    const std::vector<double> spectra = likenessOfBands(spectrogram);
    const auto shortest = static_cast<std::size_t>(kShortestSeconds * spectrogram.rate);
    const auto longest = static_cast<std::size_t>(kLongestPart * static_cast<double>(spectra.size()));
    if (longest <= shortest + 1) {
        return std::nullopt;
    }
    const double best = *std::max_element(spectra.begin() + static_cast<std::ptrdiff_t>(shortest),
                                          spectra.begin() + static_cast<std::ptrdiff_t>(longest));
    if (best < kLeastLikeness) {
        return std::nullopt;
    }

    // Two passes later the same is said as well: the first peak that is nearly as good is the period.
    std::size_t first = shortest;
    while (spectra[first] < kNearlyAsGood * best || spectra[first] < spectra[first + 1]) {
        ++first;
    }
    const double framesApart = static_cast<double>(first) * stretch.rate / spectrogram.rate;
    const std::vector<double> notes = likenessOfBands(bandOnsetsOf(stretch, kOnsetHop));
    const double byNotes = exactPeriod(notes, framesApart / kOnsetHop, 12) * kOnsetHop;
    const std::vector<double> waves = likenessOfWaves(stretch);
    const double byWaves = exactPeriod(waves, byNotes, kOnsetHop);

    const double agreement = waves[static_cast<std::size_t>(std::lround(byWaves))];
    return agreement > kLeastLikeness ? LoopPeriod{byWaves, agreement, true} : LoopPeriod{byNotes, best, false};
}

}  // namespace heard
