#include "sound/media/counting/Mp4Samples.h"

#include <algorithm>
#include <cstdio>

extern "C" {
#include <libavutil/dict.h>
#include <libavutil/intreadwrite.h>
}

namespace sound {
namespace {

/// The table of the coded frames. Reading it changes nothing, though the library has no way to say so.
class Entries
{
public:
    explicit Entries(const AvInput& input)
        : stream(const_cast<AVStream*>(&input.stream()))
    {
    }

    int count() const { return avformat_index_get_entries_count(stream); }
    const AVIndexEntry& at(int index) const { return *avformat_index_get_entry(stream, index); }

private:
    AVStream* stream;
};

/// As far as the coded frames truly lie in the file.
struct Media
{
    std::int64_t end = 0;  // of the last one, in the stream's time
    std::int64_t count = 0;
};

Media mediaIn(const AvInput& input)
{
    const Entries entries(input);
    const std::int64_t fileSize = input.file()->size();
    Media media;
    for (int i = 0; i < entries.count(); ++i) {
        const AVIndexEntry& entry = entries.at(i);
        if (entry.size <= 0 || entry.pos < 0 || entry.pos > fileSize - entry.size)
            break;
        media.end = i + 1 < entries.count() ? entries.at(i + 1).timestamp : input.stream().duration;
        ++media.count;
    }
    return media;
}

/// How many frames the decoder is told to drop from the first packet.
std::int64_t framesSkippedAtBegin(AvInput& input)
{
    const AvPacket packet(av_packet_alloc());
    std::size_t size = 0;
    if (!packet || !input.read(*packet))
        return 0;
    const std::uint8_t* skip = av_packet_get_side_data(packet.get(), AV_PKT_DATA_SKIP_SAMPLES, &size);
    return skip != nullptr && size >= 4 ? std::int64_t{AV_RL32(skip)} : 0;
}

/// When the first coded frame that is to be decoded begins, in the time of the whole sound.
std::int64_t timeOfFirstDecoded(const AvInput& edited, const AvInput& whole)
{
    const Entries decoded(edited);
    const Entries all(whole);
    for (int i = 0; i < all.count(); ++i) {
        if (all.at(i).pos == decoded.at(0).pos)
            return all.at(i).timestamp;
    }
    return 0;
}

/// The length that some encoders write into a comment, with the delay and the padding; 0 where there is none.
std::int64_t framesByComment(const AvInput& input)
{
    const AVDictionaryEntry* comment = av_dict_get(input.format().metadata, "iTunSMPB", nullptr, 0);
    unsigned long long frames = 0;
    if (comment == nullptr || std::sscanf(comment->value, "%*x %*x %*x %llx", &frames) != 1)
        return 0;
    return static_cast<std::int64_t>(std::min<unsigned long long>(frames, std::int64_t{1} << 40));
}

}  // namespace

std::optional<FrameCount> countMp4Frames(const AvInput& input)
{
    const auto edited = AvInput::open(input.file());
    const auto whole = AvInput::open(input.file(), AvInput::Edits::Ignored);
    if (!edited || !whole || edited->stream().duration <= 0)
        return std::nullopt;
    const Media media = mediaIn(*whole);
    if (media.count == 0 || Entries(*edited).count() == 0)
        return std::nullopt;

    const AVRational frames = {1, input.codec().sample_rate};
    const auto inFrames = [&](std::int64_t time) { return av_rescale_q(time, input.stream().time_base, frames); };
    const std::int64_t begin = inFrames(timeOfFirstDecoded(*edited, *whole)) + framesSkippedAtBegin(*edited);
    std::int64_t counted = inFrames(media.end) - begin;
    // The list of edits can end the sound early; but it counts in the film's time, often whole milliseconds, so
    // that an end as close as that to the end of the coded frames means just that.
    const std::int64_t edit = inFrames(edited->stream().duration);
    const std::int64_t coarseness = input.codec().sample_rate / 500;
    if (edit < counted - coarseness)
        counted = edit;
    // A table that makes its coded frames last longer than they can is not believed.
    if (input.codec().frame_size > 0)
        counted = std::min(counted, media.count * input.codec().frame_size);
    if (const std::int64_t commented = framesByComment(input); commented > 0)
        counted = std::min(counted, commented);
    return counted > 0 ? std::optional(FrameCount{counted}) : std::nullopt;
}

}  // namespace sound
