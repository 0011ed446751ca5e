#pragma once

#include "sound/units/Frames.h"

#include <chrono>

namespace sound {

/// Where a player's stereo frames go.
///
/// open() names the rate; start() lets the frames sound and stop() ends that. Between start() and stop() the output
/// wants frames again and again; what is written sounds after delay(). Before start() it already takes a buffer
/// full, so that playing begins without a gap.
///
/// **Threads.** One thread owns an output and makes all calls, except wake(), which any thread may call.
///
/// **Failure.** There is none: where the real output is missing or goes away, time goes on in silence, and the
/// output comes back by itself.
class AudioOutput
{
public:
    /// The most that lies between writing and hearing on an output that keeps its promise.
    static constexpr std::chrono::milliseconds longestDelay{60};

    virtual ~AudioOutput() = default;

    /// Prepares for frames of this rate; what was queued before is dropped.
    virtual void open(SampleRate rate) = 0;

    virtual void start() = 0;

    /// Drops what is queued and takes no more.
    virtual void stop() = 0;

    /// Sleeps until frames may be wanted, wake() is called, or @p longest has passed; a negative time is for ever.
    virtual void wait(std::chrono::milliseconds longest) = 0;
    virtual void wake() = 0;

    /// How many frames may be written now.
    virtual FrameCount wanted() = 0;

    /// At most wanted() frames, interleaved left and right.
    virtual void write(const float* stereo, FrameCount count) = 0;

    /// How long until a frame written now is heard.
    virtual FrameCount delay() = 0;
};

}  // namespace sound
