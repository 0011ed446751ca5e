#include "sound/media/WrittenTags.h"

#include <cstring>

extern "C" {
#include <libavutil/dict.h>
}

namespace sound {
namespace {

using Family = SoundFormat::Family;

std::span<const std::uint8_t> bytesOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

}  // namespace

WrittenTags::WrittenTags(AvOutput& container, Family family, const SoundTags& wanted)
    : output(container)
    , tags(wanted)
    , picture(coverPictureIn(bytesOf(wanted.cover)))
{
    addText("title", tags.title);
    addText("artist", tags.artist);
    addText("album", tags.album);
    addText("album_artist", tags.albumArtist);
    addText("track", tags.track);
    addText("date", tags.date);
    addText("genre", tags.genre);
    if (!picture)
        return;
    if (family == Family::Mp3 || family == Family::Mp4 || family == Family::Flac)
        addCoverStream();
    else if (family == Family::OggVorbis)
        addCoverComment();
}

void WrittenTags::addText(const char* name, const QString& text)
{
    if (text.isEmpty())
        return;
    // Some containers take them from the whole, some from the sound in it.
    const QByteArray bytes = text.toUtf8();
    av_dict_set(&output.format().metadata, name, bytes.constData(), 0);
    av_dict_set(&output.format().streams[0]->metadata, name, bytes.constData(), 0);
    empty = false;
}

/// The picture poses as a film of one picture, whose packet follows the head.
void WrittenTags::addCoverStream()
{
    coverStream = output.addStream();
    if (coverStream == nullptr)
        return;
    coverStream->disposition = AV_DISPOSITION_ATTACHED_PIC;
    AVCodecParameters& codec = *coverStream->codecpar;
    codec.codec_type = AVMEDIA_TYPE_VIDEO;
    codec.codec_id = picture->kind == CoverPicture::Kind::Png ? AV_CODEC_ID_PNG : AV_CODEC_ID_MJPEG;
    codec.width = picture->width;
    codec.height = picture->height;
    av_dict_set(&coverStream->metadata, "comment", "Cover (front)", 0);
    empty = false;
}

void WrittenTags::addCoverComment()
{
    const QByteArray block = flacPictureBlock(*picture, tags.cover).toBase64();
    av_dict_set(&output.format().streams[0]->metadata, "METADATA_BLOCK_PICTURE", block.constData(), 0);
    empty = false;
}

bool WrittenTags::writeCover()
{
    if (coverStream == nullptr)
        return true;
    const AvPacket packet(av_packet_alloc());
    const auto size = static_cast<int>(tags.cover.size());
    if (!packet || av_new_packet(packet.get(), size) < 0)
        return false;
    std::memcpy(packet->data, tags.cover.constData(), static_cast<std::size_t>(size));
    packet->stream_index = coverStream->index;
    packet->flags |= AV_PKT_FLAG_KEY;
    packet->pts = packet->dts = 0;
    return output.write(*packet, coverStream->time_base);
}

}  // namespace sound
