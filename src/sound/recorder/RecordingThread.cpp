#include "sound/recorder/RecordingThread.h"

#include "sound/device/CaptureRing.h"

#include <poll.h>
#include <algorithm>
#include <future>
#include <span>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr SampleRate rateBeforeTheFirst{48000};

}  // namespace

RecordingThread::RecordingThread()
    : chain(rateBeforeTheFirst)
    , thread([this] { run(); })
{
}

RecordingThread::~RecordingThread()
{
    ending.store(true);
    news.notify();
    thread.join();
}

void RecordingThread::follow(CaptureRing* ring, SampleRate rate)
{
    changeAndWait([this, ring, rate](RecordingChain&) {
        drain();
        source = ring;
        used = 0;
        buffer.clear();
        if (ring != nullptr)
            chain.changeRate(rate);
    });
}

void RecordingThread::begin(const QString& path, const RecordingFormat& format)
{
    change([this, path, format](RecordingChain&) { start(path, format); });
}

void RecordingThread::goOn(const QString& path, const RecordingFormat& format)
{
    change([this, path, format](RecordingChain&) {
        if (chain.isRecording())
            start(path, format);
    });
}

void RecordingThread::start(const QString& path, const RecordingFormat& format)
{
    if (!chain.begin(path, format))
        tell(Event::Failed);
}

bool RecordingThread::end()
{
    bool wasRecording = false;
    changeAndWait([&](RecordingChain&) {
        wasRecording = chain.isRecording();
        chain.end();
    });
    return wasRecording;
}

void RecordingThread::change(Task task)
{
    {
        const std::lock_guard lock(mutex);
        tasks.push_back(std::move(task));
    }
    news.notify();
}

void RecordingThread::changeAndWait(const Task& task)
{
    std::promise<void> done;
    change([&](RecordingChain&) {
        task(chain);
        done.set_value();
    });
    done.get_future().wait();
}

void RecordingThread::tell(Event event)
{
    {
        const std::lock_guard lock(mutex);
        untold.push_back(event);
        answered = false;
    }
    events.notify();
}

std::vector<RecordingThread::Event> RecordingThread::takeEvents()
{
    events.clear();
    const std::lock_guard lock(mutex);
    return std::exchange(untold, {});
}

void RecordingThread::answer()
{
    {
        const std::lock_guard lock(mutex);
        if (untold.empty() && !answered) {
            answered = true;
            tasksOfAnswer = tasks.size();
        }
    }
    news.notify();
}

Peaks RecordingThread::takePeaks()
{
    return peaks.take();
}

// What was asked for before the answer is a part of it, and is done at the place that is held; the rest comes
// behind the last frame.
void RecordingThread::run()
{
    while (!ending.load()) {
        sleep();
        news.clear();
        const Asked asked = takeAsked();
        const std::size_t held = !holding ? 0 : asked.answered ? asked.ofAnswer : asked.tasks.size();
        for (std::size_t number = 0; number < asked.tasks.size(); ++number) {
            if (number == held)
                drain();
            asked.tasks[number](chain);
        }
        holding = holding && !asked.answered;
        takeCaptured();
    }
    chain.end();
}

void RecordingThread::sleep()
{
    const auto held = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - heldSince);
    const int longest = holding ? static_cast<int>(std::max(0ms, longestHold - held).count()) : -1;
    pollfd watched{news.descriptor(), POLLIN, 0};
    poll(&watched, 1, longest);
}

RecordingThread::Asked RecordingThread::takeAsked()
{
    const std::lock_guard lock(mutex);
    return {std::exchange(tasks, {}), answered, std::exchange(tasksOfAnswer, 0)};
}

void RecordingThread::takeCaptured()
{
    holding = holding && Clock::now() - heldSince < longestHold;
    while (!holding && take().has_value()) {
    }
}

/// One step; none where there is nothing to take.
std::optional<FrameCount> RecordingThread::take()
{
    if (used == buffer.size()) {
        buffer.resize(static_cast<std::size_t>(RecordingChain::largestStep.value) * 2);
        buffer.resize(source != nullptr ? source->pop(buffer).size() : 0);
        used = 0;
        if (buffer.empty())
            return std::nullopt;
    }
    const RecordingChain::Step step = chain.take(std::span(buffer).subspan(used));
    used += static_cast<std::size_t>(step.taken.value) * 2;
    peaks.raise(chain.takePeaks());
    if (step.failed)
        tell(Event::Failed);
    if (step.change) {
        tell(*step.change == LevelWatch::Change::Sound ? Event::Sound : Event::Silence);
        holding = true;
        heldSince = Clock::now();
    }
    return step.taken;
}

// What the watch finds on the way is told, but an answer cannot come in time.
void RecordingThread::drain()
{
    FrameCount left{static_cast<std::int64_t>((buffer.size() - used) / 2)};
    if (source != nullptr)
        left = left + source->waiting();
    while (left > FrameCount{0}) {
        const std::optional<FrameCount> taken = take();
        if (!taken)
            break;
        left = left - *taken;
    }
    holding = false;
}

}  // namespace sound
