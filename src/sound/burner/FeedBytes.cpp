#include "sound/burner/FeedBytes.h"

#include "sound/disc/SectorFeed.h"

#include <algorithm>

namespace sound {

FeedBytes::FeedBytes(SectorFeed& source)
    : feed(&source)
{
}

bool FeedBytes::readSector()
{
    if (feed == nullptr || ended)
        return false;
    if (!feed->read(sector)) {
        ended = true;
        return false;
    }
    rest = sector;
    return true;
}

bool FeedBytes::read(std::span<std::byte> bytes)
{
    const std::lock_guard<std::mutex> alone(reading);
    while (!bytes.empty()) {
        if (rest.empty() && !readSector())
            return false;
        const std::size_t piece = std::min(rest.size(), bytes.size());
        std::copy_n(rest.begin(), piece, bytes.begin());
        rest = rest.subspan(piece);
        bytes = bytes.subspan(piece);
    }
    return true;
}

void FeedBytes::withdraw()
{
    const std::lock_guard<std::mutex> alone(reading);
    feed = nullptr;
    rest = {};
}

}  // namespace sound
