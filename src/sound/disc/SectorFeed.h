#pragma once

#include <cstddef>
#include <span>

namespace sound {

/// The sectors of all tracks of a plan, one after the other, as a device takes them.
///
/// **Threads.** One at a time.
class SectorFeed
{
public:
    virtual ~SectorFeed();

    /// Fills @p sectors, whole ones, and waits where they are not there yet. False where there will be none any
    /// more: the write is given up, or a track has failed. Nothing more is then to be asked for.
    virtual bool read(std::span<std::byte> sectors) = 0;
};

}  // namespace sound
