#include "sound/media/SoundTags.h"

#include "sound/media/AvInput.h"
#include "sound/media/CoverPicture.h"

#include <QStringDecoder>
#include <span>

extern "C" {
#include <libavutil/dict.h>
}

namespace sound {
namespace {

/// Tags of old files can be of any encoding; what is not UTF-8 is taken for Latin-1.
QString decoded(const char* bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

QString text(const AvInput& input, const char* name)
{
    constexpr qsizetype longest = 1000;
    for (const AVDictionary* tags : {input.format().metadata, input.stream().metadata}) {
        const AVDictionaryEntry* entry = av_dict_get(tags, name, nullptr, 0);
        const QString value = entry != nullptr ? decoded(entry->value).simplified() : QString();
        if (!value.isEmpty())
            return value.left(longest);
    }
    return {};
}

/// The picture of the front where the file tells, else the first.
QByteArray cover(const AvInput& input)
{
    QByteArray found;
    for (const AVStream* stream : std::span(input.format().streams, input.format().nb_streams)) {
        const AVPacket& picture = stream->attached_pic;
        if ((stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0 || picture.data == nullptr ||
            !coverPictureIn({picture.data, static_cast<std::size_t>(picture.size)}))
            continue;
        const AVDictionaryEntry* kind = av_dict_get(stream->metadata, "comment", nullptr, 0);
        const bool isFront = kind != nullptr && qstrcmp(kind->value, "Cover (front)") == 0;
        if (isFront || found.isEmpty())
            found = QByteArray(reinterpret_cast<const char*>(picture.data), picture.size);
        if (isFront)
            break;
    }
    return found;
}

}  // namespace

SoundTags readSoundTags(const QString& path)
{
    auto file = RegularFile::open(path);
    const auto input = file ? AvInput::open(std::move(file)) : nullptr;
    if (!input)
        return {};
    return {text(*input, "title"), text(*input, "artist"), text(*input, "album"), text(*input, "album_artist"),
            text(*input, "track"), text(*input, "date"),   text(*input, "genre"), cover(*input)};
}

}  // namespace sound
