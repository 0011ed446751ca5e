#include "sound/disc/SectorCache.h"

#include "sound/disc/DiscPlan.h"
#include "sound/media/UnnamedFile.h"

#include <unistd.h>
#include <cerrno>
#include <utility>

namespace sound {

SectorCache::SectorCache(std::int64_t sectors, std::stop_token givenUp)
    : readerGivenUp(std::move(givenUp))
    , file(openUnnamedFile(sectors * Sectors::bytes))
{
    if (file < 0)
        fault = ENOSPC;
}

SectorCache::~SectorCache()
{
    if (file >= 0)
        ::close(file);
}

bool SectorCache::put(std::span<const std::byte> sectors, const std::stop_token& givenUp)
{
    if (fault != 0 || givenUp.stop_requested())
        return false;
    errno = 0;
    if (!writeAt(file, filled, sectors)) {
        fault = errno != 0 ? errno : EIO;
        return false;
    }
    filled += static_cast<std::int64_t>(sectors.size());
    return true;
}

void SectorCache::close(bool) {}

bool SectorCache::read(std::span<std::byte> sectors)
{
    while (!sectors.empty()) {
        if (fault != 0 || taken == filled || readerGivenUp.stop_requested())
            return false;
        const ssize_t got = ::pread(file, sectors.data(), sectors.size(), taken);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            fault = got < 0 ? errno : EIO;
            return false;
        }
        taken += got;
        sectors = sectors.subspan(static_cast<std::size_t>(got));
    }
    return true;
}

}  // namespace sound
