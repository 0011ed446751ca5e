#include "sound/media/SixteenBits.h"

#include "sound/media/ToFloat.h"

#include <algorithm>
#include <cmath>

namespace sound {

std::int16_t SixteenBits::operator()(float sample)
{
    constexpr float fullScale = 32768.0F;
    const float steps = std::clamp(toFloat(sample) * fullScale, -fullScale, fullScale - 1.0F);
    const long nearest = std::lrint(steps);
    if (static_cast<float>(nearest) == steps)
        return static_cast<std::int16_t>(nearest);
    const long dithered = std::lrint(static_cast<double>(steps) + triangular());
    return static_cast<std::int16_t>(std::clamp<long>(dithered, -32768, 32767));
}

/// From -1 to 1, likeliest around 0.
double SixteenBits::triangular()
{
    state += 0x9E3779B97F4A7C15U;
    std::uint64_t bits = state;
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBU;
    bits ^= bits >> 31;
    const auto first = static_cast<double>(bits >> 32);
    const auto second = static_cast<double>(bits & 0xFFFFFFFFU);
    return (first - second) / 4294967296.0;
}

}  // namespace sound
