#pragma once

#include "sound/burner/DriveReport.h"
#include "sound/burner/MediaWatch.h"

#include <memory>
#include <optional>
#include <string>

namespace burn {
struct burn_write_opts;
}

namespace sound {

class GrabbedDrive;
class LibburnTurn;

/// Who a drive is and what it can, as it tells without a look at its disc.
struct DriveIdentity
{
    std::string address;  // the device's file
    QString maker;
    QString model;
    bool writesCds = false;
    bool writesTests = false;
    bool protectsFromUnderrun = false;
};

/// A drive that libburn has found. It is held only while one of refresh(), objectionTo(), write() and eject()
/// runs, so that other programs may use it in between, and its tray is never closed by itself. A drive that another
/// program uses looks empty.
///
/// A look at a disc makes its motor run and stop. So refresh() looks only where something may have changed since
/// the last look: the disc or the tray, as MediaWatch tells, or what this drive did itself.
///
/// Texts for displays are written where the disc is written at once and the drive takes them: the room for them is
/// the lead-in, which is the drive's own when tracks are written one by one.
class BurnerDrive : public DiscDrive
{
public:
    explicit BurnerDrive(DriveIdentity identity);

    QString name() const override;
    bool usable() const override { return identity.writesCds; }
    bool hasUnderrunProtection() const override { return identity.protectsFromUnderrun; }
    void refresh() override;
    LoadedDisc disc() const override { return lastDisc; }
    std::vector<WriteSpeed> speeds() const override { return lastSpeeds; }
    std::optional<DiscWriteError> objectionTo(const DiscPlan& plan) override;
    WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) override;
    void eject() override;

private:
    void look();
    DiscWriteError failureOf(LibburnTurn& turn, const GrabbedDrive& grabbed) const;

    const DriveIdentity identity;
    LoadedDisc lastDisc;
    std::vector<WriteSpeed> lastSpeeds;
    MediaWatch media;  // since the last look
};

}  // namespace sound
