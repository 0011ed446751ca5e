#pragma once

#include <algorithm>
#include <cmath>

namespace sound {

/// A level of 32768 would be full scale; the largest one is 32767, and is reached by both ends of a 16 bit input.
inline constexpr float levelsToFullScale = 32768;

/// What a peak of captured sound reads: 0 to 32767, where 32767 is an input at its end.
inline short captureLevel(float peak)
{
    return static_cast<short>(std::lround(std::clamp(peak * levelsToFullScale, 0.0F, 32767.0F)));
}

}  // namespace sound
