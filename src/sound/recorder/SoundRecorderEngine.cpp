#include "sound/recorder/SoundRecorderEngine.h"

#include "sound/device/CaptureRing.h"
#include "sound/recorder/CaptureLevel.h"

#include <QSocketNotifier>
#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto peakInterval = 33ms;
constexpr auto ringLength = 20s;  // so long may a disc stand still
constexpr auto retryInterval = 2s;

short toShort(std::size_t count)
{
    return static_cast<short>(std::min<std::size_t>(count, std::numeric_limits<short>::max()));
}

}  // namespace

SoundRecorderEngine::SoundRecorderEngine(RecorderParts with)
    : parts(std::move(with))
    , events(std::make_unique<QSocketNotifier>(thread.eventDescriptor(), QSocketNotifier::Read))
    , replay(parts.makeOutput)
{
    connect(events.get(), &QSocketNotifier::activated, this, [this] { tellEvents(); });
    watch.setInterval(peakInterval);
    connect(&watch, &QTimer::timeout, this, [this] { tellPeaks(); });
}

SoundRecorderEngine::~SoundRecorderEngine()
{
    capture.reset();
    StopRecording();
}

void SoundRecorderEngine::InitRecorder(int, short, short)
{
    known = parts.devices->devices();
    watch.start();
}

const CaptureDevice* SoundRecorderEngine::deviceAt(short device) const
{
    const auto index = static_cast<std::size_t>(device);
    return device >= 0 && index < known.size() ? &known[index] : nullptr;
}

bool SoundRecorderEngine::hasLine(short device, short input) const
{
    const CaptureDevice* found = deviceAt(device);
    return found != nullptr && input >= 0 && static_cast<std::size_t>(input) < found->lines.size();
}

short SoundRecorderEngine::GetRecordingDeviceCount()
{
    return toShort(known.size());
}

QString SoundRecorderEngine::GetRecordingDeviceName(short device)
{
    const CaptureDevice* found = deviceAt(device);
    return found != nullptr ? found->name : QString();
}

bool SoundRecorderEngine::isCapturing() const
{
    return capture && !capture->ended();
}

int SoundRecorderEngine::OpenRecordingDevice(short device)
{
    const CaptureDevice* wanted = deviceAt(device);
    if (wanted == nullptr)
        return code(EngineError::ParameterOutOfRange);
    if (wanted->key == opened && isCapturing())
        return 0;
    return code(startCapture(wanted->key));
}

// What captures now goes on until the new one does.
EngineError SoundRecorderEngine::startCapture(const QString& key)
{
    const CaptureDevice device = parts.devices->device(key);
    if (device.key.isEmpty())
        return EngineError::ParameterOutOfRange;
    auto newRing = std::make_unique<CaptureRing>(framesIn(ringLength, device.rate));
    auto newCapture = parts.devices->capture(device, *newRing, thread.reader());
    if (!newCapture)
        return EngineError::Unknown;
    capture.reset();
    thread.follow(newRing.get(), device.rate);
    capture = std::move(newCapture);
    ring = std::move(newRing);
    opened = key;
    return EngineError::None;
}

// The device may have been away, or the sound server. Another device is not what the user chose.
bool SoundRecorderEngine::captureAgain()
{
    return isCapturing() || (!opened.isEmpty() && startCapture(opened) == EngineError::None);
}

short SoundRecorderEngine::GetRecordingInputCount(short device)
{
    const CaptureDevice* found = deviceAt(device);
    return found != nullptr ? toShort(found->lines.size()) : short{0};
}

QString SoundRecorderEngine::GetRecordingInputName(short device, short input)
{
    return hasLine(device, input) ? deviceAt(device)->lines[static_cast<std::size_t>(input)].name : QString();
}

short SoundRecorderEngine::GetCurrentRecordingInput(short device)
{
    const CaptureDevice* found = deviceAt(device);
    if (found == nullptr)
        return 0;
    const CaptureDevice now = parts.devices->device(found->key);
    return toShort(static_cast<std::size_t>(now.key.isEmpty() ? found->currentLine : now.currentLine));
}

void SoundRecorderEngine::SelectRecordingInput(short device, short input)
{
    if (hasLine(device, input))
        parts.devices->selectLine(deviceAt(device)->key,
                                  deviceAt(device)->lines[static_cast<std::size_t>(input)].key);
}

short SoundRecorderEngine::GetRecordingInputVolume(short device, short input)
{
    if (!hasLine(device, input))
        return 0;
    return static_cast<short>(parts.devices->device(deviceAt(device)->key).volume);
}

void SoundRecorderEngine::SetRecordingInputVolume(short device, short input, short volume)
{
    if (hasLine(device, input))
        parts.devices->setVolume(deviceAt(device)->key, volume);
}

void SoundRecorderEngine::SetRecordingDeviceInputEnabled(short input, bool enabled)
{
    if (input >= 0)
        parts.devices->setMuted(opened, !enabled);
}

void SoundRecorderEngine::EnableAntiClipping(int enabled)
{
    thread.change([wanted = enabled != 0](RecordingChain& chain) { chain.keepFromClipping(wanted); });
}

void SoundRecorderEngine::EnableSilenceDetection(bool enabled)
{
    thread.change([enabled](RecordingChain& chain) { chain.watchLevel(enabled); });
}

void SoundRecorderEngine::SilenceThreshold(int level)
{
    thread.change([level](RecordingChain& chain) { chain.setThreshold(level); });
}

void SoundRecorderEngine::SilenceMinimumDuration(int milliseconds)
{
    const Milliseconds pause{std::max(0, milliseconds)};
    thread.change([pause](RecordingChain& chain) { chain.setShortestPause(pause); });
}

void SoundRecorderEngine::StartRecordingToFile(const QString& path)
{
    const std::optional<RecordingFormat> format = chosen.format();
    if (!format || !captureAgain()) {
        endBySelf();
        return;
    }
    setRecording(true);
    recorded = path;
    thread.begin(path, *format);
}

void SoundRecorderEngine::ContinueRecordingToFile(const QString& path)
{
    const std::optional<RecordingFormat> format = chosen.format();
    if (!recording)
        return;
    if (!format) {
        endBySelf();
        return;
    }
    recorded = path;
    thread.goOn(path, *format);
}

void SoundRecorderEngine::StopRecording()
{
    thread.end();
    setRecording(false);
}

void SoundRecorderEngine::setRecording(bool wanted)
{
    if (recording != wanted)
        parts.keepAwake(wanted);
    recording = wanted;
}

// What was recorded so far is whole; who asked for it hears that it ended.
void SoundRecorderEngine::endBySelf()
{
    StopRecording();
    QTimer::singleShot(0, this, [this] { emit RecorderSessionDone(); });
}

void SoundRecorderEngine::tellEvents()
{
    for (const RecordingThread::Event event : thread.takeEvents()) {
        switch (event) {
        case RecordingThread::Event::Silence:
            emit SilenceDetected();
            break;
        case RecordingThread::Event::Sound:
            emit SoundDetected();
            break;
        case RecordingThread::Event::Failed:
            setRecording(false);
            emit RecorderSessionDone();
            break;
        }
    }
    thread.answer();
}

void SoundRecorderEngine::StartVuMeter(int)
{
    metering = true;
}

void SoundRecorderEngine::tellPeaks()
{
    const Peaks peaks = thread.takePeaks();
    if (metering)
        emit RecordingPeaks(captureLevel(peaks.left), captureLevel(peaks.right));
    if (isCapturing() || opened.isEmpty())
        return;
    if (recording) {
        StopRecording();
        emit RecorderSessionDone();
    } else if (metering && std::chrono::steady_clock::now() >= tryAgainAt) {
        tryAgainAt = std::chrono::steady_clock::now() + retryInterval;
        startCapture(opened);
    }
}

void SoundRecorderEngine::PlayRecordedSound()
{
    const auto ended = [this] { emit RecorderSessionDone(); };
    if (!replay.play(recorded, ended))
        QTimer::singleShot(0, this, ended);
}

void SoundRecorderEngine::StopRecordedSound()
{
    replay.stop();
}

}  // namespace sound

#include "moc_SoundRecorderEngine.cpp"
