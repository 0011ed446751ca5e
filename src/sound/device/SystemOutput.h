#pragma once

#include "sound/device/AudioOutput.h"
#include "sound/device/PulseStream.h"
#include "sound/device/SilentClock.h"
#include "sound/device/Wakeup.h"

#include <chrono>

namespace sound {

/// The user's default output; a silent clock where there is no sound server, until there is one.
class SystemOutput : public AudioOutput
{
public:
    SystemOutput();

    void open(SampleRate rate) override;
    void start() override;
    void stop() override;
    void wait(std::chrono::milliseconds longest) override;
    void wake() override;
    FrameCount wanted() override;
    void write(const float* stereo, FrameCount count) override;
    FrameCount delay() override;

private:
    using Clock = std::chrono::steady_clock;

    void connect();
    void follow();

    Wakeup wakeup;
    PulseStream pulse;
    SilentClock silence;
    SampleRate rate;
    bool started = false;
    bool silent = false;   // the clock is in the server's place
    FrameCount lastDelay;  // of the server, as long as it answered
    Clock::time_point connectedAt;
};

}  // namespace sound
