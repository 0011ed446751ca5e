#include "sound/disc/DiscDrive.h"

namespace sound {

SectorFeed::~SectorFeed() = default;
WriteWatch::~WriteWatch() = default;
DiscDrive::~DiscDrive() = default;

}  // namespace sound
