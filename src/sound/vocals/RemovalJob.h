#pragma once

#include "engines/VocalRemoverEngine.h"
#include "sound/units/Frames.h"
#include "sound/vocals/SegmentRemover.h"
#include "sound/vocals/VocalCanceller.h"
#include "sound/vocals/WaveInput.h"
#include "sound/vocals/WaveOutput.h"

#include <QString>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace sound {

struct RemovalSettings
{
    QString input;
    QString output;
    VoicePlace place;
};

/// Takes the voice out of a file, on threads of its own that yield to all others that have work.
///
/// The sound is cut into segments, of which each thread has one at a time: memory does not grow with the length of
/// the sound, and neither their length nor the number of threads shows in what comes out.
///
/// The output appears whole under its name, or not at all. Where the job fails, a file that bore the name before is
/// taken away, as far as its folder allows; unless it is the input.
///
/// **Order.** waitFor() until it is true, then finish(). Destroyed before that it has failed.
/// **Threads.** One.
class RemovalJob
{
public:
    /// Begins at once. @p segment is the length of the segments; 0 is what fits.
    explicit RemovalJob(RemovalSettings settings, int workers, FrameCount segment = {});
    ~RemovalJob();
    RemovalJob(const RemovalJob&) = delete;
    RemovalJob& operator=(const RemovalJob&) = delete;

    /// Waits so long at most for all of the output to be on the disc, or for the job to fail; whether it is or has.
    bool waitFor(std::chrono::milliseconds time);

    /// 0 to 99 and never back; 100 when waitFor() has nothing to wait for.
    short percent() const;

    /// The job soon ends, as GivenUp.
    void giveUp();

    /// How it has ended until now, or is about to: Done as long as nothing speaks against it.
    VocalRemoval result() const;

    /// Once, in an instant: gives the output its name, or takes what bears it away. How the job ended.
    VocalRemoval finish();

private:
    struct Segment
    {
        FramePosition begin;
        FrameCount length;
    };

    VocalRemoval removeAll();
    void removeSegments(const WaveInput& input, WaveOutput& file);
    void work(SegmentRemover& remover);
    std::optional<Segment> nextSegment();
    void segmentEnded(const Segment& segment, VocalRemoval how);

    const RemovalSettings settings;
    const int workers;
    const FrameCount wantedSegment;

    mutable std::mutex mutex;  // over what the threads share
    std::condition_variable changed;
    VocalRemoval outcome = VocalRemoval::Done;
    bool ended = false;
    FrameCount total;
    FrameCount segmentLength;
    FramePosition taken;  // all before it has been taken by one of the threads
    FrameCount removed;   // and this much of it is in the output

    std::unique_ptr<WaveOutput> output;  // once all of it is on the disc
    bool finished = false;
    std::thread thread;
};

}  // namespace sound
