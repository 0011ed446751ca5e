#pragma once

#include "engines/DiscEngine.h"
#include "sound/disc/DiscTrack.h"
#include "sound/disc/SectorSink.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <vector>

namespace sound {

/// Decodes the tracks of a disc, one after the other, on a thread of its own.
///
/// A track that ends before it should is asked about; if the disc is to be written without what is missing, there
/// is silence in its place.
///
/// **Threads.** One at a time. The destructor ends the thread, and waits no longer than a file takes to open.
class TrackDecoding
{
public:
    /// Whether the write goes on in spite of this; false also when it is given up. Called on the thread.
    using GoOn = std::function<bool(const DiscFileReport&, const std::stop_token& givenUp)>;

    enum class Pace
    {
        Quick,
        Yielding,  ///< To all else that has work.
    };

    /// Begins at once. @p sink outlives this, and is closed when the last sector is in it or the decoding has
    /// failed.
    TrackDecoding(std::vector<DiscTrack> tracks, SectorSink& sink, GoOn goOn, Pace pace);

    /// Waits so long at most for the decoding to end; whether it has.
    bool waitForEnd(std::chrono::milliseconds time);

    /// Sectors of all tracks that are in the sink.
    std::int64_t decoded() const { return inSink.load(std::memory_order_relaxed); }

    /// Why a track could not be decoded, if one could not by now. A sink that takes no more knows itself why.
    std::optional<DiscWriteError> error() const;

private:
    void run(const std::stop_token& givenUp);
    bool decode(const DiscTrack& track, const std::stop_token& givenUp);
    bool fail(const DiscWriteError& error);

    const std::vector<DiscTrack> tracks;
    SectorSink& sink;
    const GoOn goOn;
    std::vector<std::byte> buffer;
    std::atomic<std::int64_t> inSink = 0;

    mutable std::mutex mutex;
    std::condition_variable progressed;
    bool ended = false;
    std::optional<DiscWriteError> failure;

    std::jthread thread;
};

}  // namespace sound
