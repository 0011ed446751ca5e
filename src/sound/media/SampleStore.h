#pragma once

#include "sound/media/SampleSource.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <semaphore>
#include <span>

namespace sound {

/// Holds the whole of a sound as float frames: in memory while it is short, else in a file without a name that is
/// read through a mapping, so that an hour of sound does not cost an hour of memory.
///
/// **Threads.** One writer calls append(), finish() and what has to do with keeping; any thread reads. A frame is
/// written before it counts as available() and never again, so the two never meet.
///
/// **Memory.** The pages of the mapping count as the process's own once they are read. The writer, when it has
/// nothing more to write, stays to keep those round the places where reading goes on and to let all others go.
class SampleStore : public SampleSource
{
public:
    /// Sounds of more bytes than this are kept in a file.
    static constexpr std::size_t mostInMemory = std::size_t{128} * 1024 * 1024;

    /// Room for @p length frames; null where there is neither the memory nor the room on a disc.
    static std::unique_ptr<SampleStore> create(SampleRate rate, int channels, FrameCount length,
                                               std::size_t mostBytesInMemory = mostInMemory);

    ~SampleStore() override;
    SampleStore(const SampleStore&) = delete;
    SampleStore& operator=(const SampleStore&) = delete;

    SampleRate rate() const override { return frameRate; }
    int channels() const override { return channelCount; }
    FrameCount length() const override { return frames; }
    FrameCount available() const override { return {published.load(std::memory_order_acquire)}; }
    void read(FramePosition from, FrameCount count, float* interleaved) const override;
    void willReadNear(FramePosition position) const override;

    /// Whether the sound is kept in a file.
    bool isInFile() const { return file >= 0; }

    /// Writer: adds frames behind those there are; what would go beyond length() is dropped. A file takes some ten
    /// thousand at a time much faster than a few. False where the disc has no more room.
    bool append(std::span<const float> interleaved);

    /// Writer: nothing more follows. What is missing up to length() is silence.
    void finish() { published.store(frames.value, std::memory_order_release); }

    bool isFull() const { return available() == length(); }

    /// Writer: brings in the pages round the places where reading goes on and lets the others go.
    void keepNear();

    /// Writer: whether reading goes on in another place since this was last asked, so that keepNear() has something
    /// to do.
    bool mustKeep() { return moved.try_acquire(); }

    /// Writer: blocks until reading goes on in another place, or until wake().
    void waitToKeep() { moved.acquire(); }

    /// Any thread: ends a waitToKeep().
    void wake() const { moved.release(); }

private:
    SampleStore(SampleRate rate, int channels, FrameCount length);

    bool allocate();
    bool allocateInFile();
    std::size_t bytesPerFrame() const { return static_cast<std::size_t>(channelCount) * sizeof(float); }

    SampleRate frameRate;
    int channelCount;
    FrameCount frames;
    std::size_t bytes = 0;
    std::byte* memory = nullptr;  // all of it, mapped; where there is a file, for reading alone
    int file = -1;
    std::atomic<std::int64_t> published = 0;

    // Reading goes on in several places when a loop jumps back or two jobs read at once. The most recent ones are
    // kept, each as the number of its region. Any thread puts one in; only the writer acts on them.
    static constexpr std::size_t keptPlaces = 4;
    mutable std::array<std::atomic<std::int64_t>, keptPlaces> recentRegions;
    mutable std::atomic<std::size_t> nextPlace = 0;
    mutable std::counting_semaphore<> moved{0};
};

}  // namespace sound
