#include "sound/media/WrittenContainer.h"

#include <algorithm>

namespace sound {

using Family = SoundFormat::Family;

const char* containerOf(Family family)
{
    switch (family) {
    case Family::Wav:
        return "wav";
    case Family::Mp3:
        return "mp3";
    case Family::Wma:
        return "asf";
    case Family::OggVorbis:
        return "ogg";
    case Family::Aac:
        return "adts";
    case Family::Mp4:
        return "mp4";
    case Family::Flac:
        return "flac";
    }
    return "";
}

std::string containerOptions(Family family, const AVCodecContext& codec, bool tagged)
{
    constexpr int usualAsfPacket = 3200;
    switch (family) {
    case Family::Wav:
        return "rf64=auto";
    case Family::Mp3:
        return tagged ? "id3v2_version=3" : "id3v2_version=0";
    case Family::Aac:
        return tagged ? "write_id3v2=1" : "";
    case Family::Mp4:  // counts its edits in this unit, so that the end of the sound is exact
        return "movie_timescale=" + std::to_string(codec.sample_rate);
    case Family::Wma:
        return asfPacketsOf(usualAsfPacket, codec);
    case Family::OggVorbis:
        // In microseconds. FFmpeg's decoders lose 128 frames of a sound that lies on a single page; so only those
        // few that are shorter than this do.
        return "page_duration=100000";
    case Family::Flac:
        break;
    }
    return "";
}

/// A packet that does not just hold some coded frames is filled up, with half of it for nothing at some bit rates.
std::string asfPacketsOf(int bytes, const AVCodecContext& codec)
{
    constexpr int head = 16;
    constexpr int headOfEach = 17;
    const int each = codec.block_align + headOfEach;
    return "packet_size=" + std::to_string(head + std::max(1, bytes / each) * each);
}

bool addSound(AvOutput& output, const AVCodecContext& codec)
{
    AVStream* stream = output.addStream();
    if (stream == nullptr || avcodec_parameters_from_context(stream->codecpar, &codec) < 0)
        return false;
    stream->time_base = codec.time_base;
    return true;
}

/// Of MP3 the last coded frame can be all padding. The container would tell only that, and not the padding in the
/// frame before.
bool isPadding(const AVPacket& packet, const AVCodecContext& codec)
{
    return codec.codec_id == AV_CODEC_ID_MP3 && packet.duration == 0;
}

}  // namespace sound
