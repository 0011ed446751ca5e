#include "sound/disc/SoundDiscDevice.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sound {

SoundDiscDevice::SoundDiscDevice(std::unique_ptr<DiscDrive> found, std::function<bool()> busy)
    : drive(std::move(found))
    , isBusy(std::move(busy))
    , name(drive->name())
    , usable(drive->usable())
    , protectsFromUnderruns(drive->hasUnderrunProtection())
{
}

bool SoundDiscDevice::GetCapability(int code)
{
    return code == underrunProtection && protectsFromUnderruns;
}

short SoundDiscDevice::GetWriteSpeedCount()
{
    return static_cast<short>(std::min<std::size_t>(speeds.size(), std::numeric_limits<short>::max()));
}

int SoundDiscDevice::GetWriteSpeedCode(short index)
{
    return index >= 0 && index < GetWriteSpeedCount() ? speeds[static_cast<std::size_t>(index)].code : 0;
}

double SoundDiscDevice::GetWriteSpeedRate(int code)
{
    const auto found = std::ranges::find(speeds, code, &WriteSpeed::code);
    return found != speeds.end() ? found->rate : 0;
}

void SoundDiscDevice::ReleaseDisc(bool)
{
    if (!isBusy())
        drive->eject();
}

void SoundDiscDevice::RefreshDisc(int)
{
    if (isBusy())
        return;
    drive->refresh();
    disc = drive->disc();
    speeds = drive->speeds();
}

DiscInfo SoundDiscDevice::GetDiscInfo()
{
    return {disc.present, disc.blank, disc.used};
}

qint64 SoundDiscDevice::GetFreeSpace(int)
{
    return disc.present ? disc.free : 0;
}

}  // namespace sound
