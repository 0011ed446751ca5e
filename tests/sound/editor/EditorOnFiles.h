#pragma once

#include "sound/Eventually.h"
#include "sound/SoundFiles.h"
#include "sound/editor/SoundEditorEngine.h"

#include <gmock/gmock.h>
#include <QDir>
#include <QStringList>
#include <utility>
#include <vector>

namespace sound::test {

/// An editor in a folder of its own, and a protocol of its events: "load 0" when a load is done with result 0,
/// "effect 10 0", "export -8".
class EditorOnFiles : public ::testing::Test
{
protected:
    EditorOnFiles()
    {
        using Engine = ::EditorEngine;
        QObject::connect(&engine, &Engine::LoadDone, [this](int result) { note(QString("load %1").arg(result)); });
        QObject::connect(&engine, &Engine::EffectDone, [this](short effect, int result) {
            note(QString("effect %1 %2").arg(effect).arg(result));
        });
        QObject::connect(&engine, &Engine::ExportDone,
                         [this](int result) { note(QString("export %1").arg(result)); });
        QObject::connect(&engine, &Engine::LoadPercent, [this](short percent) { loadPercents.push_back(percent); });
        QObject::connect(&engine, &Engine::EffectPercent, [this](short effect, short percent) {
            effectPercents.push_back({effect, percent});
        });
        QObject::connect(&engine, &Engine::ExportPercent,
                         [this](short percent) { exportPercents.push_back(percent); });
    }

    /// Waits for the next done event that has not been waited for yet.
    QString nextEvent()
    {
        const bool came = eventually([this] { return events.size() > waitedFor; });
        EXPECT_TRUE(came);
        return came ? events[waitedFor++] : QString();
    }

    /// Whether nothing more is told, however long the event loop turns.
    bool staysQuiet()
    {
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
        return events.size() == waitedFor;
    }

    void load(const QString& path)
    {
        ASSERT_EQ(engine.LoadSound(path), 0);
        ASSERT_EQ(nextEvent(), "load 0");
    }

    void change(float tempo, float pitch, float rate)
    {
        ASSERT_EQ(engine.Effects().ApplyTempo(0, -1, tempo), 0);
        ASSERT_EQ(nextEvent(), "effect 10 0");
        ASSERT_EQ(engine.Effects().ApplyPitch(0, -1, pitch), 0);
        ASSERT_EQ(nextEvent(), "effect 12 0");
        ASSERT_EQ(engine.Effects().ApplyRate(0, -1, rate), 0);
        ASSERT_EQ(nextEvent(), "effect 11 0");
    }

    /// As the program does: 44100 Hz, stereo, the whole sound.
    int startExport(const QString& path) { return engine.ExportToFile(44100, 2, 0, 0, -1, path); }

    void save(const QString& path)
    {
        ASSERT_EQ(startExport(path), 0) << engine.LastError();
        ASSERT_EQ(nextEvent(), "export 0");
        ASSERT_EQ(engine.LastError(), 0);
    }

    /// Of the folder, hidden ones too.
    QStringList names() const
    {
        return QDir(files.folder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QString sineFile(const QString& name, double seconds = 1, int rate = 44100)
    {
        return files.make(name, sine(440, rate, 2, static_cast<std::int64_t>(seconds * rate)));
    }

    SoundFiles files;
    SoundEditorEngine engine;
    QStringList events;
    qsizetype waitedFor = 0;
    std::vector<short> loadPercents;
    std::vector<std::pair<short, short>> effectPercents;
    std::vector<short> exportPercents;

private:
    void note(const QString& event) { events.push_back(event); }
};

}  // namespace sound::test
