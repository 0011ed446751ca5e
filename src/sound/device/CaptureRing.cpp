#include "sound/device/CaptureRing.h"

#include <algorithm>

namespace sound {

CaptureRing::CaptureRing(FrameCount frames)
    : samples(static_cast<std::size_t>(frames.value) * 2)
    , capacity(frames.value)
{
}

// The place where frames go is in one piece, or in two where it runs over the end of the ring.
template <typename Fill>
void CaptureRing::add(std::int64_t frames, const Fill& fill)
{
    const std::int64_t end = pushed.load(std::memory_order_relaxed);
    const std::int64_t room = capacity - (end - popped.load(std::memory_order_acquire));
    const std::int64_t taken = std::min(frames, room);
    const std::int64_t place = end % capacity;
    const std::int64_t untilEnd = std::min(taken, capacity - place);
    fill(samples.data() + place * 2, std::int64_t{0}, untilEnd);
    fill(samples.data(), untilEnd, taken - untilEnd);
    pushed.store(end + taken, std::memory_order_release);
    lostFrames.fetch_add(frames - taken, std::memory_order_relaxed);
}

void CaptureRing::push(std::span<const float> stereo)
{
    add(static_cast<std::int64_t>(stereo.size() / 2), [&](float* to, std::int64_t from, std::int64_t count) {
        std::copy_n(stereo.data() + from * 2, count * 2, to);
    });
}

void CaptureRing::pushSilence(FrameCount count)
{
    add(count.value,
        [](float* to, std::int64_t, std::int64_t silentFrames) { std::fill_n(to, silentFrames * 2, 0.0F); });
}

std::span<float> CaptureRing::pop(std::span<float> stereo)
{
    const std::int64_t begin = popped.load(std::memory_order_relaxed);
    const std::int64_t there = pushed.load(std::memory_order_acquire) - begin;
    const std::int64_t taken = std::min(there, static_cast<std::int64_t>(stereo.size() / 2));
    const std::int64_t place = begin % capacity;
    const std::int64_t untilEnd = std::min(taken, capacity - place);
    std::copy_n(samples.data() + place * 2, untilEnd * 2, stereo.data());
    std::copy_n(samples.data(), (taken - untilEnd) * 2, stereo.data() + untilEnd * 2);
    popped.store(begin + taken, std::memory_order_release);
    return stereo.first(static_cast<std::size_t>(taken * 2));
}

FrameCount CaptureRing::waiting() const
{
    return {pushed.load(std::memory_order_acquire) - popped.load(std::memory_order_relaxed)};
}

}  // namespace sound
