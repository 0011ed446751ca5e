#pragma once

#include "engines/RecorderEngine.h"
#include "recorder/WindowBarMeters.h"

#include <QElapsedTimer>
#include <QTimer>

/// A recorder without sound whose levels swing: for looking at the window.
class FakeRecorderEngine : public RecorderEngine,
                           private RecorderEncodeFormats,
                           private RecorderMp3Settings,
                           private RecorderOggSettings,
                           private RecorderWavSettings,
                           private RecorderWmaSettings,
                           private RecorderAacSettings,
                           private RecorderVuMeter,
                           private ::RecordedSound
{
public:
    FakeRecorderEngine();

    void InitRecorder(int, short, short) override {}
    short GetRecordingDeviceCount() override;
    QString GetRecordingDeviceName(short device) override;
    int OpenRecordingDevice(short) override { return 0; }
    short GetRecordingInputCount(short) override { return 2; }
    QString GetRecordingInputName(short device, short input) override;
    short GetCurrentRecordingInput(short) override { return 0; }
    void SelectRecordingInput(short, short) override {}
    short GetRecordingInputVolume(short, short) override { return volume; }
    void SetRecordingInputVolume(short, short, short wanted) override { volume = wanted; }
    void SetRecordingDeviceInputEnabled(short, bool) override {}
    void EnableAntiClipping(int) override {}
    void StartRecordingToFile(const QString&) override {}
    void ContinueRecordingToFile(const QString&) override {}
    void StopRecording() override {}
    void EnableSilenceDetection(bool) override {}
    void SilenceThreshold(int) override {}
    void SilenceMinimumDuration(int) override {}
    RecorderEncodeFormats& EncodeFormats() override { return *this; }
    RecorderBarMeters& BarMeters() override { return bars; }
    RecorderVuMeter& VuMeter() override { return *this; }
    ::RecordedSound& RecordedSound() override { return *this; }

private:
    void FormatForRecording(int) override {}
    void EncodeMode(int) override {}
    void SampleRate(int) override {}
    void Channels(int) override {}
    RecorderMp3Settings& Mp3Settings() override { return *this; }
    RecorderOggSettings& OggSettings() override { return *this; }
    RecorderWavSettings& WavSettings() override { return *this; }
    RecorderWmaSettings& WmaSettings() override { return *this; }
    RecorderAacSettings& AacSettings() override { return *this; }
    void Mode(int) override {}
    void Bitrate(double) override {}
    void Quality(float) override {}
    void Mp4Container(bool) override {}
    void StartVuMeter(int) override;
    void PlayRecordedSound() override {}
    void StopRecordedSound() override {}

    WindowBarMeters bars;
    short volume = 60;
    QElapsedTimer sinceStart;
    QTimer metering;
};
