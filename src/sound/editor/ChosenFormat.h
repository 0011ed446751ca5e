#pragma once

#include "engines/EncodeFormats.h"
#include "sound/media/SoundFormat.h"

#include <optional>

namespace sound {

/// The format of the next export, as it has been chosen number by number. The modes are the program's constants and
/// change nothing. Main thread.
class ChosenFormat : public EncodeFormats
{
public:
    void FormatForExport(int format) override { number = format; }
    ::Mp3Settings& Mp3Settings() override { return mp3; }
    ::WmaSettings& WmaSettings() override { return wma; }
    ::OggSettings& OggSettings() override { return ogg; }
    ::AacSettings& AacSettings() override { return aac; }
    ::WavSettings& WavSettings() override { return wav; }
    ::FlacSettings& FlacSettings() override { return flac; }

    /// None where no format has this number.
    std::optional<SoundFormat> format() const;

private:
    struct Mp3 : ::Mp3Settings
    {
        void Mode(int) override {}
        void BitRate(int bitsPerSecond) override { bitRate = bitsPerSecond; }
        int bitRate = 128000;
    };
    struct Wma : ::WmaSettings
    {
        void Mode(int) override {}
        void BitRate(int bitsPerSecond) override { bitRate = bitsPerSecond; }
        int bitRate = 128000;
    };
    struct Ogg : ::OggSettings
    {
        void Mode(int) override {}
        void Quality(int ofTen) override { quality = ofTen; }
        int quality = 4;
    };
    struct Aac : ::AacSettings
    {
        void Mode(int) override {}
        void Mp4Container(bool wanted) override { mp4 = wanted; }
        void Quality(int percent) override { quality = percent; }
        bool mp4 = false;
        int quality = 100;
    };
    struct Wav : ::WavSettings
    {
        void Mode(int) override {}
    };
    struct Flac : ::FlacSettings
    {
        void Mode(int) override {}
    };

    int number = Format::Wav;
    Mp3 mp3;
    Wma wma;
    Ogg ogg;
    Aac aac;
    Wav wav;
    Flac flac;
};

}  // namespace sound
