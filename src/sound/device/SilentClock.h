#pragma once

#include "sound/units/Frames.h"

#include <chrono>

namespace sound {

/// An output that nobody hears: it takes frames at the pace of the clock, with the delay of a real one.
class SilentClock
{
public:
    void open(SampleRate rate);

    /// @p queued frames count as written already: what was under way when the real output went away.
    void start(FrameCount queued);
    void stop();
    bool running() const { return started; }

    FrameCount wanted() const;
    void write(FrameCount count);
    FrameCount delay() const;

    /// How long until there is room for @p block frames.
    std::chrono::milliseconds untilWanted(FrameCount block) const;

private:
    FrameCount played() const;

    SampleRate rate;
    FrameCount capacity;
    bool started = false;
    FrameCount written;
    std::chrono::steady_clock::time_point begun;
};

}  // namespace sound
