#pragma once

#include "sound/disc/DiscDrive.h"
#include "sound/disc/DiscTrack.h"
#include "sound/disc/WriteReports.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <stop_token>
#include <thread>
#include <vector>

namespace sound {

class TrackDecoding;

/// What is to be written, and how.
struct WriteOrder
{
    std::vector<DiscTrack> tracks;
    bool discAtOnce = false;
    bool test = false;
    bool underrunProtection = false;
    bool cacheFiles = false;
    int speed = 0;

    /// Sectors that are decoded before the drive begins, where the files are not cached; so many are kept in
    /// memory. 32 MiB last a drive at 52 times the speed of a player for three and a half seconds.
    std::int64_t reserve = std::int64_t{32} * 1024 * 1024 / Sectors::bytes;
};

/// One write, on threads of its own: one that feeds the drive, and one that decodes ahead of it.
///
/// All tracks are looked after before the drive is touched. With a cache, they are decoded whole before; without
/// one, decoding keeps a reserve, and the drive begins when that is full.
///
/// **Threads.** One, but for the private overrides.
class DiscWrite : private WriteWatch
{
public:
    /// Begins at once, or with this event where it is one: a write that was given up lets go of its drive.
    DiscWrite(WriteOrder order, std::shared_ptr<DiscDrive> drive, std::shared_future<void> beginning = {});

    ~DiscWrite() override;

    /// The write soon ends, as Cancelled, unless it is as good as done.
    void giveUp();

    /// Gives up what is still under way and waits for it: the drive is not touched any more.
    void finish();

    /// All sectors are with the drive: it is not given up any more, but soon written.
    bool isAsGoodAsDone() const { return allSent; }

    /// Then the drive is not touched any more.
    const std::shared_future<void>& over() const { return hasEnded; }

    /// In order; the last is the end.
    std::optional<WriteReport> takeReport() { return reports.take(); }

    /// To the DiscFileReport that was taken last.
    void answer(bool goOn) { reports.answer(goOn); }

private:
    /// Where in a disc's tracks a number of sectors reaches.
    struct Place
    {
        int track = 0;  // from 0
        std::int64_t sectors = 0;
    };

    // The writing thread's.
    void run(const std::shared_future<void>& beginning);
    WriteEnd writeAll();
    std::optional<DiscWriteError> prepare();
    WriteEnd writeFromCache();
    WriteEnd writeThroughRing();
    WriteEnd endOf(const WriteOutcome& outcome, const std::optional<DiscWriteError>& feedError) const;
    Place placeOf(std::int64_t sectors) const;
    int percentOfTrack(const Place& place) const;
    void tellCaching(std::int64_t decoded);

    void stage(DiscStage stage, int track) override;
    void written(int track, std::int64_t sectors) override;
    bool givenUp() const override { return stop.stop_requested(); }

    const WriteOrder order;
    const std::shared_ptr<DiscDrive> drive;
    std::stop_source stop;
    WriteReports reports;
    std::atomic<bool> allSent = false;
    std::promise<void> ending;
    const std::shared_future<void> hasEnded{ending.get_future()};

    // The writing thread's.
    DiscPlan plan;
    std::int64_t totalSectors = 0;
    std::int64_t writtenSectors = 0;
    int percentBefore = 0;  // of the whole work, before the drive begins

    std::thread thread;
};

inline bool hasCome(const std::shared_future<void>& event)
{
    return event.wait_for(std::chrono::seconds{0}) == std::future_status::ready;
}

}  // namespace sound
