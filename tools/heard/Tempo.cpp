#include "heard/Tempo.h"

#include "heard/Fourier.h"
#include "heard/Onsets.h"
#include "heard/Peak.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace heard {

namespace {

constexpr double kSlowest = .35;
constexpr double kFastest = 2.2;
constexpr double kLeastTempoLikeness = .4;
constexpr double kNearlyAsGoodAPlace = .85;

// The onsets as they would be had the sound been played at the original's speed.
std::vector<double> atOriginalSpeed(const Onsets& onsets, double ratio)
{
    const auto last = static_cast<double>(onsets.strength.size() - 1);
    std::vector<double> strength(static_cast<std::size_t>(last * ratio) + 1);
    for (std::size_t i = 0; i < strength.size(); ++i) {
        const double at = std::min(last, static_cast<double>(i) / ratio);
        const auto whole = std::min(static_cast<std::size_t>(at), onsets.strength.size() - 2);
        const double part = at - static_cast<double>(whole);
        strength[i] = onsets.strength[whole] * (1 - part) + onsets.strength[whole + 1] * part;
    }
    return strength;
}

// The original, to be compared at many ratios.
struct Reference
{
    explicit Reference(const Onsets& onsets)
        : strength(onsets.strength)
        , rate(onsets.rate)
        , correlator(strength)
        , sums(sumsUpTo(strength))
        , energies(energiesUpTo(strength))
    {
    }

    const std::vector<double>& strength;
    double rate;
    Correlator correlator;
    std::vector<double> sums;
    std::vector<double> energies;
};

// How well the onsets agree at this ratio, at each place of the original: the correlation coefficient of the two
// over the length of the stretch. Empty where the original is too short for it.
std::vector<double> likenessByPlace(const Onsets& stretch, const Reference& original, double ratio)
{
    std::vector<double> wanted = atOriginalSpeed(stretch, ratio);
    if (wanted.size() < 2 || wanted.size() > original.strength.size()) {
        return {};
    }
    const auto count = static_cast<double>(wanted.size());
    const double mean = std::accumulate(wanted.begin(), wanted.end(), 0.0) / count;
    double energy = 0;
    for (double& value : wanted) {
        value -= mean;
        energy += value * value;
    }

    const std::vector<double> products = original.correlator.with(wanted);
    std::vector<double> likeness(original.strength.size() - wanted.size() + 1);
    for (std::size_t place = 0; place < likeness.size(); ++place) {
        const double sum = original.sums[place + wanted.size()] - original.sums[place];
        const double energyHere = original.energies[place + wanted.size()] - original.energies[place];
        const double variance = energyHere - sum * sum / count;
        likeness[place] = variance > 0 && energy > 0 ? products[place] / std::sqrt(variance * energy) : 0;
    }
    return likeness;
}

// Peaks that are nearly as high as the highest, no two of them nearer than a fifth of a second.
std::vector<double> placesOf(const std::vector<double>& likeness, double rate)
{
    std::vector<std::size_t> order(likeness.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [&](auto one, auto other) { return likeness[one] > likeness[other]; });

    std::vector<double> places;
    for (const std::size_t index : order) {
        const double place = static_cast<double>(index) / rate;
        const bool isNew = std::none_of(places.begin(), places.end(),
                                        [place](double taken) { return std::abs(taken - place) < .2; });
        if (likeness[index] < kNearlyAsGoodAPlace * likeness[order.front()]) {
            break;
        }
        if (isNew) {
            places.push_back(place);
        }
    }
    return places;
}

// The best of the ratios from one to another, and the top of the curve through it and its neighbours.
TempoMatch bestRatio(const Onsets& stretch, const Onsets& onsets, double from, double to, double step)
{
    const Reference original(onsets);
    std::vector<double> best;
    for (double ratio = from; ratio <= to; ratio *= 1 + step) {
        const std::vector<double> likeness = likenessByPlace(stretch, original, ratio);
        best.push_back(likeness.empty() ? 0 : *std::max_element(likeness.begin(), likeness.end()));
    }
    const double peak = peakBetween(best, 0, best.size());
    const double ratio = from * std::pow(1 + step, peak);
    return {ratio, best[static_cast<std::size_t>(std::lround(peak))],
            placesOf(likenessByPlace(stretch, original, ratio), original.rate)};
}

}  // namespace

std::optional<TempoMatch> tempoOf(const StereoSound& stretch, const StereoSound& original)
{
    if (stretch.seconds() < 1 || original.seconds() < 1) {
        return std::nullopt;
    }
    const Onsets of = onsetsOf(stretch);
    const Onsets in = onsetsOf(original);

    // A step of the ratio may shift the end of the stretch by no more than the blur, or the peak is missed.
    constexpr double kWideBlur = .03;
    constexpr double kNarrowBlur = .012;
    const double wideStep = kWideBlur / stretch.seconds();
    const double narrowStep = kNarrowBlur / 4 / stretch.seconds();
    const TempoMatch near =
        bestRatio(blurred(of, kWideBlur, 4), blurred(in, kWideBlur, 4), kSlowest, kFastest, wideStep);
    if (near.likeness < kLeastTempoLikeness) {
        return std::nullopt;
    }
    return bestRatio(blurred(of, kNarrowBlur, 1), blurred(in, kNarrowBlur, 1), near.ratio * (1 - wideStep),
                     near.ratio * (1 + wideStep), narrowStep);
}

}  // namespace heard
