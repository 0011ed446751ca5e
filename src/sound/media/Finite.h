#pragma once

#include <bit>
#include <cstdint>

namespace sound {

/// The sample, or silence where a file holds what is no number or beyond all of them: that would never leave a
/// filter again which it once went into. Looks at the bits, so that a loop over it runs several samples at a time.
inline float finite(float sample)
{
    const auto bits = std::bit_cast<std::uint32_t>(sample);
    constexpr std::uint32_t exponent = 0x7F800000;
    return std::bit_cast<float>((bits & exponent) == exponent ? 0U : bits);
}

}  // namespace sound
