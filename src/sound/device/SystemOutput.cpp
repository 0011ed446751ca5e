#include "sound/device/SystemOutput.h"

#include <algorithm>

namespace sound {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

constexpr auto patience = 500ms;  // how long a server may take to answer before playing goes on in silence
constexpr auto retryInterval = 1s;

}  // namespace

SystemOutput::SystemOutput()
    : pulse(wakeup)
{
    connect();
}

void SystemOutput::connect()
{
    connectedAt = Clock::now();
    pulse.connect(rate);
}

void SystemOutput::open(SampleRate newRate)
{
    rate = newRate;
    started = false;
    silent = false;
    silence.open(rate);
    connect();
    follow();
}

void SystemOutput::start()
{
    started = true;
    if (silent)
        silence.start({0});
    else
        pulse.start();
}

void SystemOutput::stop()
{
    started = false;
    pulse.stop();
    silence.stop();
}

// Goes over to the silent clock when the server is away, and back when it is there again.
void SystemOutput::follow()
{
    const Clock::duration waited = Clock::now() - connectedAt;
    if (pulse.ready()) {
        if (silent) {
            silent = false;
            silence.stop();
        }
        if (started)
            pulse.start();
        return;
    }
    if (!silent && (pulse.away() || waited > patience)) {
        silent = true;
        if (started)
            silence.start(lastDelay);
        lastDelay = {0};
    }
    if (pulse.away() && waited > retryInterval)
        connect();
}

void SystemOutput::wait(milliseconds longest)
{
    milliseconds time = longest;
    const auto atMost = [&time](milliseconds limit) { time = time.count() < 0 ? limit : std::min(time, limit); };
    if (silent && silence.running())
        atMost(silence.untilWanted(framesIn(longestDelay / 5, rate)));
    if (!pulse.ready() && rate.hertz != 0)
        atMost(silent ? std::chrono::duration_cast<milliseconds>(retryInterval) : 10ms);
    pulse.wait(time);
    follow();
}

void SystemOutput::wake()
{
    wakeup.notify();
}

FrameCount SystemOutput::wanted()
{
    return silent ? silence.wanted() : pulse.wanted();
}

void SystemOutput::write(const float* stereo, FrameCount count)
{
    if (silent)
        silence.write(count);
    else
        pulse.write(stereo, count);
}

FrameCount SystemOutput::delay()
{
    if (silent)
        return silence.delay();
    if (pulse.ready())
        lastDelay = pulse.delay();
    return lastDelay;
}

}  // namespace sound
