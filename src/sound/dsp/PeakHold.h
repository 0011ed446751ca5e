#pragma once

#include "sound/dsp/PeakMeter.h"

#include <atomic>

namespace sound {

/// Hands peaks from the thread that measures them to the one that shows them, which may look as seldom as it likes:
/// none is missed.
///
/// **Threads.** One raises, another takes; neither waits.
class PeakHold
{
public:
    void raise(Peaks peaks)
    {
        raise(left, peaks.left);
        raise(right, peaks.right);
    }

    /// The highest since the last call.
    Peaks take()
    {
        return {left.exchange(0, std::memory_order_relaxed), right.exchange(0, std::memory_order_relaxed)};
    }

private:
    static void raise(std::atomic<float>& held, float peak)
    {
        float before = held.load(std::memory_order_relaxed);
        while (before < peak && !held.compare_exchange_weak(before, peak, std::memory_order_relaxed)) {
        }
    }

    std::atomic<float> left = 0;
    std::atomic<float> right = 0;
};

}  // namespace sound
