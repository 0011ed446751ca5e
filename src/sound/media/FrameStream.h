#pragma once

#include "sound/units/Frames.h"

#include <vector>

namespace sound {

/// Where the frames of a sound come from, in order from its beginning: a decoder, or the sectors of a CD.
///
/// **Threads.** One at a time; stop() from any.
class FrameStream
{
public:
    virtual ~FrameStream() = default;

    virtual SampleRate rate() const = 0;

    /// 1 or 2.
    virtual int channels() const = 0;

    /// How many frames there are, counted without decoding them. next() never brings more; in a damaged sound it
    /// may bring fewer, and what is missing counts as silence.
    virtual FrameCount length() const = 0;

    /// Adds the next frames to @p interleaved, a few thousand at most but for gaps. False, with nothing added, at
    /// the end or after stop().
    virtual bool next(std::vector<float>& interleaved) = 0;

    /// Makes next() return false soon.
    virtual void stop() = 0;
};

}  // namespace sound
