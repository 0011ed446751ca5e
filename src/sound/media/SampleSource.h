#pragma once

#include "sound/units/Frames.h"

namespace sound {

/// Random access to the frames of one sound, at the sound's own rate, with one or two channels.
///
/// **Threads.** Any thread may read at any time, also while the sound is still being decoded: the render thread
/// reads from here, so that read() takes no lock, allocates nothing and never waits for a disc or a decoder.
class SampleSource
{
public:
    virtual ~SampleSource() = default;

    virtual SampleRate rate() const = 0;

    /// 1 or 2.
    virtual int channels() const = 0;

    /// Never changes.
    virtual FrameCount length() const = 0;

    /// How many frames from the beginning are there by now; equals length() once all is decoded. Only grows.
    virtual FrameCount available() const = 0;

    /// Copies @p count frames from @p from on to @p interleaved. Frames before the beginning, beyond the end, and
    /// not yet available are silence.
    virtual void read(FramePosition from, FrameCount count, float* interleaved) const = 0;

    /// Tells where reading goes on, so that those frames are kept at hand. Costs next to nothing.
    virtual void willReadNear(FramePosition position) const = 0;
};

}  // namespace sound
