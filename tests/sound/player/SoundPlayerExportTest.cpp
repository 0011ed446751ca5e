#include "sound/player/SoundPlayerEngineTest.h"

#include <gmock/gmock.h>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;

namespace {

class SoundPlayerExportTest : public SoundPlayerEngineTest
{
};

TEST_F(SoundPlayerExportTest, LoadSoundForExportTellsPercentAndDone)
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

TEST_F(SoundPlayerExportTest, AnExportOfASoundThatIsStillLoadingIsDoneWhenItsFileIsThere)
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

TEST_F(SoundPlayerExportTest, ASoundLoadedBesideAnExportIsNotTakenForItsEnd)
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

TEST_F(SoundPlayerExportTest, WhatPlaysIsNoLongerReportedAsLoading)
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

TEST_F(SoundPlayerExportTest, ExportSoundRangeWritesTheStretchToTheFrame)
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

TEST_F(SoundPlayerExportTest, AnExportToMinusOneRunsToTheEnd)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2, 48000, 1)), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 0, end), 0);
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_EQ(sound::test::decodedByFfmpeg(files.path("out.wav"), 1).size(), 96000U);
}

TEST_F(SoundPlayerExportTest, AnExportThatCannotBeWrittenFailsAndSaysWhy)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    const int end = -1;
    ASSERT_EQ(engine.ExportSoundRange(0, "/proc/no/such/out.wav", 0, end), 0);
    ASSERT_TRUE(eventually([&] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("failed 0"));
    EXPECT_EQ(engine.LastError(), code(EngineError::FileCreationFailed));
}

TEST_F(SoundPlayerExportTest, AnEmptyExportRangeIsRefused)
{
    init();
    const int end = 500;
    EXPECT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 0, end), code(EngineError::NoSoundLoaded));
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    EXPECT_EQ(engine.ExportSoundRange(0, files.path("out.wav"), 500, end), code(EngineError::InvalidPosition));
    EXPECT_FALSE(QFileInfo::exists(files.path("out.wav")));
}

TEST_F(SoundPlayerExportTest, AnEngineThatGoesInTheMiddleOfAnExportLeavesNoFile)
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

}  // namespace
