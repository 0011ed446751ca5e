#include "sound/disc/SoundDiscEngine.h"

#include "sound/disc/DiscImageDrive.h"
#include "sound/disc/EndingWrite.h"

#include <QPointer>
#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto watchInterval = 50ms;

// For a drive to stop. Nobody is let wait for more than a second.
constexpr auto patience = 700ms;

}  // namespace

SoundDiscEngine::SoundDiscEngine(FindDrives find, const QString& imageFolder,
                                 std::function<void(bool)> keepComputerAwake, std::int64_t reserve)
    : findDrives(std::move(find))
    , keepAwake(std::move(keepComputerAwake))
    , imageWriter(makeDevice(std::make_unique<DiscImageDrive>(imageFolder)))
    , project(*this, reserve)
{
    watch.setInterval(watchInterval);
    watch.setSingleShot(true);
    connect(&watch, &QTimer::timeout, this, [this] { tellReports(); });
}

/// Whoever is just being told something holds the write still, but there will be no drive for it.
SoundDiscEngine::~SoundDiscEngine()
{
    if (!write)
        return;
    write->finish();
    keepAwake(false);
}

std::unique_ptr<SoundDiscDevice> SoundDiscEngine::makeDevice(std::unique_ptr<DiscDrive> drive)
{
    return std::make_unique<SoundDiscDevice>(std::move(drive), [this] { return isBusy(); });
}

bool SoundDiscEngine::InitDevices(bool)
{
    if (isBusy())
        return true;
    found.clear();
    std::optional<DiscDrives> drives = findDrives();
    if (!drives)
        return false;
    for (std::unique_ptr<DiscDrive>& drive : *drives)
        found.push_back(makeDevice(std::move(drive)));
    return true;
}

SoundDiscDevice* SoundDiscEngine::deviceAt(std::size_t index)
{
    if (index < found.size())
        return found[index].get();
    return index == found.size() ? imageWriter.get() : nullptr;
}

short SoundDiscEngine::GetDeviceCount()
{
    return static_cast<short>(std::min<std::size_t>(found.size() + 1, std::numeric_limits<short>::max()));
}

DiscDevice* SoundDiscEngine::GetDevice(short index)
{
    return index >= 0 ? deviceAt(static_cast<std::size_t>(index)) : nullptr;
}

bool SoundDiscEngine::begin(DiscDevice* device, const WriteOrder& order)
{
    for (std::size_t index = 0; index <= found.size(); ++index) {
        SoundDiscDevice* known = deviceAt(index);
        if (known != device || !known->IsDeviceUsable())
            continue;
        write = std::make_shared<DiscWrite>(order, known->writer(), lastDrive);
        totalTold = 0;
        sinceGivenUp.reset();
        keepAwake(true);
        watch.start();
        return true;
    }
    return false;
}

void SoundDiscEngine::giveUp()
{
    if (!write || sinceGivenUp)
        return;
    sinceGivenUp.emplace().start();
    write->giveUp();
}

void SoundDiscEngine::tellReports()
{
    watch.start();  // before anything is told: slots may turn the event loop, and it is to go on there
    const QPointer<SoundDiscEngine> engine(this);
    const std::shared_ptr<DiscWrite> told = write;
    while (engine && told && told == write) {
        const std::optional<WriteReport> report = told->takeReport();
        if (!report)
            break;
        tell(*report);
    }
    if (engine && write && sinceGivenUp && sinceGivenUp->hasExpired(patience.count()) && !write->isAsGoodAsDone())
        leaveToDrive();
}

/// The drive cannot be hurried. For the user the write is over.
void SoundDiscEngine::leaveToDrive()
{
    EndingWrite::see(write);
    lastDrive = write->over();
    tellEnd({DiscStage::Cancelled});
}

void SoundDiscEngine::tell(const WriteReport& report)
{
    switch (report.kind) {
    case WriteReport::Progress:
        if (sinceGivenUp)
            break;  // nobody waits for anything but the end
        totalTold = report.progress.totalPercent;
        emit WriteProgress(totalTold, report.progress.track, report.progress.trackPercent, report.progress.stage);
        break;
    case WriteReport::Problem:
        tellProblem(report.problem);
        break;
    case WriteReport::End:
        write->finish();
        tellEnd(report.end);
        break;
    }
}

void SoundDiscEngine::tellProblem(const DiscFileReport& problem)
{
    const std::shared_ptr<DiscWrite> asking = write;
    bool goOn = false;
    emit FileWarning(problem, goOn);
    asking->answer(goOn);
}

/// The engine is ready for the next write before anyone hears of the end.
void SoundDiscEngine::tellEnd(const WriteEnd& end)
{
    watch.stop();
    write.reset();
    keepAwake(false);
    const QPointer<SoundDiscEngine> engine(this);
    const int total = end.stage == DiscStage::Completed ? 100 : totalTold;
    emit WriteProgress(total, 0, 0, end.stage);
    if (engine && end.stage == DiscStage::Failed)
        emit WriteError(end.error);
}

}  // namespace sound
