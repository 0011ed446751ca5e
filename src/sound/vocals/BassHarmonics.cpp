#include "sound/vocals/BassHarmonics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr double lowestFundamental = 35;    // hertz
constexpr double highestFundamental = 200;  // above it are men's voices
constexpr double highestHarmonic = 1200;
constexpr int harmonics = 8;

// Half the width of a partial's peak under a Hann window, in bins; the fourth power of a cosine is its shape.
constexpr float peakReach = 2;

}  // namespace

BassHarmonics::BassHarmonics(double binWidth, double lowest)
{
    const auto binOf = [binWidth](double frequency) {
        return static_cast<std::size_t>(std::max(0.0, std::ceil(frequency / binWidth)));
    };
    first = std::max<std::size_t>(2, binOf(lowestFundamental));
    below = std::max(first, binOf(std::min(lowest, highestFundamental)));
    from = binOf(lowest);
    behind = std::max(from, binOf(highestHarmonic));
}

void BassHarmonics::raise(const float* low, float* power) const
{
    for (std::size_t bin = first; bin < below; ++bin) {
        if (!(low[bin] > low[bin - 1] && low[bin] >= low[bin + 1] && low[bin - 1] > 0 && low[bin + 1] > 0))
            continue;
        // The summit of the parabola through the logarithms of a peak and its neighbours.
        const float left = std::log(low[bin - 1]);
        const float middle = std::log(low[bin]);
        const float right = std::log(low[bin + 1]);
        const float offset = std::clamp((left - right) / (2 * (left - 2 * middle + right)), -0.5F, 0.5F);
        raiseHarmonics(static_cast<float>(bin) + offset, std::exp(middle - (left - right) * offset / 4), power);
    }
}

void BassHarmonics::raiseHarmonics(float fundamental, float strength, float* power) const
{
    for (int number = 2; number <= harmonics; ++number) {
        const float place = fundamental * static_cast<float>(number);
        const float likely = strength / static_cast<float>(number * number);
        const auto begin = std::max(from, static_cast<std::size_t>(std::ceil(place - peakReach)));
        const auto end = std::min(behind, static_cast<std::size_t>(std::floor(place + peakReach)) + 1);
        for (std::size_t bin = begin; bin < end; ++bin) {
            const float shape =
                std::cos((static_cast<float>(bin) - place) * std::numbers::pi_v<float> / (2 * peakReach));
            power[bin] = std::max(power[bin], likely * shape * shape * shape * shape);
        }
    }
}

}  // namespace sound
