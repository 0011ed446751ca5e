#pragma once

#include "engines/RecorderEngine.h"

#include <gmock/gmock.h>

class MockRecorderMp3Settings : public RecorderMp3Settings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Bitrate, (double bitsPerSecond), (override));
};

class MockRecorderOggSettings : public RecorderOggSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Quality, (float quality), (override));
};

class MockRecorderWavSettings : public RecorderWavSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
};

class MockRecorderWmaSettings : public RecorderWmaSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Bitrate, (double bitsPerSecond), (override));
};

class MockRecorderAacSettings : public RecorderAacSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Quality, (float quality), (override));
    MOCK_METHOD(void, Mp4Container, (bool wanted), (override));
};

class MockRecorderEncodeFormats : public RecorderEncodeFormats
{
public:
    MOCK_METHOD(void, FormatForRecording, (int format), (override));
    MOCK_METHOD(void, EncodeMode, (int mode), (override));
    MOCK_METHOD(void, SampleRate, (int hertz), (override));
    MOCK_METHOD(void, Channels, (int channels), (override));
    MOCK_METHOD(RecorderMp3Settings&, Mp3Settings, (), (override));
    MOCK_METHOD(RecorderOggSettings&, OggSettings, (), (override));
    MOCK_METHOD(RecorderWavSettings&, WavSettings, (), (override));
    MOCK_METHOD(RecorderWmaSettings&, WmaSettings, (), (override));
    MOCK_METHOD(RecorderAacSettings&, AacSettings, (), (override));
};

class MockRecorderBarMeters : public RecorderBarMeters
{
public:
    MOCK_METHOD(int, CreateBar, (int parentWindow, int left, int top, int width, int height), (override));
    MOCK_METHOD(void, SetBarRange, (const int& handle, int minimum, int maximum), (override));
    MOCK_METHOD(void, SetBarValue, (const int& handle, int value), (override));
    MOCK_METHOD(void, GetBarSettings, (const int& handle, BarSettings* settings), (override));
    MOCK_METHOD(void, SetBarSettings, (const int& handle, const BarSettings* settings), (override));
};

class MockRecorderVuMeter : public RecorderVuMeter
{
public:
    MOCK_METHOD(void, StartVuMeter, (int mode), (override));
};

class MockRecordedSound : public RecordedSound
{
public:
    MOCK_METHOD(void, PlayRecordedSound, (), (override));
    MOCK_METHOD(void, StopRecordedSound, (), (override));
};

class MockRecorderEngine : public RecorderEngine
{
public:
    MOCK_METHOD(void, InitRecorder, (int owner, short zero, short minusOne), (override));
    MOCK_METHOD(short, GetRecordingDeviceCount, (), (override));
    MOCK_METHOD(QString, GetRecordingDeviceName, (short device), (override));
    MOCK_METHOD(int, OpenRecordingDevice, (short device), (override));
    MOCK_METHOD(short, GetRecordingInputCount, (short device), (override));
    MOCK_METHOD(QString, GetRecordingInputName, (short device, short input), (override));
    MOCK_METHOD(short, GetCurrentRecordingInput, (short device), (override));
    MOCK_METHOD(void, SelectRecordingInput, (short device, short input), (override));
    MOCK_METHOD(short, GetRecordingInputVolume, (short device, short input), (override));
    MOCK_METHOD(void, SetRecordingInputVolume, (short device, short input, short volume), (override));
    MOCK_METHOD(void, SetRecordingDeviceInputEnabled, (short input, bool enabled), (override));
    MOCK_METHOD(void, EnableAntiClipping, (int enabled), (override));
    MOCK_METHOD(void, StartRecordingToFile, (const QString& path), (override));
    MOCK_METHOD(void, ContinueRecordingToFile, (const QString& path), (override));
    MOCK_METHOD(void, StopRecording, (), (override));
    MOCK_METHOD(void, EnableSilenceDetection, (bool enabled), (override));
    MOCK_METHOD(void, SilenceThreshold, (int level), (override));
    MOCK_METHOD(void, SilenceMinimumDuration, (int milliseconds), (override));
    MOCK_METHOD(RecorderEncodeFormats&, EncodeFormats, (), (override));
    MOCK_METHOD(RecorderBarMeters&, BarMeters, (), (override));
    MOCK_METHOD(RecorderVuMeter&, VuMeter, (), (override));
    MOCK_METHOD(::RecordedSound&, RecordedSound, (), (override));
};
