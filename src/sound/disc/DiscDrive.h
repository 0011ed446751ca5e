#pragma once

#include "engines/DiscEngine.h"
#include "sound/disc/DiscPlan.h"
#include "sound/disc/SectorFeed.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sound {

/// What is in a drive.
struct LoadedDisc
{
    bool present = false;

    /// Music can be written to it, and nothing has been.
    bool blank = false;

    /// Sectors that are written.
    std::int64_t used = 0;

    /// Sectors that tracks may have.
    std::int64_t free = 0;

    bool operator==(const LoadedDisc&) const = default;
};

/// A speed that a drive offers for the disc in it.
struct WriteSpeed
{
    /// What DiscPlan::speed takes; never 0.
    int code = 0;

    /// Multiples of the speed at which a disc is played.
    double rate = 0;

    bool operator==(const WriteSpeed&) const = default;
};

/// Who follows a write. All calls come from the thread of DiscDrive::write, but givenUp(), which any may ask.
class WriteWatch
{
public:
    virtual ~WriteWatch();

    /// The write has come to this stage: LeadIn, Writing, ClosingTrack, LeadOut, UpdatingVolume. @p track is from
    /// 0.
    virtual void stage(DiscStage stage, int track) = 0;

    /// So many sectors of this track, from 0, are on the disc.
    virtual void written(int track, std::int64_t sectors) = 0;

    /// The user wants no more of it. A write ends as soon as the device can then.
    virtual bool givenUp() const = 0;
};

/// How a write ended.
struct WriteOutcome
{
    enum End
    {
        Written,
        GivenUp,     ///< by the watch
        FeedFailed,  ///< the feed had no more, for reasons of its own
        Failed,
    };

    End end = Written;

    /// Why it failed.
    DiscWriteError error = {};
};

/// Something that discs are written with.
///
/// **Threads.** The writing thread calls write(), and nothing else is called until it has returned; all else comes
/// from the main thread.
class DiscDrive
{
public:
    virtual ~DiscDrive();

    virtual QString name() const = 0;

    /// It can write audio discs at all.
    virtual bool usable() const = 0;
    virtual bool hasUnderrunProtection() const = 0;

    /// Looks at the disc that is loaded now. May take seconds.
    virtual void refresh() = 0;

    /// As the last refresh() found them, the fastest speed first.
    virtual LoadedDisc disc() const = 0;
    virtual std::vector<WriteSpeed> speeds() const = 0;

    /// Why this disc cannot be written as things are: what is loaded is not blank or too small, the drive cannot
    /// write so. Asked before anything is decoded; nothing where it can. May take seconds.
    virtual std::optional<DiscWriteError> objectionTo(const DiscPlan& plan) = 0;

    /// Writes the whole disc and returns when it is done, given up or failed. Whatever the end, the drive is ready
    /// for the next one, and what a failed or given up write has left on the hard disc is gone.
    virtual WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) = 0;

    /// Opens the drive, where it can be.
    virtual void eject() = 0;
};

using DiscDrives = std::vector<std::unique_ptr<DiscDrive>>;

/// Looks for the machine's drives; nothing where the search itself fails. Drives found before are gone by then.
using FindDrives = std::function<std::optional<DiscDrives>()>;

}  // namespace sound
