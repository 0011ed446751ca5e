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

std::optional<std::size_t> FeedBytes::read(std::span<std::byte> bytes, std::int64_t end)
{
    const std::lock_guard<std::mutex> alone(reading);
    const std::int64_t left = std::max<std::int64_t>(end - position, 0);
    const std::size_t wanted = std::min(bytes.size(), static_cast<std::size_t>(left));
    bytes = bytes.first(wanted);
    while (!bytes.empty()) {
        if (rest.empty() && !readSector())
            return std::nullopt;
        const std::size_t piece = std::min(rest.size(), bytes.size());
        std::copy_n(rest.begin(), piece, bytes.begin());
        rest = rest.subspan(piece);
        bytes = bytes.subspan(piece);
        position += static_cast<std::int64_t>(piece);
    }
    return wanted;
}

void FeedBytes::withdraw()
{
    const std::lock_guard<std::mutex> alone(reading);
    feed = nullptr;
    rest = {};
}

}  // namespace sound
