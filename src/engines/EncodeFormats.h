#pragma once

/// The settings of one family of file formats, written before an export. What a mode means is the engine's affair;
/// the program writes constants.
class Mp3Settings
{
public:
    virtual ~Mp3Settings();
    virtual void Mode(int mode) = 0;
    virtual void BitRate(int bitsPerSecond) = 0;
};

class WmaSettings
{
public:
    virtual ~WmaSettings();
    virtual void Mode(int mode) = 0;
    virtual void BitRate(int bitsPerSecond) = 0;
};

class OggSettings
{
public:
    virtual ~OggSettings();
    virtual void Mode(int mode) = 0;
    virtual void Quality(int quality) = 0;
};

class AacSettings
{
public:
    virtual ~AacSettings();
    virtual void Mode(int mode) = 0;
    virtual void Mp4Container(bool wanted) = 0;
    virtual void Quality(int quality) = 0;
};

class WavSettings
{
public:
    virtual ~WavSettings();
    virtual void Mode(int mode) = 0;
};

class FlacSettings
{
public:
    virtual ~FlacSettings();
    virtual void Mode(int mode) = 0;
};

/// Chooses the file format of an export. Reached through EditorEngine::EncodeFormats(); main thread only.
class EncodeFormats
{
public:
    enum Format : int
    {
        Wav = 1,
        Mp3 = 2,
        Wma = 3,
        OggVorbis = 4,
        Aac = 6,  ///< Raw, or in an MP4 container where AacSettings says so.
        Flac = 19,
    };

    virtual ~EncodeFormats();

    virtual void FormatForExport(int format) = 0;
    virtual ::Mp3Settings& Mp3Settings() = 0;
    virtual ::WmaSettings& WmaSettings() = 0;
    virtual ::OggSettings& OggSettings() = 0;
    virtual ::AacSettings& AacSettings() = 0;
    virtual ::WavSettings& WavSettings() = 0;
    virtual ::FlacSettings& FlacSettings() = 0;
};
