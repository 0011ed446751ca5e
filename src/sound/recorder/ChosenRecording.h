#pragma once

#include "engines/RecorderEngine.h"
#include "sound/recorder/FileSequence.h"

#include <optional>

namespace sound {

/// The format of the next recording, as it has been chosen number by number. The modes are the program's constants
/// and change nothing. Main thread.
class ChosenRecording : public RecorderEncodeFormats
{
public:
    void FormatForRecording(int format) override { number = format; }
    void EncodeMode(int) override {}
    void SampleRate(int hertz) override { rate = hertz; }
    void Channels(int count) override { channels = count; }
    RecorderMp3Settings& Mp3Settings() override { return mp3; }
    RecorderOggSettings& OggSettings() override { return ogg; }
    RecorderWavSettings& WavSettings() override { return wav; }
    RecorderWmaSettings& WmaSettings() override { return wma; }
    RecorderAacSettings& AacSettings() override { return aac; }

    /// None where no format has this number, or it cannot be recorded with this rate and these channels.
    std::optional<RecordingFormat> format() const;

private:
    struct Mp3 : RecorderMp3Settings
    {
        void Mode(int) override {}
        void Bitrate(double bitsPerSecond) override { bitRate = bitsPerSecond; }
        double bitRate = 128'000;
    };
    struct Ogg : RecorderOggSettings
    {
        void Mode(int) override {}
        void Quality(float ofTen) override { quality = ofTen; }
        float quality = 3;
    };
    struct Wav : RecorderWavSettings
    {
        void Mode(int) override {}
    };
    struct Wma : RecorderWmaSettings
    {
        void Mode(int) override {}
        void Bitrate(double bitsPerSecond) override { bitRate = bitsPerSecond; }
        double bitRate = 64'000;
    };
    struct Aac : RecorderAacSettings
    {
        void Mode(int) override {}
        void Quality(float percent) override { quality = percent; }
        void Mp4Container(bool wanted) override { mp4 = wanted; }
        float quality = 100;
        bool mp4 = false;
    };

    std::optional<SoundFormat> soundFormat() const;

    int number = Format::Wav;
    int rate = 44'100;
    int channels = 2;
    Mp3 mp3;
    Ogg ogg;
    Wav wav;
    Wma wma;
    Aac aac;
};

}  // namespace sound
