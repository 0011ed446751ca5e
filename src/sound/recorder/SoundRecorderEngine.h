#pragma once

#include "engines/RecorderEngine.h"
#include "sound/device/Capture.h"
#include "sound/player/RenderThread.h"
#include "sound/recorder/ChosenRecording.h"
#include "sound/recorder/LastRecording.h"
#include "sound/recorder/RecordingThread.h"

#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace sound {

class CaptureRing;

/// What a recorder works with.
struct RecorderParts
{
    std::unique_ptr<CaptureDevices> devices;
    std::unique_ptr<RecorderBarMeters> barMeters;

    /// Where a recording is replayed. Called on the thread that the output then belongs to.
    RenderThread::MakeOutput makeOutput;

    /// Keeps the computer from falling asleep, or no longer.
    std::function<void(bool)> keepAwake;
};

/// The recorder engine on the sources of the user's sound server.
///
/// A device that goes away ends the recording; its levels come back with it, and so does the next recording.
class SoundRecorderEngine : public RecorderEngine, private RecorderVuMeter, private ::RecordedSound
{
    Q_OBJECT

public:
    explicit SoundRecorderEngine(RecorderParts parts);
    ~SoundRecorderEngine() override;

    void InitRecorder(int owner, short zero, short minusOne) override;
    short GetRecordingDeviceCount() override;
    QString GetRecordingDeviceName(short device) override;
    int OpenRecordingDevice(short device) override;
    short GetRecordingInputCount(short device) override;
    QString GetRecordingInputName(short device, short input) override;
    short GetCurrentRecordingInput(short device) override;
    void SelectRecordingInput(short device, short input) override;
    short GetRecordingInputVolume(short device, short input) override;
    void SetRecordingInputVolume(short device, short input, short volume) override;
    void SetRecordingDeviceInputEnabled(short input, bool enabled) override;
    void EnableAntiClipping(int enabled) override;
    void StartRecordingToFile(const QString& path) override;
    void ContinueRecordingToFile(const QString& path) override;
    void StopRecording() override;
    void EnableSilenceDetection(bool enabled) override;
    void SilenceThreshold(int level) override;
    void SilenceMinimumDuration(int milliseconds) override;
    RecorderEncodeFormats& EncodeFormats() override { return chosen; }
    RecorderBarMeters& BarMeters() override { return *parts.barMeters; }
    RecorderVuMeter& VuMeter() override { return *this; }
    ::RecordedSound& RecordedSound() override { return *this; }

private:
    void StartVuMeter(int mode) override;
    void PlayRecordedSound() override;
    void StopRecordedSound() override;

    const CaptureDevice* deviceAt(short device) const;
    bool hasLine(short device, short input) const;
    bool isCapturing() const;
    EngineError startCapture(const QString& key);
    bool captureAgain();
    void goTo(const QString& path, bool onlyWhereRecording);
    void setRecording(bool wanted);
    void tellEvents();
    void tellPeaks();
    void endBySelf();

    RecorderParts parts;
    std::vector<CaptureDevice> known;  // as InitRecorder found them
    QString opened;                    // the device that is to be captured
    ChosenRecording chosen;
    bool recording = false;
    bool metering = false;
    std::chrono::steady_clock::time_point tryAgainAt;
    QString recorded;  // the last file

    // In this order: the thread reads the ring, and what captures fills it and wakes the thread.
    std::unique_ptr<CaptureRing> ring;
    RecordingThread thread;
    std::unique_ptr<Capture> capture;

    std::unique_ptr<QSocketNotifier> events;
    QTimer watch;
    LastRecording replay;
};

}  // namespace sound
