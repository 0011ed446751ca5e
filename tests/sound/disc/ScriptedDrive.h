#pragma once

#include "sound/disc/DiscDrive.h"

#include <QByteArray>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace sound::test {

/// Takes all sectors that the plan says, so many at a time, and adds them to @p taken.
inline WriteOutcome takeAll(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch, std::int64_t atOnce,
                            QByteArray& taken)
{
    watch.stage(DiscStage::LeadIn, 0);
    for (int track = 0; track < static_cast<int>(plan.tracks.size()); ++track) {
        watch.stage(DiscStage::Writing, track);
        const std::int64_t length = plan.tracks[static_cast<std::size_t>(track)].sectors;
        for (std::int64_t done = 0; done < length;) {
            const std::int64_t count = std::min(atOnce, length - done);
            std::vector<std::byte> sectors(static_cast<std::size_t>(count * Sectors::bytes));
            if (watch.givenUp())
                return {WriteOutcome::GivenUp};
            if (!feed.read(sectors))
                return {WriteOutcome::FeedFailed};
            taken.append(reinterpret_cast<const char*>(sectors.data()), static_cast<qsizetype>(sectors.size()));
            done += count;
            watch.written(track, done);
        }
        watch.stage(DiscStage::ClosingTrack, track);
    }
    watch.stage(DiscStage::LeadOut, static_cast<int>(plan.tracks.size()) - 1);
    return {};
}

/// What a test directs a drive to do, and what the drive has seen of the program. What write() touches is looked at
/// when the write has ended.
struct Script
{
    QString name = QStringLiteral("Acme Writer");
    bool usable = true;
    bool hasUnderrunProtection = true;
    LoadedDisc disc{true, true, 0, 1000};
    std::vector<WriteSpeed> speeds{{7056, 40}, {2822, 16}};
    std::function<WriteOutcome(const DiscPlan&, SectorFeed&, WriteWatch&)> write =
        [this](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
            return takeAll(plan, feed, watch, 32, taken);
        };

    DiscPlan plan;
    std::optional<DiscWriteError> objection;
    QByteArray taken;
    int writes = 0;
    int refreshes = 0;
    int ejections = 0;
    int alive = 0;
};

class ScriptedDrive : public DiscDrive
{
public:
    explicit ScriptedDrive(Script& whatToDo)
        : script(whatToDo)
    {
        ++script.alive;
    }
    ~ScriptedDrive() override { --script.alive; }

    QString name() const override { return script.name; }
    bool usable() const override { return script.usable; }
    bool hasUnderrunProtection() const override { return script.hasUnderrunProtection; }
    void refresh() override
    {
        ++script.refreshes;
        seen = script.disc;
    }
    LoadedDisc disc() const override { return seen; }
    std::vector<WriteSpeed> speeds() const override { return script.speeds; }
    std::optional<DiscWriteError> objectionTo(const DiscPlan&) override { return script.objection; }
    WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) override
    {
        ++script.writes;
        script.plan = plan;
        return script.write(plan, feed, watch);
    }
    void eject() override { ++script.ejections; }

private:
    Script& script;
    LoadedDisc seen;
};

inline FindDrives finding(Script& script)
{
    return [&script] {
        DiscDrives drives;
        drives.push_back(std::make_unique<ScriptedDrive>(script));
        return std::optional<DiscDrives>(std::move(drives));
    };
}

}  // namespace sound::test
