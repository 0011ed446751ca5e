#pragma once

#include <cstddef>
#include <span>
#include <stop_token>

namespace sound {

/// Where decoded sectors go, one after the other.
///
/// **Threads.** One at a time.
class SectorSink
{
public:
    virtual ~SectorSink();

    /// Waits where there is no room yet. False where the sink takes no more, also because of @p givenUp.
    virtual bool put(std::span<const std::byte> sectors, const std::stop_token& givenUp) = 0;

    /// Nothing follows: all of it is there, or the rest never will be.
    virtual void close(bool whole) = 0;
};

}  // namespace sound
