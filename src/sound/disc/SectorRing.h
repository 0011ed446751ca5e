#pragma once

#include "sound/disc/SectorFeed.h"
#include "sound/disc/SectorSink.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stop_token>
#include <vector>

namespace sound {

/// Sectors on their way from the thread that decodes to the one that writes.
///
/// One writer, one reader. They copy at the same time; the lock is over the two counts alone.
class SectorRing : public SectorSink, public SectorFeed
{
public:
    /// @p givenUp ends the reader's waiting.
    SectorRing(std::int64_t capacity, std::stop_token givenUp);

    /// The writer's.
    bool put(std::span<const std::byte> sectors, const std::stop_token& givenUp) override;
    void close(bool whole) override;

    /// The reader's. Of a ring that was closed before it was whole, nothing more is read.
    bool read(std::span<std::byte> sectors) override;

    /// The reader's. Waits so long at most for the ring to be full or closed; whether it is.
    bool waitUntilFull(std::chrono::milliseconds time);

    /// The reader's. How much of the ring is filled, 0 to 100.
    int percentFull();

private:
    /// The next bytes of the ring from this count on, as many as lie in one piece.
    std::span<std::byte> piece(std::int64_t from, std::int64_t count, std::size_t wanted);

    std::int64_t size() const { return static_cast<std::int64_t>(bytes.size()); }
    std::int64_t waiting() const { return filled - taken; }

    std::vector<std::byte> bytes;
    const std::stop_token readerGivenUp;

    std::mutex mutex;
    std::condition_variable_any changed;
    std::int64_t filled = 0;  // bytes since the beginning
    std::int64_t taken = 0;
    bool closed = false;
    bool broken = false;
};

}  // namespace sound
