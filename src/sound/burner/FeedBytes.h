#pragma once

#include "sound/disc/DiscPlan.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>

namespace sound {

class SectorFeed;

/// The bytes of a SectorFeed, in whatever pieces they are asked for.
///
/// Whoever reads may outlive the feed: when the feed is withdrawn, there is nothing more to read.
///
/// **Threads.** Any; they wait for each other.
class FeedBytes
{
public:
    explicit FeedBytes(SectorFeed& feed);

    /// Fills @p bytes with what comes next, though with nothing from @p end on, which counts from the first byte of
    /// all. How many it were: fewer only at the end. Nothing where the feed ends before that; it is not asked again
    /// then.
    std::optional<std::size_t> read(std::span<std::byte> bytes, std::int64_t end);

    /// The feed had no more. Never waits.
    bool hasEnded() const { return ended; }

    /// Waits for a read under way. What reading threads have done before is done then.
    void withdraw();

private:
    bool readSector();

    std::mutex reading;
    SectorFeed* feed;
    std::array<std::byte, Sectors::bytes> sector;
    std::span<const std::byte> rest;  // of the sector
    std::int64_t position = 0;
    std::atomic<bool> ended = false;
};

}  // namespace sound
