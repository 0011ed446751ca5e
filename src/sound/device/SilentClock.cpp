#include "sound/device/SilentClock.h"

#include "sound/device/AudioOutput.h"

#include <algorithm>

namespace sound {

using namespace std::chrono;

void SilentClock::open(SampleRate newRate)
{
    rate = newRate;
    capacity = framesIn(AudioOutput::longestDelay, rate);
    stop();
}

void SilentClock::start(FrameCount queued)
{
    if (started)
        return;
    started = true;
    written = std::max(written, queued);
    begun = steady_clock::now();
}

void SilentClock::stop()
{
    started = false;
    written = {0};
}

FrameCount SilentClock::played() const
{
    if (!started)
        return {0};
    return framesIn(duration_cast<microseconds>(steady_clock::now() - begun), rate);
}

FrameCount SilentClock::delay() const
{
    return std::max(FrameCount{0}, written - played());
}

FrameCount SilentClock::wanted() const
{
    return std::max(FrameCount{0}, capacity - delay());
}

void SilentClock::write(FrameCount count)
{
    // After a pause in writing the clock has run past what was written: go on from now.
    written = std::max(written, played()) + count;
}

milliseconds SilentClock::untilWanted(FrameCount block) const
{
    const FrameCount missing = block - wanted();
    if (missing.value <= 0 || rate.hertz == 0)
        return milliseconds{0};
    return milliseconds{missing.value * 1000 / rate.hertz + 1};
}

}  // namespace sound
