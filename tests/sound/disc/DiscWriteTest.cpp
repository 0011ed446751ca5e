#include "sound/DiscOf.h"
#include "sound/disc/DiscEngineTest.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cerrno>

using namespace sound;
using namespace sound::test;

namespace {

using enum DiscStage;

class DiscWriteTest : public DiscEngineTest
{
protected:
    void addThreeTones()
    {
        ASSERT_TRUE(add(tone("a.wav", 4.1, 440)));    // 307.5 sectors
        ASSERT_TRUE(add(tone("b.wav", 1, 1000)));     // less than a track has
        ASSERT_TRUE(add(tone("c.wav", 4.004, 700)));  // 300.3
    }

    QByteArray threeTones() const
    {
        return trackOf(files.path("a.wav"), 308) + trackOf(files.path("b.wav"), 300) +
               trackOf(files.path("c.wav"), 301);
    }

    /// What the percents of the whole work and the stages have to be, however the write goes.
    void expectOrderly() const
    {
        for (std::size_t index = 1; index < told.size(); ++index) {
            EXPECT_GE(told[index].total, told[index - 1].total) << index;
            EXPECT_FALSE(told[index] == told[index - 1]) << index;
            EXPECT_TRUE(!isEnd(told[index - 1].stage)) << index;
        }
        for (const ToldProgress& progress : told) {
            EXPECT_TRUE(progress.total >= 0 && progress.total <= 100);
            EXPECT_TRUE(progress.trackPercent >= 0 && progress.trackPercent <= 100);
            EXPECT_TRUE(progress.track >= 0 && progress.track <= project.GetTrackCount());
        }
    }

    AudioProject& project = DiscEngineTest::project();
};

TEST_F(DiscWriteTest, ADriveGetsTheSectorsOfAllTracksInWhateverPieces)
{
    addThreeTones();
    const QByteArray wanted = threeTones();
    for (const bool cached : {true, false}) {
        for (const int atOnce : {1, 7, 300, 1000}) {
            project.SetCacheFiles(cached);
            script.taken.clear();
            script.write = [&](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
                return takeAll(plan, feed, watch, atOnce, script.taken);
            };
            ASSERT_EQ(write(device()), Completed);
            EXPECT_TRUE(script.taken == wanted) << cached << ' ' << atOnce;
            expectOrderly();
            EXPECT_EQ(told.back().total, 100);
        }
    }
    EXPECT_TRUE(errors.empty());
    EXPECT_TRUE(warnings.empty());
    EXPECT_EQ(images(), QStringList());
}

TEST_F(DiscWriteTest, ADriveIsToldWhatTheProjectIsToBe)
{
    const TestSound sound = sine(440, 44100, 2, 44100 * 5);
    const QStringList album{"-metadata", "album=Songs", "-metadata", "artist=Ann"};
    ASSERT_TRUE(add(files.make("a.mp3", sound, album + QStringList{"-metadata", "title=One"})));
    ASSERT_TRUE(add(files.make("b.mp3", sound, album + QStringList{"-metadata", "title=Zwölf"})));
    project.SetWriteMode(AudioProject::discAtOnce);
    project.SetWriteSpeed(2822);
    project.SetTestMode(true);
    project.SetBurnProof(true);
    ASSERT_EQ(write(device()), Completed);
    DiscPlan wanted;
    wanted.tracks = {{375, {"One", "Ann"}}, {375, {"Zwölf", "Ann"}}};
    wanted.texts = {"Songs", "Ann"};
    wanted.discAtOnce = true;
    wanted.test = true;
    wanted.underrunProtection = true;
    wanted.speed = 2822;
    EXPECT_EQ(script.plan, wanted);

    ASSERT_TRUE(add(files.make("c.mp3", sound, {"-metadata", "album=Other"})));
    project.SetWriteMode(AudioProject::trackAtOnce);
    project.SetWriteSpeed(0);
    project.SetTestMode(false);
    project.SetBurnProof(false);
    ASSERT_EQ(write(device()), Completed);
    wanted = {{{375, {"One", "Ann"}}, {375, {"Zwölf", "Ann"}}, {375, {}}}, {}, false, false, false, 0};
    EXPECT_EQ(script.plan, wanted);
}

TEST_F(DiscWriteTest, TheStagesComeInTheirOrderHoweverQuicklyTheyPass)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    ASSERT_TRUE(add(silence("b.wav", 300)));
    ASSERT_EQ(write(device()), Completed);
    EXPECT_EQ(stages(), (std::vector{Preparing, Caching, LeadIn, Writing, ClosingTrack, Writing, ClosingTrack,
                                     LeadOut, Completed}));
    project.SetCacheFiles(true);
    ASSERT_EQ(write(device()), Completed);
    EXPECT_EQ(stages(), (std::vector{Preparing, CachingImage, LeadIn, Writing, ClosingTrack, Writing, ClosingTrack,
                                     LeadOut, Completed}));
    const auto told2 = [this](DiscStage stage) {
        return std::ranges::count_if(told, [stage](const ToldProgress& progress) {
            return progress.stage == stage && progress.track == 2 && progress.trackPercent == 100;
        });
    };
    EXPECT_EQ(told2(CachingImage), 1);
    EXPECT_EQ(told2(Writing), 1);
    EXPECT_EQ(told2(ClosingTrack), 1);
}

TEST_F(DiscWriteTest, PercentsAreToldSomeTwentyTimesASecondAtMost)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    script.write = [](const DiscPlan&, SectorFeed&, WriteWatch& watch) {
        watch.stage(Writing, 0);
        for (int sector = 1; sector <= 300; ++sector) {
            watch.written(0, sector);
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
        }
        return WriteOutcome{};
    };
    QElapsedTimer taken;
    taken.start();
    ASSERT_EQ(write(device()), Completed);
    const auto of = [](DiscStage stage) {
        return [stage](const ToldProgress& progress) { return progress.stage == stage; };
    };
    EXPECT_LE(std::ranges::count_if(told, of(Writing)),
              taken.elapsed() / 45 + 1);  // timers are a little early at times
    EXPECT_GE(std::ranges::count_if(told, of(Writing)), 2);
    expectOrderly();
}

TEST_F(DiscWriteTest, ADriveBeginsWhenTheReserveIsFull)
{
    const QString file = silence("a.wav", longTrack);
    ASSERT_TRUE(add(file));
    std::atomic<bool> reserveWasThere = false;
    script.write = [&](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
        QFile::resize(file, 1000);  // so that nothing more is decoded until somebody answers for that
        std::vector<std::byte> sectors(reserve * Sectors::bytes);
        reserveWasThere = feed.read(sectors);
        DiscPlan rest = plan;
        rest.tracks[0].sectors -= reserve;
        return takeAll(rest, feed, watch, 100, script.taken);
    };
    onWarning = [&] { EXPECT_TRUE(eventually([&] { return reserveWasThere.load(); })); };
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(warnings.size(), 1U);
}

TEST_F(DiscWriteTest, AFailingDriveEndsTheWriteAndTheNextOneWorks)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    DiscWriteError error;
    error.kind = DiscWriteError::device;
    error.deviceError = {0x30300, "Power calibration area error", "Acme", "Writer"};
    for (const bool cached : {true, false}) {
        errors.clear();
        project.SetCacheFiles(cached);
        const auto works = std::exchange(script.write, [&](const DiscPlan&, SectorFeed& feed, WriteWatch& watch) {
            watch.stage(Writing, 0);
            std::vector<std::byte> sectors(100 * Sectors::bytes);
            EXPECT_TRUE(feed.read(sectors));
            watch.written(0, 100);
            return WriteOutcome{WriteOutcome::Failed, error};
        });
        EXPECT_EQ(write(device()), Failed);
        EXPECT_EQ(errors, std::vector{error});
        expectOrderly();
        script.write = works;
        EXPECT_EQ(write(device()), Completed);
        EXPECT_EQ(project.GetTrackCount(), 1);
    }
}

TEST_F(DiscWriteTest, WhatTheDriveHasAgainstADiscIsToldBeforeAnythingIsDecoded)
{
    ASSERT_TRUE(add(tone("a.wav", 5)));
    DiscWriteError objection;
    objection.kind = 4;
    objection.description = "no room";
    script.objection = objection;
    for (const bool cached : {true, false}) {
        DiscEngineTest::project().SetCacheFiles(cached);
        EXPECT_EQ(write(device()), Failed);
        EXPECT_EQ(stages(), (std::vector{Preparing, Failed}));
        ASSERT_FALSE(errors.empty());
        EXPECT_EQ(errors.back(), objection);
    }
    EXPECT_EQ(script.writes, 0);
}

TEST_F(DiscWriteTest, AFileThatHasVanishedOrChangedIsFoundBeforeTheDriveIsTouched)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    const QString file = silence("b.wav", 400);
    ASSERT_TRUE(add(file));
    const std::vector<std::pair<std::function<void()>, DiscFileError>> changes = {
        {[&] { silence("b.wav", 399); }, {-6, "The file has been changed since it was added", file}},
        {[&] { silentWave(file, {48000}, 2, {400 * 588}); },
         {-6, "The file has been changed since it was added", file}},
        {[&] { files.write("b.wav", "RIFF"); }, {-6, "The file is no sound any more", file}},
        {[&] { QFile::remove(file); }, {ENOENT, "No such file or directory", file}},
    };
    for (const auto& [change, fileError] : changes) {
        change();
        errors.clear();
        EXPECT_EQ(write(device()), Failed);
        ASSERT_EQ(errors.size(), 1U);
        EXPECT_EQ(errors[0].kind, DiscWriteError::sourceFile);
        EXPECT_EQ(errors[0].fileError, fileError);
        EXPECT_EQ(stages(), (std::vector{Preparing, Failed}));
    }
    EXPECT_EQ(script.writes, 0);
    silence("b.wav", 400);
    EXPECT_EQ(write(device()), Completed);
}

TEST_F(DiscWriteTest, AFileThatVanishesBeforeItIsDecodedEndsTheWrite)
{
    ASSERT_TRUE(add(silence("long.wav", longTrack)));
    const QString file = silence("b.wav", 300);
    ASSERT_TRUE(add(file));
    script.write = [&](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
        QFile::remove(file);
        return takeAll(plan, feed, watch, 100, script.taken);
    };
    EXPECT_EQ(write(device()), Failed);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::sourceFile);
    EXPECT_EQ(errors[0].fileError, (DiscFileError{ENOENT, "No such file or directory", file}));
    expectOrderly();
}

TEST_F(DiscWriteTest, ADiscThatIsFullIsAnOutputFile)
{
    ASSERT_TRUE(add(silence("a.wav", 3000)));
    const DiscOf disc(2'000'000);
    project.SetCacheFiles(true);
    EXPECT_EQ(write(device()), Failed);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::outputFile);
    EXPECT_EQ(errors[0].fileError, (DiscFileError{ENOSPC, "No space left on device", "temporary file"}));
    EXPECT_EQ(script.writes, 0);

    project.SetCacheFiles(false);
    errors.clear();
    EXPECT_EQ(write(imageWriter()), Failed);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::outputFile);
    EXPECT_EQ(errors[0].fileError.code, EFBIG);
    EXPECT_TRUE(errors[0].fileError.fileName.startsWith(imageFolder() + "/Disc image "));
    EXPECT_EQ(images(), QStringList());
}

TEST_F(DiscWriteTest, ADiscThatFillsWhileTheFilesAreCachedIsAnOutputFileToo)
{
    // Ten minutes that are converted: no machine is done with them before it is told that it has begun.
    ASSERT_TRUE(add(silentWave(files.path("a.wav"), {96000}, 2, {96000 * 600})));
    project.SetCacheFiles(true);
    std::optional<DiscOf> full;
    onProgress = [&](DiscStage stage) {
        if (stage == CachingImage && !full)
            full.emplace(0);
    };
    const DiscStage ended = write(device());
    full.reset();
    EXPECT_EQ(ended, Failed);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::outputFile);
    EXPECT_EQ(errors[0].fileError, (DiscFileError{EFBIG, "File too large", "temporary file"}));
}

TEST_F(DiscWriteTest, ATestWithTheImageWriterLeavesNothing)
{
    addThreeTones();
    project.SetTestMode(true);
    for (const bool cached : {true, false}) {
        project.SetCacheFiles(cached);
        EXPECT_EQ(write(imageWriter()), Completed);
        EXPECT_FALSE(QFileInfo::exists(imageFolder()));
    }
    EXPECT_TRUE(project.GetTestMode());
}

TEST_F(DiscWriteTest, TheComputerIsKeptAwakeUntilTheEndIsTold)
{
    ASSERT_TRUE(add(tone("a.wav", 5)));
    onProgress = [this](DiscStage stage) { EXPECT_EQ(awake, isEnd(stage) ? 0 : 1); };
    EXPECT_EQ(write(device()), Completed);
    script.write = [](const DiscPlan&, SectorFeed&, WriteWatch&) { return WriteOutcome{WriteOutcome::Failed}; };
    EXPECT_EQ(write(device()), Failed);
    ASSERT_TRUE(start(device()));
    EXPECT_EQ(awake, 1);
    engine.reset();
    EXPECT_EQ(awake, 0);
}

TEST_F(DiscWriteTest, WhenTheEndIsToldTheEngineIsReadyForAllThatFollows)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    int ends = 0;
    onProgress = [&](DiscStage stage) {
        if (!isEnd(stage) || ++ends > 1)
            return;
        QEventLoop box;
        QTimer::singleShot(100, &box, &QEventLoop::quit);
        box.exec();
        if (!project.GetTestMode())
            device()->ReleaseDisc(false);
        project.ClearTracks();
        EXPECT_TRUE(add(silence("b.wav", 310)));
        EXPECT_TRUE(start(device()));
        EXPECT_TRUE(eventually([&] { return ends == 2; }));
    };
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(ends, 2);
    EXPECT_EQ(script.writes, 2);
    EXPECT_EQ(script.ejections, 1);
    EXPECT_EQ(script.taken.size(), 610 * Sectors::bytes);
}

TEST_F(DiscWriteTest, GoesOnInAnEventLoopThatASlotTurns)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    bool turned = false;
    onProgress = [&](DiscStage) {
        if (!std::exchange(turned, true)) {
            EXPECT_TRUE(eventually([this] { return ended(); }));
        }
    };
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(stages().front(), Preparing);
    EXPECT_EQ(std::ranges::count_if(told, [](const ToldProgress& progress) { return isEnd(progress.stage); }), 1);
}

}  // namespace
