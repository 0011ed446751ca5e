#pragma once

#include <QObject>
#include <QString>
#include <array>
#include <cstdint>

class RecorderMp3Settings
{
public:
    virtual ~RecorderMp3Settings();

    /// @p mode 1, the only one: constant bit rate.
    virtual void Mode(int mode) = 0;
    virtual void Bitrate(double bitsPerSecond) = 0;
};

class RecorderOggSettings
{
public:
    virtual ~RecorderOggSettings();

    /// @p mode 0, the only one: the quality holds.
    virtual void Mode(int mode) = 0;

    /// 1 to 10.
    virtual void Quality(float quality) = 0;
};

class RecorderWavSettings
{
public:
    virtual ~RecorderWavSettings();

    /// @p mode 1, the only one: plain samples of 16 bits.
    virtual void Mode(int mode) = 0;
};

class RecorderWmaSettings
{
public:
    virtual ~RecorderWmaSettings();

    /// @p mode 1, the only one: constant bit rate.
    virtual void Mode(int mode) = 0;
    virtual void Bitrate(double bitsPerSecond) = 0;
};

class RecorderAacSettings
{
public:
    virtual ~RecorderAacSettings();

    /// @p mode 0, the only one: the quality holds.
    virtual void Mode(int mode) = 0;

    /// In percent of the usual, 10 to 500.
    virtual void Quality(float quality) = 0;

    /// True is an MP4 file, false a file of bare AAC.
    virtual void Mp4Container(bool wanted) = 0;
};

/// The format of the files that a recorder begins from now on; one that is under way keeps its own. Reached through
/// RecorderEngine::EncodeFormats(). May be written before InitRecorder, in any order and with passing values that
/// make no sense: what counts is what it holds when a file is begun.
class RecorderEncodeFormats
{
public:
    enum Format : int
    {
        Wav = 1,
        Mp3 = 2,
        Wma = 3,
        OggVorbis = 4,
        Aac = 6,  ///< Bare, or in an MP4 container where RecorderAacSettings says so.
    };

    virtual ~RecorderEncodeFormats();

    virtual void FormatForRecording(int format) = 0;

    /// @p mode is always 0.
    virtual void EncodeMode(int mode) = 0;

    /// Hertz.
    virtual void SampleRate(int hertz) = 0;

    /// 1 or 2.
    virtual void Channels(int channels) = 0;

    virtual RecorderMp3Settings& Mp3Settings() = 0;
    virtual RecorderOggSettings& OggSettings() = 0;
    virtual RecorderWavSettings& WavSettings() = 0;
    virtual RecorderWmaSettings& WmaSettings() = 0;
    virtual RecorderAacSettings& AacSettings() = 0;
};

/// The level bars that a recorder's window shows. Reached through RecorderEngine::BarMeters().
///
/// Handles are above 0; 0 is no bar, and a call with the handle of none does nothing. A bar goes with its window.
class RecorderBarMeters
{
public:
    /// What a bar looks like. Words 1, 2 and 6 are the bar's own: they are written back as they were read.
    /// Colours are numbers of blue, green and red bytes, blue highest.
    enum Word : std::size_t
    {
        BarMode = 0,  ///< 1: fills from left to right.
        LevelColor = 3,
        TopColor = 4,  ///< Of the topmost tenth of the range.
        EmptyColor = 5,
    };
    using BarSettings = std::array<std::uint32_t, 7>;

    virtual ~RecorderBarMeters();

    /// Makes a bar at this place in the window of this native handle; 0 where there is no such window. The place is
    /// in logical pixels.
    virtual int CreateBar(int parentWindow, int left, int top, int width, int height) = 0;
    virtual void SetBarRange(const int& handle, int minimum, int maximum) = 0;

    /// Values outside the range are cut to it.
    virtual void SetBarValue(const int& handle, int value) = 0;
    virtual void GetBarSettings(const int& handle, BarSettings* settings) = 0;
    virtual void SetBarSettings(const int& handle, const BarSettings* settings) = 0;
};

/// Reached through RecorderEngine::VuMeter().
class RecorderVuMeter
{
public:
    virtual ~RecorderVuMeter();

    /// Sends RecorderEngine::RecordingPeaks from now on, recording or not. @p mode is always 0.
    virtual void StartVuMeter(int mode) = 0;
};

/// Plays the last recording through the system's default output. Reached through RecorderEngine::RecordedSound().
class RecordedSound
{
public:
    virtual ~RecordedSound();

    /// From its beginning, also where it plays already. The end raises RecorderEngine::RecorderSessionDone; so
    /// does, at once, a recording that is not there.
    virtual void PlayRecordedSound() = 0;
    virtual void StopRecordedSound() = 0;
};

/// The recorder: captures one input of the system, writes it to files, watches its level, and replays it.
///
/// **Devices** are the sources of the sound server, the default one first, and are numbered from 0 in the order
/// that InitRecorder found. Their input lines are the source's ports; a source without ports is one line. A level
/// is the source's volume, 0 to 100. Indices that name nothing, -1 among them, are answered with 0 or an empty name
/// and change nothing.
///
/// **Files.** Every frame that the device delivers from StartRecordingToFile on stands in a file, and in one only:
/// ContinueRecordingToFile, and another StartRecordingToFile, begin the new file with the frame behind the last one
/// of the old. What has been captured is on the disc within a second. A missing folder is made.
///
/// **Failure.** There are no results but OpenRecordingDevice's. A file that cannot be begun or written further, a
/// device that is unplugged and a server that goes away end the recording: the file is closed with what it holds,
/// and RecorderSessionDone follows. A device that is gone is never replaced by another.
///
/// **Threads.** Calls and signals belong to the main thread; signals come from its event loop, never from within a
/// call. Calls may be made from within a signal's slot. No call waits for sound; those that ask the sound server
/// wait for its answer, not longer than a moment.
class RecorderEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~RecorderEngine() override;

    /// Finds the devices. @p owner is the native handle of the window that the recorder belongs to; the others are
    /// always 0 and -1.
    virtual void InitRecorder(int owner, short zero, short minusOne) = 0;

    virtual short GetRecordingDeviceCount() = 0;
    virtual QString GetRecordingDeviceName(short device) = 0;

    /// Captures from this device from now on. The result is 0, or why the device cannot be used: the one before
    /// then stays.
    virtual int OpenRecordingDevice(short device) = 0;

    virtual short GetRecordingInputCount(short device) = 0;
    virtual QString GetRecordingInputName(short device, short input) = 0;
    virtual short GetCurrentRecordingInput(short device) = 0;
    virtual void SelectRecordingInput(short device, short input) = 0;

    /// 0 to 100.
    virtual short GetRecordingInputVolume(short device, short input) = 0;
    virtual void SetRecordingInputVolume(short device, short input, short volume) = 0;

    /// Silences the open device, or lets it be heard again.
    virtual void SetRecordingDeviceInputEnabled(short input, bool enabled) = 0;

    /// 1 keeps what is written just under full scale, 0 lets it clip as it came.
    virtual void EnableAntiClipping(int enabled) = 0;

    virtual void StartRecordingToFile(const QString& path) = 0;

    /// Without a recording under way nothing happens.
    virtual void ContinueRecordingToFile(const QString& path) = 0;

    /// Closes the file: it is whole when the call returns, and is the one that RecordedSound replays.
    virtual void StopRecording() = 0;

    /// Watches the level from now on, recording or not, or no longer.
    virtual void EnableSilenceDetection(bool enabled) = 0;

    /// A peak below this, of 32767 for full scale, counts as silence. 5 to 8000.
    virtual void SilenceThreshold(int level) = 0;

    /// Milliseconds of silence before SilenceDetected. 0 leaves silence out of the recording.
    virtual void SilenceMinimumDuration(int milliseconds) = 0;

    virtual RecorderEncodeFormats& EncodeFormats() = 0;
    virtual RecorderBarMeters& BarMeters() = 0;
    virtual RecorderVuMeter& VuMeter() = 0;
    virtual ::RecordedSound& RecordedSound() = 0;

signals:
    /// The peaks since the last report, 0 to 32767 each, where 32767 is full scale. Some 30 times a second.
    void RecordingPeaks(short left, short right);

    void SilenceDetected();

    /// The level rises over the threshold after silence. Where detection begins, silence is what was before: a
    /// sound that is there already counts as one that rises.
    void SoundDetected();

    /// The recording or the replay has ended by itself.
    void RecorderSessionDone();

    /// The engine's own; nothing has to be done about it.
    void RecorderEvent38(int detail);
};
