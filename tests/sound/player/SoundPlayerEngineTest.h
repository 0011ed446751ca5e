#pragma once

#include "sound/Eventually.h"
#include "sound/Signals.h"
#include "sound/SoundFiles.h"
#include "sound/player/ManualOutput.h"
#include "sound/player/SoundPlayerEngine.h"

#include <gtest/gtest.h>
#include <QString>
#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

namespace sound::test {

// An engine on an output whose time the test moves, and a protocol of its events.
class SoundPlayerEngineTest : public ::testing::Test
{
protected:
    SoundPlayerEngineTest()
    {
        QObject::connect(&engine, &PlayerEngine::SoundPlaying, [this](short player) { note("playing", player); });
        QObject::connect(&engine, &PlayerEngine::SoundFinished, [this](short player) { note("finished", player); });
        QObject::connect(&engine, &PlayerEngine::SoundStopped, [this](short player) { note("stopped", player); });
        QObject::connect(&engine, &PlayerEngine::ConversionPercent,
                         [this](short, short percent) { percents.push_back(percent); });
        QObject::connect(&engine, &PlayerEngine::ConversionDone,
                         [this](short, int success) { note(success != 0 ? "done" : "failed", 0); });
        QObject::connect(&engine, &PlayerEngine::VuPeaks, [this](short, short left, short right) {
            leftPeak = std::max(leftPeak, left);
            rightPeak = std::max(rightPeak, right);
        });
    }

    void note(const char* event, short player) { events.push_back(QString("%1 %2").arg(event).arg(player)); }

    void init(short count = 1) { engine.InitPlayers(count, 0, 0, 0, 0, 0); }

    QString sineFile(const QString& name, double seconds = 1, int rate = 44100, int channels = 2)
    {
        return files.make(name, sound::test::sine(440, rate, channels, static_cast<std::int64_t>(seconds * rate)));
    }

    // Loads a sound and waits until all of it is decoded: the test's clock runs faster than any decoder.
    void loadDecoded(const QString& path)
    {
        ASSERT_EQ(engine.LoadSoundForExport(0, path), 0);
        ASSERT_TRUE(eventually([this] { return !events.empty(); }));
        events.clear();
    }

    // The clock of the player's output made last.
    ManualClock& clock() { return *clocks.back(); }

    SoundFiles files;
    std::vector<std::shared_ptr<ManualClock>> clocks;
    SoundPlayerEngine engine{[this] {
        auto made = std::make_shared<ManualClock>();
        const std::lock_guard lock(clocksMutex);
        clocks.push_back(made);
        return std::make_unique<ManualOutput>(made);
    }};
    std::mutex clocksMutex;
    std::vector<QString> events;
    std::vector<short> percents;
    short leftPeak = 0;
    short rightPeak = 0;
};

}  // namespace sound::test
