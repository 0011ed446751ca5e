#pragma once

#include "sound/units/Frames.h"

namespace sound {

/// What a processing block draws its frames from, one after the other. Render thread.
class FrameInput
{
public:
    virtual ~FrameInput() = default;

    /// Writes the next @p count frames, interleaved. There are always more: beyond a sound's end there is silence.
    virtual void next(FrameCount count, float* interleaved) = 0;
};

}  // namespace sound
