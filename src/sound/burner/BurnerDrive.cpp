#include "sound/burner/BurnerDrive.h"

#include "sound/burner/DriveWrite.h"
#include "sound/burner/GrabbedDrive.h"
#include "sound/burner/WriteFailure.h"
#include "sound/disc/DiscErrors.h"

#include <utility>

namespace sound {

BurnerDrive::BurnerDrive(DriveIdentity who)
    : identity(std::move(who))
    , media(identity.address)
{
}

QString BurnerDrive::name() const
{
    const QString who = QStringLiteral("%1 %2").arg(identity.maker, identity.model).trimmed();
    return QStringLiteral("%1 (%2)").arg(who, QString::fromLocal8Bit(identity.address.c_str())).trimmed();
}

void BurnerDrive::refresh()
{
    if (media.isUnchanged())
        return;
    look();
    if (lastDisc.present != media.hasDisc())
        media.forget();
}

void BurnerDrive::look()
{
    lastDisc = {};
    lastSpeeds.clear();
    const LibburnTurn turn;
    const GrabbedDrive grabbed(turn, identity.address);
    if (!grabbed.isThere())
        return;
    const DiscReport report = discReport(grabbed.drive());
    lastDisc = loadedDisc(report);
    lastSpeeds = writeSpeeds(report, speedReports(grabbed.drive()));
}

WriteOutcome BurnerDrive::write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch)
{
    media.forget();
    LibburnTurn turn;
    const GrabbedDrive grabbed(turn, identity.address);
    if (grabbed.isThere())
        return DriveWrite(identity, turn, grabbed.drive()).write(plan, feed, watch);
    return {WriteOutcome::Failed, failureOf(turn, grabbed)};
}

std::optional<DiscWriteError> BurnerDrive::objectionTo(const DiscPlan& plan)
{
    media.forget();
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
    media.forget();
    const LibburnTurn turn;
    GrabbedDrive grabbed(turn, identity.address);
    if (grabbed.isThere())
        grabbed.openAtEnd();
}

}  // namespace sound
