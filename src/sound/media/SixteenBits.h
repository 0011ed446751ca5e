#pragma once

#include <cstdint>

namespace sound {

/// Brings samples to 16 bits.
///
/// A sample that is a step of 16 bits to begin with stays what it is, so that a sound of 16 bits which nothing has
/// changed is kept bit for bit and silence stays silence. All others get a triangular dither of two steps' width
/// before they are rounded: what rounding adds is then a steady hiss, the same whatever the sound, and no
/// distortion of it. What is beyond full scale is cut there, and what is no number is silence.
///
/// The dither is the same for the same samples. Its source is SplitMix64, the generator of Steele, Lea and Flood,
/// "Fast splittable pseudorandom number generators" (2014).
class SixteenBits
{
public:
    std::int16_t operator()(float sample);

private:
    double triangular();

    std::uint64_t state = 0;
};

}  // namespace sound
