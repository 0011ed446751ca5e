#pragma once

#include "sound/disc/DiscPlan.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
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

    /// Fills all of @p bytes. False where the feed ends before that; it is not asked again then.
    bool read(std::span<std::byte> bytes);

    /// The feed had no more. Never waits.
    bool hasEnded() const { return ended; }

    /// Waits for a read under way.
    void withdraw();

private:
    bool readSector();

    std::mutex reading;
    SectorFeed* feed;
    std::array<std::byte, Sectors::bytes> sector;
    std::span<const std::byte> rest;  // of the sector
    std::atomic<bool> ended = false;
};

}  // namespace sound
