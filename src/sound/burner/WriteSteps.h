#pragma once

#include "sound/disc/DiscDrive.h"

namespace sound {

/// What libburn says it is doing, at some moment of a write.
struct WriteMoment
{
    enum Doing
    {
        LeadIn,
        Tracks,
        ClosingTrack,
        ClosingDisc,
    };

    Doing doing = LeadIn;

    // No sectors: none has begun yet, or all are done.
    int track = 0;
    int sectors = 0;
    int sectorsDone = 0;
};

/// Tells a WriteWatch what becomes of a disc, from looks at it every now and then. No look need be the last or the
/// first of its stage: a track that went by between two of them is told of, and nothing is told backwards.
class WriteSteps
{
public:
    /// Both must outlive it.
    WriteSteps(const DiscPlan& plan, WriteWatch& watch);

    void follow(const WriteMoment& moment);

    /// All tracks are on the disc.
    void finishTracks();

    /// The drive has all sectors: what is left is its own to do.
    bool isAllSent() const;

private:
    int lastTrack() const { return static_cast<int>(plan.tracks.size()) - 1; }
    void enter(DiscStage stage);
    void write(int wantedTrack, std::int64_t wantedSectors);
    void followTracks(const WriteMoment& moment);

    const DiscPlan& plan;
    WriteWatch& watch;
    bool begun = false;
    int track = 0;
    std::int64_t sectors = 0;  // of the track, as told
    DiscStage stage = DiscStage::Preparing;
    int stageTrack = -1;
};

}  // namespace sound
