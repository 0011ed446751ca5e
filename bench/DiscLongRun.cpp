// A whole disc from one file, written to a drive that only takes it: how long it takes, how much memory, and how
// long the drive had to wait for a piece once it had begun.
//
// usage: disc_long_run MINUTES SPEED cached|ahead FILE
//
// SPEED is that of the drive, as a multiple of a player's; 0 takes what comes.

#include "engines/DiscDevice.h"
#include "sound/disc/SoundDiscEngine.h"

#include <sys/resource.h>
#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

using namespace sound;

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

double megabytesUsed()
{
    rusage used = {};
    ::getrusage(RUSAGE_SELF, &used);
    return static_cast<double>(used.ru_maxrss) / 1024;
}

class TakingDrive : public DiscDrive
{
public:
    explicit TakingDrive(double speedOfPlayer)
        : speed(speedOfPlayer)
    {
    }

    QString name() const override { return QStringLiteral("A drive that only takes"); }
    bool usable() const override { return true; }
    bool hasUnderrunProtection() const override { return false; }
    void refresh() override {}
    LoadedDisc disc() const override { return {true, true, 0, Sectors::wholeDisc}; }
    std::vector<WriteSpeed> speeds() const override { return {}; }
    void eject() override {}
    std::optional<DiscWriteError> objectionTo(const DiscPlan&) override { return std::nullopt; }

    WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) override
    {
        constexpr std::int64_t atOnce = 16;
        const auto begin = Clock::now();
        double longestWait = 0;
        std::int64_t all = 0;
        for (int track = 0; track < static_cast<int>(plan.tracks.size()); ++track) {
            const std::int64_t length = plan.tracks[static_cast<std::size_t>(track)].sectors;
            for (std::int64_t done = 0; done < length;) {
                const std::int64_t count = std::min(atOnce, length - done);
                std::vector<std::byte> sectors(static_cast<std::size_t>(count * Sectors::bytes));
                const auto asked = Clock::now();
                if (!feed.read(sectors))
                    return {WriteOutcome::FeedFailed};
                longestWait = std::max(longestWait, Seconds(Clock::now() - asked).count());
                done += count;
                all += count;
                watch.written(track, done);
                if (speed > 0)
                    std::this_thread::sleep_until(
                        begin + std::chrono::duration_cast<Clock::duration>(
                                    Seconds(static_cast<double>(all) / Sectors::perSecond / speed)));
            }
        }
        const double seconds = Seconds(Clock::now() - begin).count();
        std::printf(
            "the drive took %.1f min in %.2f s (%.0f times as fast as it plays), and waited %.1f ms at most\n",
            static_cast<double>(all) / Sectors::perSecond / 60, seconds,
            static_cast<double>(all) / Sectors::perSecond / seconds, 1000 * longestWait);
        return {};
    }

private:
    const double speed;
};

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 5) {
        std::fprintf(stderr, "usage: disc_long_run MINUTES SPEED cached|ahead FILE\n");
        return 2;
    }
    const double speed = std::atof(argv[2]);
    SoundDiscEngine engine(
        [speed] {
            DiscDrives drives;
            drives.push_back(std::make_unique<TakingDrive>(speed));
            return std::optional<DiscDrives>(std::move(drives));
        },
        QString(), [](bool) {});
    engine.InitDevices(false);
    AudioProject& project = *engine.GetAudioProject();
    project.SetWriteMode(AudioProject::discAtOnce);
    project.SetCacheFiles(std::strcmp(argv[3], "cached") == 0);
    const auto sectors = static_cast<qint64>(std::atof(argv[1]) * 60 * Sectors::perSecond);
    const QString file = QFileInfo(QString::fromLocal8Bit(argv[4])).absoluteFilePath();
    bool ok = true;
    while (ok && project.GetRequiredSpace() < sectors && project.GetTrackCount() < Sectors::mostTracks)
        project.AddTrack(file, Sectors::mostTracks, ok);
    const double before = megabytesUsed();

    const auto begin = Clock::now();
    QObject::connect(&engine, &DiscEngine::WriteProgress, [&](int, int, int, DiscStage stage) {
        if (stage < DiscStage::Completed)
            return;
        std::printf("%d tracks in %.2f s, stage %d; memory %.1f MiB before and %.1f at most\n",
                    project.GetTrackCount(), Seconds(Clock::now() - begin).count(), static_cast<int>(stage), before,
                    megabytesUsed());
        QCoreApplication::exit(stage == DiscStage::Completed ? 0 : 1);
    });
    project.StartWrite(engine.GetDevice(0), ok);
    return ok ? QCoreApplication::exec() : 1;
}
