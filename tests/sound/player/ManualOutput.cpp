#include "sound/player/ManualOutput.h"

#include <algorithm>

namespace sound::test {

void ManualClock::play(std::int64_t frames)
{
    std::unique_lock lock(mutex);
    granted += frames;
    const std::int64_t until = granted;
    changed.notify_all();
    // A block at most is missing to a full buffer when the render thread sleeps again.
    changed.wait_for(lock, std::chrono::seconds(60), [&] { return played >= until || !started; });
}

std::vector<float> ManualClock::written() const
{
    const std::lock_guard lock(mutex);
    return samples;
}

std::int64_t ManualClock::framesWritten() const
{
    const std::lock_guard lock(mutex);
    return static_cast<std::int64_t>(samples.size() / 2);
}

std::int64_t ManualClock::framesPlayed() const
{
    const std::lock_guard lock(mutex);
    return played;
}

bool ManualClock::running() const
{
    const std::lock_guard lock(mutex);
    return started;
}

SampleRate ManualClock::rate() const
{
    const std::lock_guard lock(mutex);
    return openedRate;
}

ManualOutput::ManualOutput(std::shared_ptr<ManualClock> manualClock)
    : clock(std::move(manualClock))
{
}

void ManualOutput::open(SampleRate rate)
{
    const std::lock_guard lock(clock->mutex);
    clock->openedRate = rate;
    clock->started = false;
    clock->changed.notify_all();
}

void ManualOutput::start()
{
    const std::lock_guard lock(clock->mutex);
    clock->started = true;
    clock->granted = clock->played;
    clock->changed.notify_all();
}

void ManualOutput::stop()
{
    const std::lock_guard lock(clock->mutex);
    clock->started = false;
    clock->played = clock->granted = static_cast<std::int64_t>(clock->samples.size() / 2);
    clock->changed.notify_all();
}

void ManualOutput::wait(std::chrono::milliseconds longest)
{
    std::unique_lock lock(clock->mutex);
    const auto due = [this] { return clock->woken || (clock->started && clock->played < clock->granted); };
    if (longest.count() < 0)
        clock->changed.wait(lock, due);
    else
        clock->changed.wait_for(lock, longest, due);
    clock->woken = false;
    // Time passes only as far as there is something to play.
    if (clock->started) {
        const auto there = static_cast<std::int64_t>(clock->samples.size() / 2);
        clock->played = std::min(clock->granted, there);
    }
    clock->changed.notify_all();
}

void ManualOutput::wake()
{
    const std::lock_guard lock(clock->mutex);
    clock->woken = true;
    clock->changed.notify_all();
}

FrameCount ManualOutput::wanted()
{
    const std::lock_guard lock(clock->mutex);
    const auto there = static_cast<std::int64_t>(clock->samples.size() / 2);
    return {std::max<std::int64_t>(0, clock->played + ManualClock::buffered.value - there)};
}

void ManualOutput::write(const float* stereo, FrameCount count)
{
    const std::lock_guard lock(clock->mutex);
    clock->samples.insert(clock->samples.end(), stereo, stereo + count.value * 2);
}

FrameCount ManualOutput::delay()
{
    const std::lock_guard lock(clock->mutex);
    return {static_cast<std::int64_t>(clock->samples.size() / 2) - clock->played};
}

}  // namespace sound::test
