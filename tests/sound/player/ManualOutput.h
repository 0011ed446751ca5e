#pragma once

#include "sound/device/AudioOutput.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace sound::test {

/// The test's end of a ManualOutput: says how much time passes on it, and keeps what was written.
class ManualClock
{
public:
    /// Lets the output play so many frames, and returns when they have been written and a delay's worth on top.
    void play(std::int64_t frames);

    /// Waits until a condition of the test's own holds, which the output's thread brings about; false after ten
    /// seconds.
    template <typename Condition>
    bool waitFor(Condition condition)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), condition);
    }

    /// All frames written so far, left and right interleaved.
    std::vector<float> written() const;
    std::int64_t framesWritten() const;
    /// How many of them have been played.
    std::int64_t framesPlayed() const;
    bool running() const;
    SampleRate rate() const;

    /// Frames on their way when the output keeps its promise.
    static constexpr FrameCount buffered{2048};

private:
    friend class ManualOutput;

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<float> samples;
    std::int64_t played = 0;
    std::int64_t granted = 0;
    bool started = false;
    bool woken = false;
    SampleRate openedRate;
};

/// An output whose time the test moves, as fast as it likes.
class ManualOutput : public AudioOutput
{
public:
    explicit ManualOutput(std::shared_ptr<ManualClock> clock);

    void open(SampleRate rate) override;
    void start() override;
    void stop() override;
    void wait(std::chrono::milliseconds longest) override;
    void wake() override;
    FrameCount wanted() override;
    void write(const float* stereo, FrameCount count) override;
    FrameCount delay() override;

private:
    std::shared_ptr<ManualClock> clock;
};

}  // namespace sound::test
