#include "sound/editor/SoundEditorEngine.h"

#include "sound/media/OpenedFrames.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto watchInterval = 30ms;
constexpr unsigned mostWorkers = 8;
constexpr int lowestFrequency = 8000;
constexpr int highestFrequency = 192'000;

// Several changes together may go no further than this: the stretcher's quality ends there.
constexpr double slowest = 0.2;
constexpr double fastest = 5;

int workers()
{
    return static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, mostWorkers));
}

bool within(double factor)
{
    return factor >= slowest && factor <= fastest;
}

// What the file will take at least, where that is known before.
std::int64_t expectedBytes(const SoundFormat& format, double seconds, SampleRate rate, int channels)
{
    if (format.family == SoundFormat::Family::Wav)
        return static_cast<std::int64_t>(seconds * rate.hertz * channels * 2);
    return static_cast<std::int64_t>(seconds * format.bitRate / 8);
}

// The folder may yet have to be made: then its nearest forebear tells.
bool hasRoom(const QString& path, std::int64_t bytes)
{
    QFileInfo folder(QFileInfo(path).absolutePath());
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.absolutePath());
    const QStorageInfo disc(folder.absoluteFilePath());
    return !disc.isValid() || disc.bytesAvailable() >= bytes;
}

}  // namespace

SoundEditorEngine::SoundEditorEngine()
{
    watch.setInterval(watchInterval);
    connect(&watch, &QTimer::timeout, this, [this] { watchExport(); });
}

SoundEditorEngine::~SoundEditorEngine() = default;

int SoundEditorEngine::report(EngineError error)
{
    lastError = error;
    return code(error);
}

void SoundEditorEngine::InitEditor(int)
{
    initialized = true;
    report(EngineError::None);
}

void SoundEditorEngine::CloseSound()
{
    ++closings;
    watch.stop();
    exporting.reset();
    loaded.reset();
    busy = false;
    report(EngineError::None);
}

// Told from the event loop, unless the sound has been closed by then.
void SoundEditorEngine::later(const std::function<void()>& events)
{
    QTimer::singleShot(0, this, [this, events, closed = closings] {
        if (closed == closings)
            events();
    });
}

int SoundEditorEngine::LoadSound(const QString& path)
{
    if (!initialized)
        return report(EngineError::NotInitialized);
    if (busy)
        return report(EngineError::EditorBusy);
    if (report(load(path)) != 0)
        return code(lastError);
    busy = true;
    later([this] { emit LoadPercent(100); });
    later([this] {
        busy = false;
        emit LoadDone(0);
    });
    return 0;
}

EngineError SoundEditorEngine::load(const QString& path)
{
    loaded.reset();
    OpenedFrames opened = openFrames(path);
    if (!opened.stream)
        return opened.error;
    loaded = std::make_unique<Loaded>();
    loaded->path = path;
    loaded->rate = opened.stream->rate();
    loaded->length = opened.stream->length();
    loaded->stream = std::move(opened.stream);
    loaded->tags = readSoundTags(path);
    return EngineError::None;
}

int SoundEditorEngine::ApplyTempo(int start, int end, float percent)
{
    return apply(Tempo, start, end, percent, [&](Loaded& sound) { sound.changes.tempo *= speedFactor(percent); });
}

int SoundEditorEngine::ApplyRate(int start, int end, float percent)
{
    return apply(Speed, start, end, percent, [&](Loaded& sound) { sound.changes.rate *= speedFactor(percent); });
}

int SoundEditorEngine::ApplyPitch(int start, int end, const float& semitones)
{
    return apply(Pitch, start, end, semitones,
                 [&](Loaded& sound) { sound.changes.pitch *= pitchFactor(semitones); });
}

int SoundEditorEngine::ApplyGain(int start, int end, int, float percent, int)
{
    return apply(Gain, start, end, percent,
                 [&](Loaded& sound) { sound.gain *= std::max(0.0, static_cast<double>(percent)) / 100; });
}

int SoundEditorEngine::apply(Effect effect, int start, int end, float value,
                             const std::function<void(Loaded&)>& change)
{
    EngineError error = EngineError::None;
    if (!initialized) {
        error = EngineError::NotInitialized;
    } else if (busy) {
        error = EngineError::EditorBusy;
    } else if (!loaded) {
        error = EngineError::EditorEmpty;
    } else if (start != 0 || end != -1) {
        error = EngineError::Unsupported;
    } else if (!std::isfinite(value)) {
        error = EngineError::ParameterOutOfRange;
    } else {
        const Changes before = loaded->changes;
        change(*loaded);
        const Changes& now = loaded->changes;
        if (!within(now.tempo) || !within(now.pitch) || !within(now.rate)) {
            loaded->changes = before;
            error = EngineError::ParameterOutOfRange;
        }
    }

    const bool started = error == EngineError::None;
    busy = busy || started;
    if (started)
        later([this, effect] { emit EffectPercent(effect, 100); });
    later([this, effect, error, started] {
        if (started)
            busy = false;
        emit EffectDone(effect, code(error));
    });
    return report(error);
}

int SoundEditorEngine::ExportToFile(int frequency, int channels, int, int start, int end, const QString& path)
{
    if (!initialized)
        return report(EngineError::NotInitialized);
    if (busy)
        return report(EngineError::EditorBusy);
    if (!loaded)
        return report(EngineError::EditorEmpty);
    if (frequency < lowestFrequency || frequency > highestFrequency || channels < 1 || channels > 2)
        return report(EngineError::InvalidExportSettings);
    return report(startExport({frequency}, channels, start, end, path));
}

EngineError SoundEditorEngine::startExport(SampleRate rate, int channels, int start, int end, const QString& path)
{
    const FramePosition soundEnd = endOf(loaded->length);
    const FramePosition first = std::min(frameAt(Milliseconds{std::max(0, start)}, loaded->rate), soundEnd);
    const FramePosition last = end < 0 ? soundEnd : std::min(frameAt(Milliseconds{end}, loaded->rate), soundEnd);
    if (start < 0 || last <= first)
        return EngineError::InvalidPosition;
    const std::optional<SoundFormat> format = chosen.format();
    if (!format)
        return EngineError::InvalidExportSettings;

    const Changes& changes = loaded->changes;
    const double seconds =
        static_cast<double>((last - first).value) / loaded->rate.hertz / changes.tempo / changes.rate;
    if (!hasRoom(path, expectedBytes(*format, seconds, rate, channels)))
        return EngineError::FileCreationFailed;
    const EngineError opened = openAgain();
    if (opened != EngineError::None)
        return opened;
    OpenedSoundFileWriter file = SoundFileWriter::create(path, *format, rate, channels, loaded->tags);
    if (!file.writer)
        return file.error;

    auto part = std::make_unique<SourcePart>(std::move(loaded->stream), first, last - first);
    auto rendition = std::make_unique<Rendition>(
        std::move(part), RenditionSettings{changes, loaded->gain, rate, channels}, workers());
    exporting = std::make_unique<ExportJob>(std::move(rendition), std::move(file.writer));
    busy = true;
    percentTold = -1;
    watch.start();
    return EngineError::None;
}

// A stream is read once; what is exported a second time is opened a second time. A file that has become another one
// is not the sound that was loaded.
EngineError SoundEditorEngine::openAgain()
{
    if (loaded->stream)
        return EngineError::None;
    OpenedFrames opened = openFrames(loaded->path);
    if (!opened.stream)
        return opened.error;
    if (opened.stream->rate() != loaded->rate || opened.stream->length() != loaded->length)
        return EngineError::InvalidSoundFile;
    loaded->stream = std::move(opened.stream);
    return EngineError::None;
}

void SoundEditorEngine::watchExport()
{
    const bool finished = exporting->finished();
    const short percent = exporting->percent();
    if (percent != percentTold) {
        percentTold = percent;
        emit ExportPercent(percent);
    }
    // Whoever heard of the percent may have closed the sound, and begun another export.
    if (!finished || !exporting || !exporting->finished())
        return;
    watch.stop();
    const int result = report(exporting->error());
    exporting.reset();
    busy = false;
    emit ExportDone(result);
}

}  // namespace sound
