#pragma once

#include <array>
#include <atomic>
#include <type_traits>

namespace sound {

/// Hands a value from one thread to another, whole, the newest only: what the reader has not fetched when the next
/// one comes is lost. One writer and one reader, neither of which ever waits.
///
/// Three copies: the writer's, the reader's, and one in between that either swaps for its own. The exchange
/// releases what was written before it and acquires what the other side released, so that a copy belongs to one
/// thread at a time.
template <typename Value>
class LatestValue
{
    static_assert(std::is_trivially_copyable_v<Value>, "copying on the render thread must not allocate");

public:
    /// The writer's thread only.
    void publish(const Value& value)
    {
        copies[writing] = value;
        writing = between.exchange(static_cast<unsigned char>(writing | fresh), std::memory_order_acq_rel) & index;
    }

    /// The reader's thread only. Stays valid until the next call.
    const Value& latest()
    {
        if ((between.load(std::memory_order_relaxed) & fresh) != 0)
            reading = between.exchange(reading, std::memory_order_acq_rel) & index;
        return copies[reading];
    }

private:
    static constexpr unsigned char index = 3;
    static constexpr unsigned char fresh = 4;

    std::array<Value, 3> copies{};
    std::atomic<unsigned char> between{1};
    unsigned char writing = 0;
    unsigned char reading = 2;
};

}  // namespace sound
