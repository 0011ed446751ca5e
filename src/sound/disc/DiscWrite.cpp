#include "sound/disc/DiscWrite.h"

#include "sound/disc/DiscErrors.h"
#include "sound/disc/DiscTextsOf.h"
#include "sound/disc/SectorCache.h"
#include "sound/disc/SectorRing.h"
#include "sound/disc/TrackDecoding.h"
#include "sound/media/SoundTags.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto lookInterval = 20ms;

// Decoding all tracks takes about a quarter of the time that a quick drive takes to write them.
constexpr int percentOfCaching = 20;

int percent(std::int64_t part, std::int64_t whole)
{
    return whole == 0 ? 0 : static_cast<int>(part * 100 / whole);
}

WriteEnd cancelled()
{
    return {DiscStage::Cancelled};
}

WriteEnd failed(const DiscWriteError& error)
{
    return {DiscStage::Failed, error};
}

DiscWriteError cacheError(const SectorCache& cache)
{
    return outputFileError(QStringLiteral("temporary file"), cache.failure());
}

}  // namespace

DiscWrite::DiscWrite(WriteOrder wanted, std::shared_ptr<DiscDrive> device, std::shared_future<void> beginning)
    : order(std::move(wanted))
    , drive(std::move(device))
    , thread([this, beginning = std::move(beginning)] { run(beginning); })
{
}

DiscWrite::~DiscWrite()
{
    finish();
}

void DiscWrite::giveUp()
{
    stop.request_stop();
}

void DiscWrite::finish()
{
    giveUp();
    if (thread.joinable())
        thread.join();
}

void DiscWrite::run(const std::shared_future<void>& beginning)
{
    reports.tell({DiscStage::Preparing});
    if (beginning.valid())
        beginning.wait();
    reports.tellEnd(writeAll());
    ending.set_value();
}

WriteEnd DiscWrite::writeAll()
{
    const std::optional<DiscWriteError> fault = prepare();
    if (givenUp())
        return cancelled();
    if (fault)
        return failed(*fault);
    return order.cacheFiles ? writeFromCache() : writeThroughRing();
}

/// Finds what can be wrong with the tracks while the disc is still blank, and what they are called.
std::optional<DiscWriteError> DiscWrite::prepare()
{
    std::vector<SoundTags> tags;
    for (const DiscTrack& track : order.tracks) {
        if (givenUp())
            return std::nullopt;
        if (const auto change = changeOf(track))
            return change;
        tags.push_back(readSoundTags(track.file));
        tags.back().cover.clear();
        plan.tracks.push_back({track.sectors(), trackTexts(tags.back())});
        totalSectors += track.sectors();
    }
    plan.texts = discTexts(tags);
    plan.discAtOnce = order.discAtOnce;
    plan.test = order.test;
    plan.underrunProtection = order.underrunProtection;
    plan.speed = order.speed;
    return givenUp() ? std::nullopt : drive->objectionTo(plan);
}

WriteEnd DiscWrite::writeFromCache()
{
    SectorCache cache(totalSectors, stop.get_token());
    {
        const auto goOn = [this](const DiscFileReport& report, const std::stop_token& token) {
            return reports.ask(report, token);
        };
        TrackDecoding decoding(order.tracks, cache, goOn, TrackDecoding::Pace::Yielding);
        bool ended = false;
        while (!ended && !givenUp()) {
            ended = decoding.waitForEnd(lookInterval);
            tellCaching(decoding.decoded());
        }
        if (!ended || givenUp())
            return cancelled();
        if (const auto error = decoding.error())
            return failed(*error);
    }
    if (cache.failure() != 0)
        return failed(cacheError(cache));
    percentBefore = percentOfCaching;
    const WriteOutcome outcome = drive->write(plan, cache, *this);
    return endOf(outcome, cache.failure() != 0 ? std::optional(cacheError(cache)) : std::nullopt);
}

WriteEnd DiscWrite::writeThroughRing()
{
    SectorRing ring(std::min(order.reserve, totalSectors), stop.get_token());
    const auto goOn = [this](const DiscFileReport& report, const std::stop_token& token) {
        return reports.ask(report, token);
    };
    TrackDecoding decoding(order.tracks, ring, goOn, TrackDecoding::Pace::Quick);
    bool full = false;
    while (!full && !givenUp()) {
        full = ring.waitUntilFull(lookInterval);
        reports.tell({DiscStage::Caching, 0, placeOf(decoding.decoded()).track + 1, ring.percentFull()});
    }
    if (givenUp())
        return cancelled();
    if (const auto error = decoding.error())
        return failed(*error);
    const WriteOutcome outcome = drive->write(plan, ring, *this);
    return endOf(outcome, decoding.error());
}

WriteEnd DiscWrite::endOf(const WriteOutcome& outcome, const std::optional<DiscWriteError>& feedError) const
{
    if (outcome.end == WriteOutcome::Written)
        return {DiscStage::Completed};
    if (givenUp() || outcome.end == WriteOutcome::GivenUp)
        return cancelled();
    if (feedError)
        return failed(*feedError);
    return failed(outcome.end == WriteOutcome::Failed ? outcome.error : systemError(EIO));
}

DiscWrite::Place DiscWrite::placeOf(std::int64_t sectors) const
{
    Place place{0, sectors};
    for (const DiscPlan::Track& track : plan.tracks) {
        if (place.sectors <= track.sectors)
            break;
        place.sectors -= track.sectors;
        ++place.track;
    }
    return place;
}

int DiscWrite::percentOfTrack(const Place& place) const
{
    const auto index = static_cast<std::size_t>(place.track);
    return index < plan.tracks.size() ? percent(place.sectors, plan.tracks[index].sectors) : 0;
}

void DiscWrite::tellCaching(std::int64_t decoded)
{
    const Place place = placeOf(decoded);
    reports.tell({DiscStage::CachingImage, percent(decoded, totalSectors) * percentOfCaching / 100, place.track + 1,
                  percentOfTrack(place)});
}

void DiscWrite::stage(DiscStage stage, int track)
{
    const bool isOfTrack = stage == DiscStage::Writing || stage == DiscStage::ClosingTrack;
    const int total = percentBefore + percent(writtenSectors, totalSectors) * (100 - percentBefore) / 100;
    const bool begins = stage == DiscStage::Writing || stage == DiscStage::LeadIn;
    reports.tell({stage, total, isOfTrack ? track + 1 : 0, begins ? 0 : 100});
}

void DiscWrite::written(int track, std::int64_t sectors)
{
    writtenSectors = sectors;
    for (int before = 0; before < track; ++before)
        writtenSectors += plan.tracks[static_cast<std::size_t>(before)].sectors;
    allSent = writtenSectors == totalSectors;
    reports.tell({DiscStage::Writing,
                  percentBefore + percent(writtenSectors, totalSectors) * (100 - percentBefore) / 100, track + 1,
                  percentOfTrack({track, sectors})});
}

}  // namespace sound
