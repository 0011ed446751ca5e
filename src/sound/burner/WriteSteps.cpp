#include "sound/burner/WriteSteps.h"

#include <algorithm>

namespace sound {

WriteSteps::WriteSteps(const DiscPlan& of, WriteWatch& whom)
    : plan(of)
    , watch(whom)
{
}

void WriteSteps::enter(DiscStage next)
{
    if (stage == next && stageTrack == track)
        return;
    stage = next;
    stageTrack = track;
    watch.stage(stage, track);
}

void WriteSteps::write(int wantedTrack, std::int64_t wantedSectors)
{
    while (track <= lastTrack() && track <= wantedTrack) {
        const std::int64_t length = plan.tracks[static_cast<std::size_t>(track)].sectors;
        const std::int64_t now = track < wantedTrack ? length : std::min(wantedSectors, length);
        if (now > sectors) {
            enter(DiscStage::Writing);
            sectors = now;
            watch.written(track, sectors);
        }
        if (track == wantedTrack)
            return;
        ++track;
        sectors = 0;
    }
}

void WriteSteps::finishTracks()
{
    begun = true;
    write(lastTrack(), plan.tracks.back().sectors);
}

bool WriteSteps::isAllSent() const
{
    return track > lastTrack() || (track == lastTrack() && sectors == plan.tracks.back().sectors);
}

// The last sector has been sent, and the drive is still at it: at the end of the track, or of the disc.
void WriteSteps::followTracks(const WriteMoment& moment)
{
    if (moment.sectors <= 0) {
        if (begun) {
            finishTracks();
            enter(DiscStage::UpdatingVolume);
        } else {
            enter(DiscStage::LeadIn);
        }
        return;
    }
    begun = true;
    write(std::min(moment.track, lastTrack()), moment.sectorsDone);
    if (moment.track < track)
        return;
    if (sectors < plan.tracks[static_cast<std::size_t>(track)].sectors) {
        enter(DiscStage::Writing);
    } else if (!plan.discAtOnce) {
        enter(DiscStage::ClosingTrack);
    } else if (track == lastTrack()) {
        enter(DiscStage::LeadOut);
    }
}

void WriteSteps::follow(const WriteMoment& moment)
{
    switch (moment.doing) {
    case WriteMoment::LeadIn:
        if (!begun)
            enter(DiscStage::LeadIn);
        break;
    case WriteMoment::Tracks:
        followTracks(moment);
        break;
    case WriteMoment::ClosingTrack:
        enter(DiscStage::ClosingTrack);
        break;
    case WriteMoment::ClosingDisc:
        write(std::min(moment.track, lastTrack()), moment.sectorsDone);
        enter(DiscStage::LeadOut);
        break;
    }
}

}  // namespace sound
