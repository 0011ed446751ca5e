#pragma once

#include "engines/DiscEngine.h"
#include "sound/disc/DiscDrive.h"
#include "sound/disc/DiscWrite.h"
#include "sound/disc/SoundAudioProject.h"
#include "sound/disc/SoundDiscDevice.h"

#include <QElapsedTimer>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sound {

/// The disc engine over the machine's drives, and over one of its own that writes disc images: that one is the last
/// device, also before the first search and where a search fails.
///
/// **Signals.** Each changed value is told once, percents at most twenty times a second. A slot may do whatever it
/// likes: turn the event loop, begin the next write when the last has ended, destroy the engine.
class SoundDiscEngine : public DiscEngine, private DiscWriter
{
public:
    /// Images go into @p imageFolder, which is made when it is missing. @p keepAwake is told when a write begins
    /// and when it is over: a computer that falls asleep meanwhile spoils a disc. @p reserve is that of a
    /// WriteOrder.
    SoundDiscEngine(FindDrives findDrives, const QString& imageFolder, std::function<void(bool)> keepAwake,
                    std::int64_t reserve = WriteOrder().reserve);
    ~SoundDiscEngine() override;

    bool InitDevices(bool) override;
    short GetDeviceCount() override;
    DiscDevice* GetDevice(short index) override;
    AudioProject* GetAudioProject() override { return &project; }

private:
    bool isWriting() const override { return write != nullptr; }
    bool isBusy() const { return isWriting() || (lastDrive.valid() && !hasCome(lastDrive)); }
    bool begin(DiscDevice* device, const WriteOrder& order) override;
    void giveUp() override;

    SoundDiscDevice* deviceAt(std::size_t index);
    std::unique_ptr<SoundDiscDevice> makeDevice(std::unique_ptr<DiscDrive> drive);
    void tellReports();
    void leaveToDrive();
    void tell(const WriteReport& report);
    void tellProblem(const DiscFileReport& problem);
    void tellEnd(const WriteEnd& end);

    const FindDrives findDrives;
    const std::function<void(bool)> keepAwake;
    std::vector<std::unique_ptr<SoundDiscDevice>> found;
    const std::unique_ptr<SoundDiscDevice> imageWriter;
    SoundAudioProject project;
    int totalTold = 0;
    std::optional<QElapsedTimer> sinceGivenUp;
    QTimer watch;
    std::shared_ptr<DiscWrite> write;
    std::shared_future<void> lastDrive;  // lets go of the write that was left to it
};

}  // namespace sound
