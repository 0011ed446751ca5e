#pragma once

#include "sound/units/Frames.h"

#include <algorithm>

namespace sound {

/// The largest block of any sound.
inline constexpr FrameCount largestBlock{4096};

/// How many frames of a sound of this rate are rendered at a time: about ten milliseconds. A stretcher's alignment
/// depends on it, so that it is the same wherever the same sound is to come out.
inline FrameCount blockAt(SampleRate rate)
{
    return std::clamp(framesIn(std::chrono::milliseconds{10}, rate), FrameCount{16}, largestBlock);
}

}  // namespace sound
