#pragma once

namespace sound {

/// What kind of file a sound is written to, and how well. Why the settings are what they are:
/// docs/decisions/written-formats.md.
struct SoundFormat
{
    enum class Family
    {
        Wav,        ///< 16 bits; RF64 where it grows beyond 4 GiB.
        Mp3,        ///< Constant bit rate, with the encoder's delay and padding told.
        Wma,        ///< Windows Media Audio 2, constant bit rate.
        OggVorbis,  ///< Variable bit rate.
        Aac,        ///< Coded frames one after the other (ADTS), constant bit rate.
        Mp4,        ///< The same in an MP4 container, with the encoder's delay and padding told.
        Flac,       ///< 16 bits.
    };

    Family family = Family::Wav;

    /// Of MP3 and WMA: bits a second for all channels together.
    int bitRate = 0;

    /// Of Ogg Vorbis from 0 to 10, as its encoders count. Of AAC and MP4 in percent of the usual: 100 is 96 kbit/s
    /// a channel, and four times the quality is twice the bit rate.
    double quality = 0;
};

constexpr SoundFormat wavFormat()
{
    return {};
}
constexpr SoundFormat mp3Format(int bitRate)
{
    return {SoundFormat::Family::Mp3, bitRate, 0};
}
constexpr SoundFormat wmaFormat(int bitRate)
{
    return {SoundFormat::Family::Wma, bitRate, 0};
}
constexpr SoundFormat oggVorbisFormat(double quality)
{
    return {SoundFormat::Family::OggVorbis, 0, quality};
}
constexpr SoundFormat aacFormat(double quality)
{
    return {SoundFormat::Family::Aac, 0, quality};
}
constexpr SoundFormat mp4Format(double quality)
{
    return {SoundFormat::Family::Mp4, 0, quality};
}
constexpr SoundFormat flacFormat()
{
    return {SoundFormat::Family::Flac, 0, 0};
}

}  // namespace sound
