#include "sound/media/counting/WmaPackets.h"

#include <algorithm>

namespace sound {
namespace {

std::int64_t framesInCodedFrame(const AVCodecParameters& codec)
{
    const bool first = codec.codec_id == AV_CODEC_ID_WMAV1;
    if (codec.sample_rate <= 16000)
        return 512;
    if (codec.sample_rate <= 22050 || (codec.sample_rate <= 32000 && first))
        return 1024;
    if (codec.sample_rate <= 48000 || first)
        return 2048;
    return codec.sample_rate <= 96000 ? 4096 : 8192;
}

/// Whether coded frames go on over the ends of packets, whose heads then tell how many end in them.
bool framesCrossPackets(const AVCodecParameters& codec)
{
    const int flagsPlace = codec.codec_id == AV_CODEC_ID_WMAV1 ? 2 : 4;
    return codec.extradata_size > flagsPlace && (codec.extradata[flagsPlace] & 2) != 0;
}

}  // namespace

std::optional<FrameCount> countWmaFrames(AvInput& input)
{
    const AvPacket packet(av_packet_alloc());
    if (!packet)
        return std::nullopt;
    // Several packets can come as one, each of this size.
    const std::int64_t packetSize = std::max(input.codec().block_align, 1);
    const bool crossing = framesCrossPackets(input.codec());
    std::int64_t coded = 0;
    bool pending = false;  // the beginning of a coded frame is there from the last packet
    while (input.read(*packet)) {
        for (std::int64_t at = 0; at + packetSize <= packet->size; at += packetSize) {
            const int ending = crossing ? packet->data[at] & 0x0F : 1;
            coded += std::max(0, ending - (crossing && !pending ? 1 : 0));
            pending = true;
        }
    }
    // The decoder drops two frames, its delay, and has one more when it is drained.
    const std::int64_t frames = (coded - 1) * framesInCodedFrame(input.codec());
    return frames > 0 ? std::optional(FrameCount{frames}) : std::nullopt;
}

}  // namespace sound
