#include "sound/burner/BurnerDrive.h"

#include "sound/burner/DriveWrite.h"
#include "sound/burner/GrabbedDrive.h"
#include "sound/burner/WriteFailure.h"
#include "sound/disc/DiscErrors.h"

#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

// Nobody changes a disc in so short a time.
constexpr auto lookIsGoodFor = 2s;

}  // namespace

BurnerDrive::BurnerDrive(DriveIdentity who)
    : identity(std::move(who))
{
}

QString BurnerDrive::name() const
{
    const QString who = QStringLiteral("%1 %2").arg(identity.maker, identity.model).trimmed();
    return QStringLiteral("%1 (%2)").arg(who, QString::fromLocal8Bit(identity.address.c_str())).trimmed();
}

void BurnerDrive::refresh()
{
    if (lastLook && std::chrono::steady_clock::now() - *lastLook < lookIsGoodFor)
        return;
    lastDisc = {};
    lastSpeeds.clear();
    lastLook.reset();
    const LibburnTurn turn;
    const GrabbedDrive grabbed(turn, identity.address);
    if (!grabbed.isThere())
        return;
    const DiscReport report = discReport(grabbed.drive());
    lastDisc = loadedDisc(report);
    lastSpeeds = writeSpeeds(report, speedReports(grabbed.drive()));
    lastLook = std::chrono::steady_clock::now();
}

WriteOutcome BurnerDrive::write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch)
{
    lastLook.reset();
    LibburnTurn turn;
    const GrabbedDrive grabbed(turn, identity.address);
    if (grabbed.isThere())
        return DriveWrite(identity, turn, grabbed.drive()).write(plan, feed, watch);
    return {WriteOutcome::Failed, failureOf(turn, grabbed)};
}

std::optional<DiscWriteError> BurnerDrive::objectionTo(const DiscPlan& plan)
{
    LibburnTurn turn;
    const GrabbedDrive grabbed(turn, identity.address);
    if (grabbed.isThere())
        return DriveWrite(identity, turn, grabbed.drive()).objectionTo(plan);
    return failureOf(turn, grabbed);
}

DiscWriteError BurnerDrive::failureOf(LibburnTurn& turn, const GrabbedDrive& grabbed) const
{
    if (grabbed.systemError() != 0)
        return systemError(grabbed.systemError());
    return writeFailure(turn.newMessages(), identity.maker, identity.model);
}

void BurnerDrive::eject()
{
    lastLook.reset();
    const LibburnTurn turn;
    GrabbedDrive grabbed(turn, identity.address);
    if (grabbed.isThere())
        grabbed.openAtEnd();
}

}  // namespace sound
