#pragma once

#include "engines/DiscDevice.h"
#include "sound/disc/DiscDrive.h"

#include <functional>
#include <memory>
#include <vector>

namespace sound {

/// A drive as windows see it. While a disc is being written it asks nothing of the drive.
class SoundDiscDevice : public DiscDevice
{
public:
    /// @p isBusy tells whether a write is under way or just ending, on whichever device.
    SoundDiscDevice(std::unique_ptr<DiscDrive> drive, std::function<bool()> isBusy);

    const std::shared_ptr<DiscDrive>& writer() const { return drive; }

    QString GetDeviceName() override { return name; }
    bool GetCapability(int code) override;
    bool IsDeviceUsable() override { return usable; }
    short GetWriteSpeedCount() override;
    int GetWriteSpeedCode(short index) override;
    double GetWriteSpeedRate(int code) override;
    void ReleaseDisc(bool) override;
    void RefreshDisc(int) override;
    DiscInfo GetDiscInfo() override;
    qint64 GetFreeSpace(int) override;

private:
    const std::shared_ptr<DiscDrive> drive;
    const std::function<bool()> isBusy;
    const QString name;
    const bool usable;
    const bool protectsFromUnderruns;
    LoadedDisc disc;
    std::vector<WriteSpeed> speeds;
};

}  // namespace sound
