#pragma once

#include "engines/DiscDevice.h"
#include "sound/Eventually.h"
#include "sound/SoundFiles.h"
#include "sound/disc/ScriptedDrive.h"
#include "sound/disc/SilentWave.h"
#include "sound/disc/SoundDiscEngine.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QElapsedTimer>
#include <functional>
#include <memory>
#include <vector>

namespace sound::test {

// In milliseconds, as an abort may take.
#ifdef LARKSPIN_SANITIZED
inline constexpr int aSecond = 5000;  // not what a user has
#else
inline constexpr int aSecond = 1000;
#endif

struct ToldProgress
{
    int total = 0;
    int track = 0;
    int trackPercent = 0;
    DiscStage stage = DiscStage::Preparing;

    bool operator==(const ToldProgress&) const = default;
};

inline bool isEnd(DiscStage stage)
{
    return stage >= DiscStage::Completed;
}

/// An engine with a scripted drive, and beside it the image writer in a folder of its own.
class DiscEngineTest : public ::testing::Test
{
protected:
    /// Sectors that are decoded ahead of a drive: few, so that short files are longer.
    static constexpr std::int64_t reserve = 400;
    static constexpr std::int64_t longTrack = 1000;

    DiscEngineTest() { makeEngine(finding(script)); }

    void makeEngine(FindDrives find)
    {
        engine = std::make_unique<SoundDiscEngine>(
            std::move(find), imageFolder(), [this](bool keeps) { awake += keeps ? 1 : -1; }, reserve);
        QObject::connect(engine.get(), &DiscEngine::WriteProgress,
                         [this](int total, int track, int trackPercent, DiscStage stage) {
                             told.push_back({total, track, trackPercent, stage});
                             if (onProgress)
                                 onProgress(stage);
                         });
        QObject::connect(engine.get(), &DiscEngine::FileWarning,
                         [this](const DiscFileReport& report, bool& letGoOn) {
                             warnings.push_back(report);
                             letGoOn = goOn;
                             if (onWarning)
                                 onWarning();
                         });
        QObject::connect(engine.get(), &DiscEngine::WriteError,
                         [this](const DiscWriteError& error) { errors.push_back(error); });
        engine->InitDevices(false);
    }

    AudioProject& project() { return *engine->GetAudioProject(); }
    DiscDevice* device() { return engine->GetDevice(0); }
    DiscDevice* imageWriter() { return engine->GetDevice(static_cast<short>(engine->GetDeviceCount() - 1)); }
    QString imageFolder() const { return files.path("Recordings"); }
    QStringList images() const
    {
        return QDir(imageFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    /// A WAV file of a tone, 16 bits, 44100 Hz and stereo: as a disc has it.
    QString tone(const QString& name, double seconds, double hertz = 440) const
    {
        return files.make(name, sine(hertz, 44100, 2, static_cast<std::int64_t>(seconds * 44100)));
    }

    QString silence(const QString& name, std::int64_t sectors) const
    {
        return silentWave(files.path(name), {44100}, 2, {sectors * Sectors::frames});
    }

    /// The 16 bits of a WAV file, and the silence that makes it a track of so many sectors.
    static QByteArray trackOf(const QString& file, std::int64_t sectors)
    {
        QByteArray bytes;
        runFfmpeg({"-i", "file:" + file, "-f", "s16le", "pipe:1"}, {}, &bytes);
        return bytes + QByteArray(sectors * Sectors::bytes - bytes.size(), '\0');
    }

    bool add(const QString& file, int position = 1000)
    {
        bool ok = false;
        project().AddTrack(file, position, ok);
        return ok;
    }

    bool start(DiscDevice* on)
    {
        bool ok = false;
        project().StartWrite(on, ok);
        return ok;
    }

    bool ended() const { return !told.empty() && isEnd(told.back().stage); }

    /// How the write ends; Preparing where it does not.
    DiscStage end()
    {
        return eventually([this] { return ended(); }) ? told.back().stage : DiscStage::Preparing;
    }

    /// Writes, and says how it ended.
    DiscStage write(DiscDevice* on)
    {
        told.clear();
        return start(on) ? end() : DiscStage::Preparing;
    }

    /// Writes, gives up as soon as this stage is told, and expects to be told that; returns after how many
    /// milliseconds.
    qint64 giveUpIn(DiscStage stage, DiscDevice* on)
    {
        QElapsedTimer sinceAbort;
        onProgress = [&](DiscStage now) {
            if (now == stage && !sinceAbort.isValid()) {
                sinceAbort.start();
                project().AbortWrite();
            }
        };
        EXPECT_EQ(write(on), DiscStage::Cancelled);
        onProgress = nullptr;
        return sinceAbort.elapsed();
    }

    /// The stages in their order, each time once.
    std::vector<DiscStage> stages() const
    {
        std::vector<DiscStage> different;
        for (const ToldProgress& progress : told) {
            if (different.empty() || different.back() != progress.stage)
                different.push_back(progress.stage);
        }
        return different;
    }

    SoundFiles files;
    Script script;
    std::vector<ToldProgress> told;
    std::vector<DiscFileReport> warnings;
    std::vector<DiscWriteError> errors;
    std::function<void(DiscStage)> onProgress;
    std::function<void()> onWarning;
    bool goOn = true;
    int awake = 0;  // how often the computer is kept awake
    std::unique_ptr<SoundDiscEngine> engine;
};

}  // namespace sound::test
