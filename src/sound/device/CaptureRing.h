#pragma once

#include "sound/units/Frames.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace sound {

/// Stereo frames on their way from the thread that captures to the one that writes. One writer, one reader; neither
/// waits for the other or takes a lock.
class CaptureRing
{
public:
    explicit CaptureRing(FrameCount capacity);

    /// The writer's. Takes what there is room for, which is all unless the reader has stood still for the whole
    /// ring; the rest counts as lost.
    void push(std::span<const float> stereo);

    /// The writer's. As push(), of silence: a hole in what the source delivered keeps its length.
    void pushSilence(FrameCount count);

    /// The reader's. Fills @p stereo as far as there are frames; returns what it filled.
    std::span<float> pop(std::span<float> stereo);

    FrameCount waiting() const;

    /// Frames that found no room.
    FrameCount lost() const { return {lostFrames.load(std::memory_order_relaxed)}; }

private:
    template <typename Fill>
    void add(std::int64_t frames, const Fill& fill);

    std::vector<float> samples;
    std::int64_t capacity;
    std::atomic<std::int64_t> pushed = 0;  // frames since the beginning
    std::atomic<std::int64_t> popped = 0;
    std::atomic<std::int64_t> lostFrames = 0;
};

}  // namespace sound
