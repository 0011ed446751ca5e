#pragma once

#include "sound/disc/SectorFeed.h"
#include "sound/disc/SectorSink.h"

#include <cstdint>
#include <stop_token>

namespace sound {

/// All sectors of a disc, in a file that has no name and goes with this object or with the program.
///
/// First filled, then read. **Threads.** One at a time.
class SectorCache : public SectorSink, public SectorFeed
{
public:
    /// Where no disc has room for it the cache is one that fails. @p givenUp ends the reading.
    SectorCache(std::int64_t sectors, std::stop_token givenUp);
    ~SectorCache() override;
    SectorCache(const SectorCache&) = delete;
    SectorCache& operator=(const SectorCache&) = delete;

    bool put(std::span<const std::byte> sectors, const std::stop_token& givenUp) override;
    void close(bool whole) override;
    bool read(std::span<std::byte> sectors) override;

    /// An errno; 0 as long as the file has not failed.
    int failure() const { return fault; }

private:
    const std::stop_token readerGivenUp;
    int file;
    int fault = 0;
    std::int64_t filled = 0;  // bytes
    std::int64_t taken = 0;
};

}  // namespace sound
