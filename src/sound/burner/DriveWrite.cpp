#include "sound/burner/DriveWrite.h"

#include "sound/burner/AudioSession.h"
#include "sound/burner/CdText.h"
#include "sound/burner/FeedBytes.h"
#include "sound/burner/WriteFailure.h"
#include "sound/burner/WriteSteps.h"

#include <libburn/libburn.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace sound {

using namespace std::chrono_literals;

namespace {

// libburn tells nobody that something has changed.
constexpr auto betweenLooks = 20ms;

// Up to where the disc ends. A track that is written by itself has two sectors more, for the laser to go out.
std::int64_t sectorsOf(const DiscPlan& plan)
{
    constexpr std::int64_t runOut = 2;
    std::int64_t sectors = 0;
    for (const DiscPlan::Track& track : plan.tracks)
        sectors +=
            track.sectors + (plan.discAtOnce ? 0 : runOut) + (plan.discAtOnce || sectors == 0 ? 0 : Sectors::pause);
    return sectors;
}

// Empty where the disc takes it.
QString whyNotOn(const DiscReport& disc, const DiscPlan& plan)
{
    const LoadedDisc loaded = loadedDisc(disc);
    if (!loaded.present)
        return QStringLiteral("There is no disc in the drive.");
    if (!loaded.blank)
        return QStringLiteral("The disc in the drive is not a blank CD.");
    if (loaded.free < sectorsOf(plan))
        return QStringLiteral("The disc in the drive is too small for these tracks.");
    return {};
}

// Empty where libburn has nothing against it.
QString whyNot(burn::burn_write_opts* options, const AudioSession& session)
{
    constexpr int silently = 1;
    char reasons[BURN_REASONS_LEN] = "";
    if (burn::burn_precheck_write(options, session.disc(), reasons, silently) > 0)
        return {};
    QString text = QString::fromLocal8Bit(reasons).trimmed();
    if (text.endsWith(QLatin1Char(',')))
        text.chop(1);
    return text.isEmpty() ? QStringLiteral("The drive does not take this disc.") : text;
}

WriteMoment::Doing doingOf(burn::burn_drive_status status)
{
    switch (status) {
    case burn::BURN_DRIVE_WRITING:
        return WriteMoment::Tracks;
    case burn::BURN_DRIVE_CLOSING_TRACK:
        return WriteMoment::ClosingTrack;
    case burn::BURN_DRIVE_CLOSING_SESSION:
    case burn::BURN_DRIVE_WRITING_LEADOUT:
        return WriteMoment::ClosingDisc;
    default:
        return WriteMoment::LeadIn;
    }
}

}  // namespace

void DriveWrite::FreeOptions::operator()(burn::burn_write_opts* options) const
{
    burn::burn_write_opts_free(options);
}

DriveWrite::DriveWrite(const DriveIdentity& who, LibburnTurn& with, burn::burn_drive* on)
    : identity(who)
    , turn(with)
    , drive(on)
{
}

DriveWrite::Options DriveWrite::optionsFor(const DiscPlan& plan) const
{
    Options options(burn::burn_write_opts_new(drive));
    if (!options)
        return nullptr;
    const bool good =
        plan.discAtOnce
            ? burn::burn_write_opts_set_write_type(options.get(), burn::BURN_WRITE_SAO, burn::BURN_BLOCK_SAO) > 0
            : burn::burn_write_opts_set_write_type(options.get(), burn::BURN_WRITE_TAO, burn::BURN_BLOCK_MODE1) > 0;
    if (!good || burn::burn_write_opts_set_simulate(options.get(), plan.test ? 1 : 0) <= 0)
        return nullptr;
    burn::burn_write_opts_set_underrun_proof(options.get(), plan.underrunProtection ? 1 : 0);
    return options;
}

// The drive must write the subchannels that it is in, and where its place begins must be known: libburn writes it
// from there.
bool DriveWrite::takesText(const DiscReport& disc) const
{
    constexpr unsigned discAtOnce = 0x2e;
    constexpr unsigned char subchannels = 1;
    constexpr int earliestLeadIn = -45150;
    constexpr int endOfLeadIn = -150;
    unsigned char flags = 0;
    unsigned char length = 0;
    unsigned char* ability = nullptr;
    const bool can = burn::burn_drive_get_feature(drive, discAtOnce, &flags, &length, &ability, nullptr) > 0 &&
                     length > 0 && (ability[0] & subchannels) != 0;
    std::free(ability);
    return can && disc.leadInStart >= earliestLeadIn && disc.leadInStart < endOfLeadIn;
}

void DriveWrite::keepMessages()
{
    const std::vector<LibburnMessage> latest = turn.newMessages();
    messages.insert(messages.end(), latest.begin(), latest.end());
}

// It calls a drive that has been pulled out idle, while the thread that wrote to it is still on its way out.
void DriveWrite::awaitThreadOfLostDrive()
{
    constexpr auto longEnough = 60s;
    const auto deadline = std::chrono::steady_clock::now() + longEnough;
    while (std::any_of(messages.begin(), messages.end(), tellsLossOfDrive) &&
           std::none_of(messages.begin(), messages.end(), tellsEndOfFailedWrite) &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(betweenLooks);
        keepMessages();
    }
}

// It is told to stop again and again: what it is told before its thread has begun it forgets. When the drive has
// all sectors it is not told any more: nothing would be won, and a disc would be lost that is as good as done.
bool DriveWrite::runUntilDone(burn::burn_write_opts* options, const AudioSession& session, const FeedBytes& bytes,
                              const DiscPlan& plan, WriteWatch& watch)
{
    WriteSteps steps(plan, watch);
    steps.follow({});
    bool stopped = false;
    burn::burn_disc_write(options, session.disc());
    burn::burn_progress progress{};
    for (;;) {
        const burn::burn_drive_status status = burn::burn_drive_get_status(drive, &progress);
        keepMessages();
        if (status == burn::BURN_DRIVE_IDLE)
            break;
        if (!stopped)
            steps.follow({doingOf(status), progress.track, progress.sectors, progress.sector});
        stopped = stopped || bytes.hasEnded() || (watch.givenUp() && !steps.isAllSent());
        if (stopped)
            burn::burn_drive_cancel(drive);
        std::this_thread::sleep_for(betweenLooks);
    }
    awaitThreadOfLostDrive();
    if (!stopped && burn::burn_drive_wrote_well(drive) > 0)
        steps.finishTracks();
    return stopped;
}

std::optional<DiscWriteError> DriveWrite::objectionTo(const DiscPlan& plan) const
{
    if (const QString why = whyNotOn(discReport(drive), plan); !why.isEmpty())
        return otherFailure(why);
    if (plan.test && !identity.writesTests)  // it would write, and spoil the disc
        return otherFailure(QStringLiteral("The drive cannot write a test."));
    if (!optionsFor(plan))
        return otherFailure(QStringLiteral("The drive cannot write in this way."));
    return std::nullopt;
}

WriteOutcome DriveWrite::write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch)
{
    if (const auto objection = objectionTo(plan))
        return failed(*objection);
    const Options options = optionsFor(plan);
    if (!options)
        return failed(otherFailure(QStringLiteral("The drive cannot write in this way.")));

    const auto bytes = std::make_shared<FeedBytes>(feed);
    AudioSession session(plan, bytes);
    if (plan.discAtOnce && takesText(discReport(drive)))
        session.addText(cdText(plan));
    if (const QString why = whyNot(options.get(), session); !why.isEmpty())
        return failed(otherFailure(why));

    if (watch.givenUp())
        return {WriteOutcome::GivenUp, {}};
    constexpr int fastestReading = 0;
    burn::burn_drive_set_speed(drive, fastestReading, plan.speed);
    turn.newMessages();
    const bool stopped = runUntilDone(options.get(), session, *bytes, plan, watch);
    const bool feedHasEnded = bytes->hasEnded();
    bytes->withdraw();
    if (stopped)
        return {feedHasEnded && !watch.givenUp() ? WriteOutcome::FeedFailed : WriteOutcome::GivenUp, {}};
    if (burn::burn_drive_wrote_well(drive) > 0)
        return {WriteOutcome::Written, {}};
    return failed(writeFailure(messages, identity.maker, identity.model));
}

}  // namespace sound
