#pragma once

#include <bit>
#include <cstdint>

namespace sound {

/// The sample, or silence where a file holds what is no number or beyond all of them: that would never leave a
/// filter again which it once went into. Looks at the bits, so that a loop over it runs several samples at a time.
inline float toFloat(float sample)
{
    const auto bits = std::bit_cast<std::uint32_t>(sample);
    constexpr std::uint32_t exponent = 0x7F800000;
    return std::bit_cast<float>((bits & exponent) == exponent ? 0U : bits);
}

inline float toFloat(double sample)
{
    return toFloat(static_cast<float>(sample));
}

/// Integers are divided by their full scale. Of 32 bits a float holds the upper 24, of fewer all.
inline float toFloat(std::int8_t sample)
{
    return static_cast<float>(sample) / 128.0F;
}

inline float toFloat(std::int16_t sample)
{
    return static_cast<float>(sample) / 32768.0F;
}

inline float toFloat(std::int32_t sample)
{
    return static_cast<float>(sample) / 2147483648.0F;
}

/// Bytes without a sign stand 128 too high.
inline float toFloat(std::uint8_t sample)
{
    return static_cast<float>(sample - 128) / 128.0F;
}

}  // namespace sound
