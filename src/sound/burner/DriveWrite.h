#pragma once

#include "sound/burner/BurnerDrive.h"
#include "sound/burner/LibburnTurn.h"

namespace sound {

class AudioSession;
class FeedBytes;

/// One disc's way through a drive, from the look at what is in it to the last word of libburn.
///
/// **Threads.** libburn writes in a thread of its own, which reads the feed; all else is in the thread that calls.
class DriveWrite
{
public:
    /// All must outlive it; the drive is a grabbed one.
    DriveWrite(const DriveIdentity& identity, LibburnTurn& turn, burn::burn_drive* drive);

    /// As DiscDrive::objectionTo.
    std::optional<DiscWriteError> objectionTo(const DiscPlan& plan) const;

    /// May be called once.
    WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch);

private:
    struct FreeOptions
    {
        void operator()(burn::burn_write_opts* options) const;
    };
    using Options = std::unique_ptr<burn::burn_write_opts, FreeOptions>;

    /// Null where the drive does not do as the plan wants it.
    Options optionsFor(const DiscPlan& plan) const;
    bool takesText(const DiscReport& disc) const;

    /// True when it has been stopped, by the watch or because the feed has ended.
    bool runUntilDone(burn::burn_write_opts* options, const AudioSession& session, const FeedBytes& bytes,
                      const DiscPlan& plan, WriteWatch& watch);
    void awaitThreadOfLostDrive();
    void keepMessages();
    WriteOutcome failed(const DiscWriteError& error) const { return {WriteOutcome::Failed, error}; }

    const DriveIdentity& identity;
    LibburnTurn& turn;
    burn::burn_drive* const drive;
    std::vector<LibburnMessage> messages;
};

}  // namespace sound
