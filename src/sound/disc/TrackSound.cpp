#include "sound/disc/TrackSound.h"

#include "sound/disc/DiscErrors.h"
#include "sound/media/OpenedFrames.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace sound {

static_assert(std::endian::native == std::endian::little);

OpenedTrackSound TrackSound::open(const DiscTrack& track)
{
    OpenedFrames opened = openFrames(track.file);
    if (!opened.stream)
        return {nullptr, unreadableSourceError(track.file)};
    if (opened.stream->rate() != track.rate || opened.stream->length() != track.length)
        return {nullptr, changedSourceError(track)};
    return {std::unique_ptr<TrackSound>(new TrackSound(std::move(opened.stream), track)), {}};
}

TrackSound::TrackSound(std::unique_ptr<FrameStream> openStream, const DiscTrack& track)
    : stream(std::move(openStream))
    , channels(stream->channels())
    , counted(track.length)
    , left(track.discFrames())
{
    if (track.rate != DiscTrack::discRate)
        converter.emplace(track.rate.hertz, DiscTrack::discRate.hertz, channels);
}

void TrackSound::read(std::span<std::byte> bytes)
{
    while (!bytes.empty()) {
        const auto there = std::as_bytes(std::span(samples)).subspan(used);
        if (there.empty() && !fill()) {
            std::ranges::fill(bytes, std::byte{0});
            return;
        }
        const std::size_t piece = std::min(bytes.size(), there.size());
        std::copy_n(there.begin(), piece, bytes.begin());
        used += piece;
        bytes = bytes.subspan(piece);
    }
}

/// Takes the next frames of the file, which may not yet make one of the disc. False where none follow.
bool TrackSound::fill()
{
    samples.clear();
    used = 0;
    if (ended)
        return false;
    buffer.clear();
    ended = !stream->next(buffer);
    decoded = decoded + FrameCount{static_cast<std::int64_t>(buffer.size()) / channels};
    if (!converter) {
        bringToDiscForm(buffer);
        return true;
    }
    converted.clear();
    if (ended)
        converter->finish(converted);
    else
        converter->convert(buffer, converted);
    bringToDiscForm(converted);
    return true;
}

void TrackSound::bringToDiscForm(std::span<const float> frames)
{
    const FrameCount count = std::min(left, FrameCount{static_cast<std::int64_t>(frames.size()) / channels});
    left = left - count;
    const auto given = frames.first(static_cast<std::size_t>(count.value * channels));
    samples.resize(static_cast<std::size_t>(count.value * 2));
    if (channels == 2) {
        std::ranges::transform(given, samples.begin(), [this](float sample) { return sixteenBits(sample); });
        return;
    }
    for (std::size_t frame = 0; frame < given.size(); ++frame)
        samples[2 * frame] = samples[2 * frame + 1] = sixteenBits(given[frame]);
}

}  // namespace sound
