#pragma once

#include <atomic>
#include <cassert>
#include <thread>

namespace sound {

/// Stands in a class whose members belong to one thread, the one that first uses it. In debug builds expect() fails
/// on any other; in release builds it is nothing.
class OneThread
{
public:
    void expect() const
    {
#ifndef NDEBUG
        std::thread::id none;
        const std::thread::id here = std::this_thread::get_id();
        assert(owner.compare_exchange_strong(none, here) || none == here);
#endif
    }

#ifndef NDEBUG
private:
    mutable std::atomic<std::thread::id> owner;
#endif
};

}  // namespace sound
