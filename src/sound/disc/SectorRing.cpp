#include "sound/disc/SectorRing.h"

#include "sound/disc/DiscPlan.h"

#include <algorithm>
#include <utility>

namespace sound {

SectorSink::~SectorSink() = default;

SectorRing::SectorRing(std::int64_t capacity, std::stop_token givenUp)
    : bytes(static_cast<std::size_t>(capacity * Sectors::bytes))
    , readerGivenUp(std::move(givenUp))
{
}

std::span<std::byte> SectorRing::piece(std::int64_t from, std::int64_t count, std::size_t wanted)
{
    const std::int64_t place = from % size();
    const std::int64_t longest = std::min(count, size() - place);
    return {bytes.data() + place, std::min(static_cast<std::size_t>(longest), wanted)};
}

bool SectorRing::put(std::span<const std::byte> sectors, const std::stop_token& givenUp)
{
    std::unique_lock lock(mutex);
    while (!sectors.empty()) {
        changed.wait(lock, givenUp, [this] { return waiting() < size(); });
        if (givenUp.stop_requested())
            return false;
        const std::span<std::byte> room = piece(filled, size() - waiting(), sectors.size());
        lock.unlock();
        std::ranges::copy(sectors.first(room.size()), room.begin());
        sectors = sectors.subspan(room.size());
        lock.lock();
        filled += static_cast<std::int64_t>(room.size());
        changed.notify_all();
    }
    return true;
}

void SectorRing::close(bool whole)
{
    const std::lock_guard lock(mutex);
    closed = true;
    broken = !whole;
    changed.notify_all();
}

bool SectorRing::read(std::span<std::byte> sectors)
{
    std::unique_lock lock(mutex);
    while (!sectors.empty()) {
        changed.wait(lock, readerGivenUp, [this] { return waiting() > 0 || closed; });
        if (readerGivenUp.stop_requested() || broken || waiting() == 0)
            return false;
        const std::span<std::byte> there = piece(taken, waiting(), sectors.size());
        lock.unlock();
        std::ranges::copy(there, sectors.begin());
        sectors = sectors.subspan(there.size());
        lock.lock();
        taken += static_cast<std::int64_t>(there.size());
        changed.notify_all();
    }
    return true;
}

bool SectorRing::waitUntilFull(std::chrono::milliseconds time)
{
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, time, [this] { return waiting() == size() || closed; });
}

int SectorRing::percentFull()
{
    const std::lock_guard lock(mutex);
    return static_cast<int>(waiting() * 100 / size());
}

}  // namespace sound
