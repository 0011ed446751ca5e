#include "sound/player/RenderThread.h"

#include "sound/player/LoadedSound.h"

#include <pthread.h>
#include <sched.h>
#include <algorithm>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto reportInterval = 10ms;

// Where the system lets it, before all ordinary threads, and before the window where that is no ordinary one;
// elsewhere the output's buffer has to do. Sound servers have 5 and more: what takes the sound goes before what
// makes it.
void askForPriority()
{
    constexpr int usual = 3;
    int policy = SCHED_OTHER;
    sched_param parameters{};
    pthread_getschedparam(pthread_self(), &policy, &parameters);  // the window's, so far
    parameters.sched_priority = policy == SCHED_OTHER ? usual : parameters.sched_priority + 1;
    pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
}

}  // namespace

RenderThread::RenderThread(const MakeOutput& make)
    : makeOutput(make)
    , thread([this] { run(); })
{
}

RenderThread::~RenderThread()
{
    ending.store(true);
    notify();
    thread.join();
}

void RenderThread::publish(const Transport& value)
{
    transport.publish(value);
    notify();
}

void RenderThread::publish(const Settings& value)
{
    settings.publish(value);
    // What plays fetches it with its next block, what does not has no use for it yet.
}

const Snapshot& RenderThread::snapshot()
{
    return heard.latest();
}

Peaks RenderThread::takePeaks()
{
    return peaks.take();
}

void RenderThread::notify()
{
    // Null for a moment at the start: the thread looks into its mailboxes before it first sleeps.
    if (AudioOutput* sleeping = wakeable.load())
        sleeping->wake();
}

void RenderThread::run()
{
    askForPriority();
    output = makeOutput();
    wakeable.store(output.get());
    while (!ending.load()) {
        renderer.update(transport.latest(), settings.latest());
        followRate();
        fill();
        report();
        const bool busy = started || renderer.rate() != outputRate;
        output->wait(busy ? reportInterval : -1ms);
    }
    // The output stays until the thread has been joined: it may just now be asked to wake.
}

// A sound of another rate needs the output opened anew, after what is under way has been heard.
void RenderThread::followRate()
{
    if (renderer.rate() == outputRate)
        return;
    if (started && !renderer.allHeard(output->delay()))
        return;
    output->open(renderer.rate());
    outputRate = renderer.rate();
    started = false;
}

void RenderThread::fill()
{
    if (outputRate.hertz == 0 || renderer.rate() != outputRate)
        return;
    if (!renderer.active() && (!started || renderer.allHeard(output->delay()))) {
        if (started)
            output->stop();
        started = false;
        return;
    }

    float block[largestBlock.value * 2];
    while (output->wanted() >= renderer.block()) {
        renderer.update(transport.latest(), settings.latest());
        if (renderer.rate() != outputRate)
            return;
        const bool moreIsWanted = output->wanted() >= renderer.block() + renderer.block();
        renderer.render(block, started && moreIsWanted);
        output->write(block, renderer.block());
    }
    if (!started) {
        output->start();
        started = true;
    }
}

void RenderThread::report()
{
    const FrameCount delay = started ? output->delay() : FrameCount{0};
    Snapshot snapshot = renderer.heard(delay);
    snapshot.moment = std::chrono::steady_clock::now();
    heard.publish(snapshot);

    peaks.raise(renderer.takePeaks(delay));
}

}  // namespace sound
