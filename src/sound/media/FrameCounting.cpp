#include "sound/media/FrameCounting.h"

#include <algorithm>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace sound {
namespace {

std::int64_t decodedFramesOf(const AVPacket& packet, const AvInput& input)
{
    AVCodecParameters& codec = *input.stream().codecpar;
    const int known = av_get_audio_frame_duration2(&codec, packet.size);
    std::int64_t frames = known > 0 ? known
                                    : av_rescale_q(std::max<std::int64_t>(packet.duration, 0),
                                                   input.stream().time_base, AVRational{1, codec.sample_rate});
    std::size_t size = 0;
    const std::uint8_t* skip = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &size);
    if (skip != nullptr && size >= 8)
        frames -= static_cast<std::int64_t>(AV_RL32(skip)) + static_cast<std::int64_t>(AV_RL32(skip + 4));
    return frames;
}

}  // namespace

FrameCount countFramesByPackets(const AvInput& input)
{
    const auto again = AvInput::open(input.file());
    const AvPacket packet(av_packet_alloc());
    if (!again || !packet)
        return {};
    std::int64_t frames = 0;
    while (again->read(*packet))
        frames += decodedFramesOf(*packet, *again);
    return {std::max<std::int64_t>(frames, 0)};
}

FrameCount countFrames(const AvInput& input)
{
    return countFramesByPackets(input);
}

}  // namespace sound
