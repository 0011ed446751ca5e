#include "sound/player/SoundPlayerEngine.h"

#include "sound/Eventually.h"
#include "sound/Signals.h"
#include "sound/SoundFiles.h"
#include "sound/media/DecodedSound.h"
#include "sound/player/ManualOutput.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>

using namespace sound;
using namespace sound::test;
using sound::test::SoundFiles;
using sound::test::TestSound;
using ::testing::ElementsAre;

namespace {

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

TEST_F(SoundPlayerEngineTest, BeforeInitPlayersEveryOperationFailsAsNotInitialized)
{
    EXPECT_EQ(engine.LoadSound(0, "/x.mp3"), code(EngineError::NotInitialized));
    EXPECT_EQ(engine.LastError(), -49);
    engine.PlaySound(0);
    EXPECT_EQ(engine.LastError(), -49);
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 0);
}

TEST_F(SoundPlayerEngineTest, ASecondInitPlayersIsRefused)
{
    init();
    EXPECT_EQ(engine.LastError(), 0);
    init();
    EXPECT_EQ(engine.LastError(), code(EngineError::AlreadyInitialized));
}

TEST_F(SoundPlayerEngineTest, APlayerThatIsNotThereIsAnInvalidPlayer)
{
    init(2);
    EXPECT_EQ(engine.LoadSound(2, "/x.mp3"), -1);
    EXPECT_EQ(engine.LoadSound(-1, "/x.mp3"), -1);
    EXPECT_EQ(engine.LastError(), -1);
}

TEST_F(SoundPlayerEngineTest, OnAnEmptyPlayerTheTransportDoesNothingAndSaysWhy)
{
    init();
    engine.PlaySound(0);
    EXPECT_EQ(engine.LastError(), code(EngineError::NoSoundLoaded));
    engine.PlaySoundRange(0, 0, 1000, -1);
    engine.PauseSound(0);
    engine.ResumeSound(0);
    engine.StopSound(0);
    engine.SeekSound(0, 1000);
    engine.CloseSound(0);
    EXPECT_EQ(engine.LastError(), code(EngineError::NoSoundLoaded));
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetPosition(0), 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
}

TEST_F(SoundPlayerEngineTest, ALoadedSoundStandsInStatusThreeAtZeroWithItsDuration)
{
    init();
    EXPECT_EQ(engine.LoadSound(0, sineFile("a.wav", 1.5)), 0);
    EXPECT_EQ(engine.LastError(), 0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPosition(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 1500);
}

TEST_F(SoundPlayerEngineTest, AFailedLoadKeepsTheOldSound)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 1.5)), 0);
    engine.PlaySound(0);
    EXPECT_EQ(engine.LoadSound(0, files.write("b.mp3", "not a sound")), code(EngineError::InvalidSoundFile));
    EXPECT_EQ(engine.LastError(), -6);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    EXPECT_EQ(engine.GetDuration(0), 1500);
    EXPECT_NE(engine.LoadSound(0, "/no/such/file.mp3"), 0);
    EXPECT_EQ(engine.GetDuration(0), 1500);
}

TEST_F(SoundPlayerEngineTest, StatusesFollowTheCommands)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    engine.PlaySound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.PauseSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 2);
    engine.PauseSound(0);  // only in status 1
    EXPECT_EQ(engine.GetPlayerStatus(0), 2);
    engine.ResumeSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.ResumeSound(0);  // only in status 2
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPosition(0), 0);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.LastError(), 0);
    engine.CloseSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 0);
}

TEST_F(SoundPlayerEngineTest, EventsComeThroughTheEventLoopAndNeverOutOfACall)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    engine.PlaySound(0);
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(eventually([&] { return events.size() == 1; }));
    engine.PlaySound(0);  // plays already: nothing begins
    engine.PauseSound(0);
    engine.ResumeSound(0);
    engine.StopSound(0);
    engine.StopSound(0);  // stands already: nothing ends
    ASSERT_TRUE(eventually([&] { return events.size() == 3; }));
    QCoreApplication::processEvents();
    EXPECT_THAT(events, ElementsAre("playing 0", "playing 0", "stopped 0"));
}

TEST_F(SoundPlayerEngineTest, AtItsNaturalEndTheStatusIsThreeAndSoundFinishedCame)
{
    init();
    loadDecoded(sineFile("a.wav", 0.25));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    ASSERT_TRUE(eventually([&] { return engine.GetPlayerStatus(0) == 3; }));
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
    EXPECT_EQ(engine.GetPosition(0), 250);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPosition(0), 0);
}

TEST_F(SoundPlayerEngineTest, AStopRightBehindTheNaturalEndDoesNotHideThatItFinished)
{
    init();
    loadDecoded(sineFile("a.wav", 0.25));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    // No events meanwhile: the window's timer may come before the engine's own.
    const QDeadlineTimer patience(10000);
    while (engine.GetPlayerStatus(0) != 3 && !patience.hasExpired()) {
    }
    ASSERT_EQ(engine.GetPlayerStatus(0), 3);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPosition(0), 0);
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
}

TEST_F(SoundPlayerEngineTest, ASegmentPlaysOnceAndFinishes)
{
    init();
    loadDecoded(sineFile("a.wav", 2));
    const int begin = 500;
    EXPECT_EQ(engine.PlaySoundSegment(0, begin, 700), 0);
    EXPECT_EQ(engine.GetPosition(0), 500);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
    EXPECT_EQ(engine.GetPosition(0), 700);
}

TEST_F(SoundPlayerEngineTest, AReversedSegmentOrRangeSaysInvalidPosition)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2)), 0);
    EXPECT_EQ(engine.PlaySoundSegment(0, 700, 500), code(EngineError::InvalidPosition));
    engine.PlaySoundRange(0, 700, 500, -1);
    EXPECT_EQ(engine.LastError(), code(EngineError::InvalidPosition));
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
}

TEST_F(SoundPlayerEngineTest, TwoPlayersPlayEachItsOwn)
{
    init(2);
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2)), 0);
    ASSERT_EQ(engine.LoadSound(1, sineFile("b.wav", 3)), 0);
    engine.PlaySound(1);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPlayerStatus(1), 1);
    EXPECT_EQ(engine.GetDuration(0), 2000);
    EXPECT_EQ(engine.GetDuration(1), 3000);
    engine.PlaySound(0);
    engine.StopSound(1);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    EXPECT_EQ(engine.GetPlayerStatus(1), 3);
    ASSERT_TRUE(eventually([&] { return events.size() == 3; }));
    EXPECT_THAT(events, ElementsAre("playing 1", "playing 0", "stopped 1"));
}

TEST_F(SoundPlayerEngineTest, LoadSoundForExportTellsPercentAndDone)
{
    init();
    EXPECT_EQ(engine.LoadSoundForExport(0, sineFile("a.wav", 20)), 0);
    EXPECT_EQ(engine.GetDuration(0), 20000);
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("done 0"));
    ASSERT_FALSE(percents.empty());
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_NE(engine.LoadSoundForExport(0, "/no/such/file.mp3"), 0);
}

TEST_F(SoundPlayerEngineTest, AnExportOfASoundThatIsStillLoadingIsDoneWhenItsFileIsThere)
{
    init();
    const QString target = files.path("out.wav");
    std::vector<bool> there;
    QObject::connect(&engine, &PlayerEngine::ConversionDone,
                     [&](short, int) { there.push_back(QFileInfo::exists(target)); });
    ASSERT_EQ(engine.LoadSoundForExport(0, sineFile("a.wav", 120)), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, target, 0, end), 0);
    ASSERT_TRUE(eventually([&] { return !there.empty(); }));
    EXPECT_THAT(there, ElementsAre(true));
    EXPECT_THAT(events, ElementsAre("done 0"));
}

TEST_F(SoundPlayerEngineTest, ASoundLoadedBesideAnExportIsNotTakenForItsEnd)
{
    init();
    const QString target = files.path("out.wav");
    std::vector<bool> there;
    QObject::connect(&engine, &PlayerEngine::ConversionDone,
                     [&](short, int) { there.push_back(QFileInfo::exists(target)); });
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 120)), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, target, 0, end), 0);
    ASSERT_EQ(engine.LoadSoundForExport(0, sineFile("short.wav", 1)), 0);
    ASSERT_TRUE(eventually([&] { return !there.empty(); }));
    EXPECT_THAT(there, ElementsAre(true));
}

TEST_F(SoundPlayerEngineTest, WhatPlaysIsNoLongerReportedAsLoading)
{
    init();
    ASSERT_EQ(engine.LoadSoundForExport(0, sineFile("a.wav", 1)), 0);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(50000);
    ASSERT_TRUE(eventually([this] { return events.size() > 1; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
    EXPECT_TRUE(percents.empty());
}

TEST_F(SoundPlayerEngineTest, ExportSoundRangeWritesTheStretchToTheFrame)
{
    init();
    const TestSound made = sound::test::slideWithNoise(44100, 2, 5 * 44100);
    ASSERT_EQ(engine.LoadSound(0, files.make("a.flac", made)), 0);
    const int end = 3500;
    const QString target = files.path("new folder/out.wav");
    ASSERT_EQ(engine.ExportSoundRange(0, target, 1250, end), 0);
    EXPECT_EQ(engine.ExportSoundRange(0, target, 1250, end), code(EngineError::PlayerBusy));
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("done 0"));
    EXPECT_EQ(percents.back(), 100);

    const std::vector<float> whole = sound::test::decodedByFfmpeg(files.path("a.flac"), 2);
    const std::vector<float> exported = sound::test::decodedByFfmpeg(target, 2);
    const std::ptrdiff_t first = 55125 * 2;  // 1.25 s
    const std::ptrdiff_t last = 154350 * 2;  // 3.5 s
    ASSERT_EQ(exported.size(), static_cast<std::size_t>(last - first));
    EXPECT_TRUE(std::equal(exported.begin(), exported.end(), whole.begin() + first));
}

TEST_F(SoundPlayerEngineTest, AnExportToMinusOneRunsToTheEnd)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2, 48000, 1)), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 0, end), 0);
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_EQ(sound::test::decodedByFfmpeg(files.path("out.wav"), 1).size(), 96000U);
}

TEST_F(SoundPlayerEngineTest, AnExportThatCannotBeWrittenFailsAndSaysWhy)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, "/proc/no/such/out.wav", 0, end), 0);
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("failed 0"));
    EXPECT_EQ(engine.LastError(), code(EngineError::FileCreationFailed));
}

TEST_F(SoundPlayerEngineTest, AnEmptyExportRangeIsRefused)
{
    init();
    const int end = 500;
    EXPECT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 0, end), code(EngineError::NoSoundLoaded));
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    EXPECT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 500, end), code(EngineError::InvalidPosition));
    EXPECT_FALSE(QFileInfo::exists(files.path("out.wav")));
}

TEST_F(SoundPlayerEngineTest, AnEngineThatGoesInTheMiddleOfAnExportLeavesNoFile)
{
    const QString source = sineFile("a.wav", 60);
    {
        SoundPlayerEngine passing([] { return std::make_unique<ManualOutput>(std::make_shared<ManualClock>()); });
        passing.InitPlayers(1, 0, 0, 0, 0, 0);
        ASSERT_EQ(passing.LoadSound(0, source), 0);
        const int end = -1;
        ASSERT_EQ(passing.ExportSoundRange(0, files.path("out.wav"), 0, end), 0);
    }
    if (QFileInfo::exists(files.path("out.wav"))) {
        // Whole, where it was quicker than the test.
        EXPECT_EQ(sound::test::decodedByFfmpeg(files.path("out.wav"), 2).size(), 60U * 44100 * 2);
    } else {
        EXPECT_EQ(QDir(files.folder()).entryList(QDir::Files | QDir::Hidden), QStringList{"a.wav"});
    }
}

TEST_F(SoundPlayerEngineTest, PeaksAreReportedWhileItPlaysOnceTheMeterIsOn)
{
    init();
    engine.VuMeter().SetVuMeterMode(0, 0);
    loadDecoded(sineFile("a.wav", 5));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(22050);
    QCoreApplication::processEvents();
    EXPECT_EQ(leftPeak, 0);
    engine.VuMeter().EnableVuMeter(0, 1);
    clock().play(22050);
    ASSERT_TRUE(eventually([&] { return leftPeak > 0; }));
    clock().play(22050);
    // A sine of half of full scale.
    ASSERT_TRUE(eventually([&] { return leftPeak > 16000; }));
    EXPECT_NEAR(leftPeak, 16384, 200);
    EXPECT_NEAR(rightPeak, 16384, 200);
}

// --- Settings
// -----------------------------------------------------------------------------------------------------

TEST_F(SoundPlayerEngineTest, EqualizerBandsAreKeptLowestFirst)
{
    init();
    engine.EnableEqualizer(true);
    EXPECT_EQ(engine.GetEqualizerBandCount(0), 0);
    engine.AddEqualizerBand(0, 1000, 12, 0);
    engine.AddEqualizerBand(0, 80, 12, 0);
    engine.AddEqualizerBand(0, 16000, 12, 0);
    EXPECT_EQ(engine.GetEqualizerBandCount(0), 3);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 0), 80);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 2), 16000);
    EXPECT_EQ(engine.GetEqualizerBandFrequency(0, 3), 0);
    engine.ChangeEqualizerBand(0, 1000, 7.5F);
    float frequency = 1000;
    float bandwidth = 0;
    float gain = 0;
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(bandwidth, 12);
    EXPECT_EQ(gain, 7.5F);
    engine.ResetEqualizer(0);
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(gain, 0);
}

TEST_F(SoundPlayerEngineTest, EachPlayerHasAnEqualizerOfItsOwn)
{
    init(2);
    engine.AddEqualizerBand(0, 1000, 12, 3);
    engine.AddEqualizerBand(1, 1000, 12, 4);
    std::vector<short> changed;
    QObject::connect(&engine, &PlayerEngine::EqualizerChanged, [&](short player) { changed.push_back(player); });
    engine.LoadEqualizerPreset(1, 9);
    QCoreApplication::processEvents();
    EXPECT_THAT(changed, ElementsAre(1));
    float frequency = 1000;
    float bandwidth = 0;
    float gain = 0;
    engine.GetEqualizerBand(0, frequency, bandwidth, gain);
    EXPECT_EQ(gain, 3);
    engine.GetEqualizerBand(1, frequency, bandwidth, gain);
    EXPECT_NE(gain, 4);
}

TEST_F(SoundPlayerEngineTest, ABandThatIsNotThereIsToldSo)
{
    init();
    engine.AddEqualizerBand(0, 1000, 12, 0);
    engine.ChangeEqualizerBand(0, 999, 3);
    EXPECT_EQ(engine.LastError(), code(EngineError::EqualizerBandNotAvailable));
}

class SoundPlayerEqualizerTest : public SoundPlayerEngineTest
{
protected:
    SoundPlayerEqualizerTest()
    {
        QObject::connect(&engine, &PlayerEngine::EqualizerChanged,
                         [this](short player) { note("equalizer", player); });
        init();
        engine.EnableEqualizer(true);
        for (const float hertz : {80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000})
            engine.AddEqualizerBand(0, hertz, 12, 0);
    }

    float gainOf(float frequency)
    {
        float bandwidth = 0;
        float gain = -99;
        engine.GetEqualizerBand(0, frequency, bandwidth, gain);
        return gain;
    }

    // Ten in a row, one a band.
    std::vector<float> gains()
    {
        std::vector<float> all;
        for (int band = 0; band < engine.GetEqualizerBandCount(0); ++band)
            all.push_back(gainOf(engine.GetEqualizerBandFrequency(0, band)));
        return all;
    }
};

TEST_F(SoundPlayerEqualizerTest, AGainBeyondItsRangeIsCutToIt)
{
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    engine.ChangeEqualizerBand(0, 1000, 16);
    EXPECT_EQ(gainOf(1000), 15);
    engine.ChangeEqualizerBand(0, 1000, -1e30F);
    EXPECT_EQ(gainOf(1000), -15);
    for (const float value : {noNumber, endless, -endless}) {
        engine.ChangeEqualizerBand(0, 1000, 3);
        engine.ChangeEqualizerBand(0, 1000, value);
        EXPECT_EQ(gainOf(1000), 0);
    }
    engine.AddEqualizerBand(0, 2000, 12, 99);
    EXPECT_EQ(gainOf(2000), 15);
}

TEST_F(SoundPlayerEqualizerTest, ABandThatIsNoneIsRefused)
{
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float endless = std::numeric_limits<float>::infinity();
    for (const auto& [frequency, bandwidth] :
         {std::pair{0.0F, 12.0F}, std::pair{-80.0F, 12.0F}, std::pair{noNumber, 12.0F}, std::pair{endless, 12.0F},
          std::pair{500.0F, 0.0F}, std::pair{500.0F, -1.0F}, std::pair{500.0F, noNumber},
          std::pair{500.0F, 121.0F}}) {
        engine.AddEqualizerBand(0, frequency, bandwidth, 0);
        EXPECT_EQ(engine.LastError(), code(EngineError::ParameterOutOfRange)) << frequency << ' ' << bandwidth;
        EXPECT_EQ(engine.GetEqualizerBandCount(0), 10);
    }
}

TEST_F(SoundPlayerEqualizerTest, EachPresetSetsTheBandsAndIsToldThroughTheEventLoop)
{
    std::vector<std::vector<float>> presets;
    for (int preset = 0; preset < 16; ++preset) {
        events.clear();
        engine.LoadEqualizerPreset(0, preset);
        EXPECT_EQ(engine.LastError(), 0);
        EXPECT_TRUE(events.empty());
        QCoreApplication::processEvents();
        EXPECT_THAT(events, ElementsAre("equalizer 0"));
        presets.push_back(gains());
        EXPECT_THAT(presets.back(), ::testing::SizeIs(10));
        EXPECT_THAT(presets.back(), ::testing::Contains(::testing::Ne(0.0F)));
        EXPECT_EQ(std::count(presets.begin(), presets.end(), presets.back()), 1);
    }
}

TEST_F(SoundPlayerEqualizerTest, APresetThatIsNotThereChangesNothing)
{
    engine.LoadEqualizerPreset(0, 11);
    const auto before = gains();
    QCoreApplication::processEvents();
    events.clear();
    for (const int preset : {-1, 16, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        engine.LoadEqualizerPreset(0, preset);
        EXPECT_EQ(engine.LastError(), code(EngineError::ParameterOutOfRange));
    }
    engine.LoadEqualizerPreset(2, 0);
    EXPECT_EQ(engine.LastError(), code(EngineError::InvalidPlayer));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(gains(), before);
}

TEST_F(SoundPlayerEqualizerTest, AFileGivesBackTheGainsThatWereSaved)
{
    engine.ChangeEqualizerBand(0, 80, 7.53F);
    engine.ChangeEqualizerBand(0, 16000, -15);
    const auto saved = gains();
    const QString path = files.path("new/mine.edj");
    EXPECT_EQ(engine.SaveEqualizerFile(0, path), 0);
    EXPECT_EQ(engine.LastError(), 0);
    engine.ResetEqualizer(0);
    EXPECT_THAT(gains(), ::testing::Each(0.0F));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());

    EXPECT_EQ(engine.LoadEqualizerFile(0, path), 0);
    EXPECT_EQ(gains(), saved);
    EXPECT_TRUE(events.empty());
    QCoreApplication::processEvents();
    EXPECT_THAT(events, ElementsAre("equalizer 0"));
}

TEST_F(SoundPlayerEqualizerTest, AFileThatCannotBeReadOrWrittenSaysWhyAndChangesNothing)
{
    engine.LoadEqualizerPreset(0, 3);
    QCoreApplication::processEvents();
    events.clear();
    const auto before = gains();
    const QString folder = files.folder();
    for (const QString& path : {folder, files.path("missing.edj"), files.write("b.edj", "no equalizer")}) {
        EXPECT_EQ(engine.LoadEqualizerFile(0, path), code(EngineError::InvalidEqualizerFile));
        EXPECT_EQ(engine.LastError(), -75);
    }
    EXPECT_EQ(engine.SaveEqualizerFile(0, folder), code(EngineError::FileCreationFailed));
    EXPECT_EQ(engine.LastError(), -8);
    EXPECT_EQ(engine.LoadEqualizerFile(2, files.path("a.edj")), code(EngineError::InvalidPlayer));
    EXPECT_EQ(engine.SaveEqualizerFile(2, files.path("a.edj")), code(EngineError::InvalidPlayer));
    EXPECT_FALSE(QFileInfo::exists(files.path("a.edj")));
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(gains(), before);
}

TEST_F(SoundPlayerEqualizerTest, BeforeInitPlayersItIsNotInitialized)
{
    SoundPlayerEngine early([] { return std::make_unique<ManualOutput>(std::make_shared<ManualClock>()); });
    early.LoadEqualizerPreset(0, 0);
    EXPECT_EQ(early.LastError(), -49);
    EXPECT_EQ(early.LoadEqualizerFile(0, "/x.edj"), -49);
    EXPECT_EQ(early.SaveEqualizerFile(0, files.path("x.edj")), -49);
}

TEST_F(SoundPlayerEqualizerTest, BandsHoldAcrossSounds)
{
    engine.LoadEqualizerPreset(0, 12);
    const auto before = gains();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    ASSERT_EQ(engine.LoadSound(0, sineFile("b.wav", 1, 48000)), 0);
    engine.CloseSound(0);
    EXPECT_EQ(gains(), before);
}

struct BandCase
{
    const char* name;
    int rate;
    float hertz;
    float gain;
};

class HeardBandTest : public SoundPlayerEqualizerTest, public ::testing::WithParamInterface<BandCase>
{
};

// The tone has half of full scale, and the limiter stands behind the gain: at a quarter of it a boost fits in.
TEST_P(HeardBandTest, AToneAtTheCentreIsHeardWithTheGainThatWasAskedFor)
{
    const auto& [name, rate, hertz, gain] = GetParam();
    loadDecoded(files.make("a.wav", sound::test::sine(hertz, rate, 2, 2 * rate), {"-c:a", "pcm_f32le"}));
    engine.SetGain(0, 50);
    engine.ChangeEqualizerBand(0, hertz, gain);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(rate);
    const std::vector<float> left = channelOf(clock().written(), 2, 0);
    const auto steady =
        std::span(left).subspan(static_cast<std::size_t>(rate) / 2, static_cast<std::size_t>(rate) / 2);
    EXPECT_NEAR(decibels(amplitudeAt(steady, {rate}, hertz), 0.125), gain, 0.1);
}

INSTANTIATE_TEST_SUITE_P(
    Bands, HeardBandTest,
    ::testing::Values(BandCase{"Lowest44", 44100, 80, 15}, BandCase{"Middle44", 44100, 1000, 15},
                      BandCase{"Highest44", 44100, 16000, 15}, BandCase{"HighestCut44", 44100, 16000, -15},
                      BandCase{"Lowest48", 48000, 80, -15}, BandCase{"Middle48", 48000, 3000, -7.5F},
                      BandCase{"Highest48", 48000, 16000, 15}, BandCase{"CloseToHalfTheRate", 32000, 14000, 6}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SoundPlayerEqualizerTest, FullScaleWithEveryBandAtItsTopIsLimitedAndNotWrapped)
{
    sound::test::TestSound loud = sound::test::slideWithNoise(44100, 2, 2 * 44100);
    float peak = 0;
    for (const float sample : loud.samples)
        peak = std::max(peak, std::abs(sample));
    for (float& sample : loud.samples)
        sample /= peak;
    loadDecoded(files.make("a.wav", loud, {"-c:a", "pcm_f32le"}));
    for (int band = 0; band < 10; ++band)
        engine.ChangeEqualizerBand(0, engine.GetEqualizerBandFrequency(0, band), 15);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(44100);
    const std::vector<float> heard = clock().written();
    EXPECT_TRUE(std::all_of(heard.begin(), heard.end(),
                            [](float sample) { return std::isfinite(sample) && std::abs(sample) <= 1.0F; }));
    EXPECT_GT(levelOf(channelOf(heard, 2, 0)), 0.1);
}

struct HeardCase
{
    const char* name;
    float tempo;
    float rate;
    float semitones;
    double expectedHertz;
};

class HeardPitchTest : public SoundPlayerEngineTest, public ::testing::WithParamInterface<HeardCase>
{
};

TEST_P(HeardPitchTest, WhatIsHeardHasThePitchThatTheoryWants)
{
    const HeardCase& heard = GetParam();
    init();
    loadDecoded(sineFile("a.flac", 12));
    engine.ChangeTempo(0, heard.tempo);
    engine.ChangeRate(0, heard.rate);
    engine.ChangePitchCents(0, heard.semitones);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(5 * 44100);
    const std::vector<float> left = channelOf(clock().written(), 2, 0);
    const std::span<const float> steady = std::span(left).subspan(44100, 4 * 44100);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(steady, {44100}, heard.expectedHertz), heard.expectedHertz)),
              0.1);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, HeardPitchTest,
    ::testing::Values(HeardCase{"slower20", -20, 0, 0, 440}, HeardCase{"slower60", -60, 0, 0, 440},
                      HeardCase{"faster60", 60, 0, 0, 440}, HeardCase{"twoSemitonesUp", 0, 0, 2, 493.8833012561241},
                      HeardCase{"anOctaveDown", 0, 0, -12, 220},
                      HeardCase{"aQuarterToneUp", 0, 0, 0.5, 452.8929841231365},
                      HeardCase{"turntable25Up", 0, 25, 0, 550}, HeardCase{"turntable60Down", 0, -60, 0, 176},
                      HeardCase{"slowerAndHigher", -20, 0, 2, 493.8833012561241},
                      HeardCase{"allThree", -20, 25, 2, 617.3541265701551},
                      HeardCase{"beyondTheRangeIsCutToIt", -99, 0, 99, 880}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
