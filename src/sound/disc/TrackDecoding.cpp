#include "sound/disc/TrackDecoding.h"

#include "engines/EngineError.h"
#include "sound/disc/DiscErrors.h"
#include "sound/disc/DiscPlan.h"
#include "sound/disc/TrackSound.h"
#include "sound/units/YieldingThread.h"

#include <algorithm>
#include <utility>

namespace sound {
namespace {

constexpr std::int64_t sectorsAPiece = 64;

}  // namespace

TrackDecoding::TrackDecoding(std::vector<DiscTrack> wanted, SectorSink& destination, GoOn ask, Pace pace)
    : tracks(std::move(wanted))
    , sink(destination)
    , goOn(std::move(ask))
    , buffer(static_cast<std::size_t>(sectorsAPiece * Sectors::bytes))
    , thread([this, pace](const std::stop_token& givenUp) {
        if (pace == Pace::Yielding)
            yieldToOthers();
        run(givenUp);
    })
{
}

void TrackDecoding::run(const std::stop_token& givenUp)
{
    const bool whole = std::ranges::all_of(tracks, [&](const DiscTrack& track) { return decode(track, givenUp); });
    sink.close(whole);
    const std::lock_guard lock(mutex);
    ended = true;
    progressed.notify_all();
}

bool TrackDecoding::decode(const DiscTrack& track, const std::stop_token& givenUp)
{
    if (givenUp.stop_requested())
        return false;
    const OpenedTrackSound opened = TrackSound::open(track);
    if (!opened.sound)
        return fail(opened.error);
    bool isWhole = true;
    for (std::int64_t left = track.sectors(); left > 0;) {
        const std::int64_t count = std::min(left, sectorsAPiece);
        const std::span<std::byte> bytes(buffer.data(), static_cast<std::size_t>(count * Sectors::bytes));
        opened.sound->read(bytes);
        if (isWhole && opened.sound->missing() > FrameCount{0}) {
            isWhole = false;
            const DiscFileReport report{track.file, QStringLiteral("The file ends early")};
            if (!goOn(report, givenUp))
                return fail(sourceFileError(track.file, code(EngineError::InvalidSoundFile), report.description));
        }
        if (!sink.put(bytes, givenUp))
            return false;
        left -= count;
        inSink.fetch_add(count, std::memory_order_relaxed);
    }
    return true;
}

bool TrackDecoding::fail(const DiscWriteError& error)
{
    const std::lock_guard lock(mutex);
    failure = error;
    return false;
}

bool TrackDecoding::waitForEnd(std::chrono::milliseconds time)
{
    std::unique_lock lock(mutex);
    return progressed.wait_for(lock, time, [this] { return ended; });
}

std::optional<DiscWriteError> TrackDecoding::error() const
{
    const std::lock_guard lock(mutex);
    return failure;
}

}  // namespace sound
