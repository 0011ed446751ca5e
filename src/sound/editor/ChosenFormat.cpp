#include "sound/editor/ChosenFormat.h"

namespace sound {

std::optional<SoundFormat> ChosenFormat::format() const
{
    switch (number) {
    case Format::Wav:
        return wavFormat();
    case Format::Mp3:
        return mp3Format(mp3.bitRate);
    case Format::Wma:
        return wmaFormat(wma.bitRate);
    case Format::OggVorbis:
        return oggVorbisFormat(ogg.quality);
    case Format::Aac:
        return aac.mp4 ? mp4Format(aac.quality) : aacFormat(aac.quality);
    case Format::Flac:
        return flacFormat();
    default:
        return std::nullopt;
    }
}

}  // namespace sound
