#include "sound/recorder/ChosenRecording.h"

#include <cmath>

namespace sound {
namespace {

int wholeBits(double bitRate)
{
    return static_cast<int>(std::lround(bitRate));
}

}  // namespace

std::optional<SoundFormat> ChosenRecording::soundFormat() const
{
    switch (number) {
    case Format::Wav:
        return wavFormat();
    case Format::Mp3:
        return mp3Format(wholeBits(mp3.bitRate));
    case Format::Wma:
        return wmaFormat(wholeBits(wma.bitRate));
    case Format::OggVorbis:
        return oggVorbisFormat(ogg.quality);
    case Format::Aac:
        return aac.mp4 ? mp4Format(aac.quality) : aacFormat(aac.quality);
    default:
        return std::nullopt;
    }
}

std::optional<RecordingFormat> ChosenRecording::format() const
{
    constexpr int lowestRate = 8000;
    constexpr int highestRate = 192'000;
    const std::optional<SoundFormat> wanted = soundFormat();
    if (!wanted || rate < lowestRate || rate > highestRate || channels < 1 || channels > 2)
        return std::nullopt;
    return RecordingFormat{*wanted, {rate}, channels};
}

}  // namespace sound
