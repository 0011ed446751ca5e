#include "sound/media/FrameCounting.h"

#include "sound/media/counting/CodedHeads.h"
#include "sound/media/counting/FlacFrames.h"
#include "sound/media/counting/Mp4Samples.h"
#include "sound/media/counting/MpegFrames.h"
#include "sound/media/counting/OggPages.h"
#include "sound/media/counting/PcmChunks.h"
#include "sound/media/counting/WavPackBlocks.h"
#include "sound/media/counting/WmaPackets.h"

#include <algorithm>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace sound {
namespace {

std::optional<FrameCount> countPcmFrames(const AvInput& input)
{
    const AVCodecParameters& codec = input.codec();
    const std::int64_t frameSize =
        std::int64_t{av_get_exact_bits_per_sample(codec.codec_id)} / 8 * codec.ch_layout.nb_channels;
    const auto samples = findPcmSamples(*input.file());
    if (frameSize <= 0 || !samples)
        return std::nullopt;
    return FrameCount{(samples->end - samples->begin) / frameSize};
}

/// Of a file that is nothing but one coded frame after the other. Where the decoder makes more of a frame than its
/// head says (the upper half of the spectrum, told in an extension), it tells so by its rate.
std::optional<FrameCount> countCodedFrames(const AvInput& input, ReadCodedHead readHead)
{
    FileBytes bytes(*input.file());
    const WalkedFrames walked = walkFrames(bytes, endOfId3Tags(bytes), beginOfId3v1Tag(bytes), readHead);
    if (walked.count == 0)
        return std::nullopt;
    return FrameCount{walked.frames * input.codec().sample_rate / walked.first.rate};
}

std::optional<FrameCount> countByContainer(const AvInput& input)
{
    const AVCodecID codec = input.codec().codec_id;
    if (input.is("wav") || input.is("w64") || input.is("aiff"))
        return countPcmFrames(input);
    if (input.is("mp3"))
        return countMpegFrames(*input.file(), SampleRate{input.codec().sample_rate});
    if (input.is("aac"))
        return countCodedFrames(input, readAdtsHead);
    if (input.is("ac3"))
        return countCodedFrames(input, readAc3Head);
    if (input.is("flac"))
        return countFlacFrames(*input.file());
    if (input.is("wv"))
        return countWavPackFrames(*input.file());
    if (input.is("mp4"))
        return countMp4Frames(input);
    if (input.is("ogg")) {
        const AVStream& stream = input.stream();
        const AVRational frames = {1, input.codec().sample_rate};
        const std::int64_t start =
            stream.start_time == AV_NOPTS_VALUE ? 0 : av_rescale_q(stream.start_time, stream.time_base, frames);
        return countOggFrames(*input.file(), FramePosition{start});
    }
    if (codec == AV_CODEC_ID_WMAV1 || codec == AV_CODEC_ID_WMAV2) {
        const auto again = AvInput::open(input.file());
        return again ? countWmaFrames(*again) : std::nullopt;
    }
    return std::nullopt;
}

/// What a packet is to be decoded to, less what the container says is to be skipped at its beginning.
std::int64_t decodedFramesOf(const AVPacket& packet, AVCodecParameters& codec)
{
    std::size_t size = 0;
    const std::uint8_t* skip = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &size);
    const std::int64_t skipped =
        skip != nullptr && size >= 8 ? std::int64_t{AV_RL32(skip)} + std::int64_t{AV_RL32(skip + 4)} : 0;
    return av_get_audio_frame_duration2(&codec, packet.size) - skipped;
}

}  // namespace

FrameCount countFramesByPackets(const AvInput& input)
{
    const auto again = AvInput::open(input.file());
    const AvPacket packet(av_packet_alloc());
    if (!again || !packet)
        return {};
    const AVStream& stream = again->stream();
    std::int64_t bySize = 0;
    std::int64_t firstTime = AV_NOPTS_VALUE;
    std::int64_t endTime = AV_NOPTS_VALUE;
    while (again->read(*packet)) {
        bySize += decodedFramesOf(*packet, *stream.codecpar);
        if (packet->pts == AV_NOPTS_VALUE)
            continue;
        if (firstTime == AV_NOPTS_VALUE)
            firstTime = packet->pts;
        endTime = std::max(endTime, packet->pts + std::max<std::int64_t>(packet->duration, 0));
    }
    if (bySize > 0)
        return {bySize};
    if (endTime == AV_NOPTS_VALUE)
        return {};
    return {av_rescale_q(endTime - firstTime, stream.time_base, AVRational{1, again->codec().sample_rate})};
}

FrameCount countFrames(const AvInput& input)
{
    const auto counted = countByContainer(input);
    return counted ? *counted : countFramesByPackets(input);
}

}  // namespace sound
