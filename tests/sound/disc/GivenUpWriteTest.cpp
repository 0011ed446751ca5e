#include "sound/disc/DiscEngineTest.h"

#include <atomic>

using namespace sound;
using namespace sound::test;

namespace {

using enum DiscStage;

/// A write that is given up, or whose engine goes, as soon as a stage of it is told.
class GivenUpWriteTest : public DiscEngineTest, public ::testing::WithParamInterface<DiscStage>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(add(silentWave(files.path("a.wav"), {44100}, 2, {310 * 588})));
        ASSERT_TRUE(add(silentWave(files.path("b.wav"), {48000}, 1, {48000 * 4})));
        DiscEngineTest::project().SetCacheFiles(GetParam() == CachingImage);
        script.write = [this](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
            // A drive that stays in the stage until it is told to give up.
            QByteArray taken;
            const WriteOutcome outcome = takeAll(plan, feed, watch, 50, taken);
            watch.stage(GetParam() <= Caching ? LeadIn : GetParam(), 1);
            while (!watch.givenUp())
                std::this_thread::sleep_for(std::chrono::milliseconds{1});
            gaveUp = true;
            return outcome.end == WriteOutcome::Written ? WriteOutcome{WriteOutcome::GivenUp} : outcome;
        };
    }

    std::atomic<bool> gaveUp = false;
};

TEST_P(GivenUpWriteTest, EndsWithinASecondAndIsCancelled)
{
    QElapsedTimer sinceAbort;
    std::size_t toldThen = 0;
    onProgress = [&](DiscStage stage) {
        if (stage == GetParam() && !sinceAbort.isValid()) {
            sinceAbort.start();
            toldThen = told.size();
            project().AbortWrite();
            project().AbortWrite();
        }
    };
    EXPECT_EQ(write(device()), Cancelled);
    EXPECT_LT(sinceAbort.elapsed(), aSecond);
    EXPECT_EQ(told.size(), toldThen + 1);
    EXPECT_EQ(std::ranges::count_if(told, [](const ToldProgress& progress) { return isEnd(progress.stage); }), 1);
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(project().GetTrackCount(), 2);

    script.write = [](const DiscPlan&, SectorFeed&, WriteWatch&) { return WriteOutcome{}; };
    EXPECT_EQ(write(device()), Completed);
}

TEST_P(GivenUpWriteTest, TellsNothingMoreWhenItsEngineGoes)
{
    std::size_t toldThen = 0;
    onProgress = [&](DiscStage stage) {
        if (stage != GetParam() || !engine)
            return;
        QElapsedTimer taken;
        taken.start();
        toldThen = told.size();
        engine.reset();
        EXPECT_LT(taken.elapsed(), aSecond);
    };
    ASSERT_TRUE(start(device()));
    EXPECT_TRUE(eventually([this] { return engine == nullptr; }));
    EXPECT_EQ(script.alive, 0);
    QCoreApplication::processEvents();  // whoever could tell more has ended by now
    EXPECT_EQ(told.size(), toldThen);
    EXPECT_TRUE(errors.empty());
}

std::string nameOf(const ::testing::TestParamInfo<DiscStage>& stage)
{
    const std::pair<DiscStage, const char*> names[] = {
        {Preparing, "Preparing"}, {CachingImage, "CachingImage"},
        {Caching, "Caching"},     {LeadIn, "LeadIn"},
        {Writing, "Writing"},     {ClosingTrack, "ClosingTrack"},
        {LeadOut, "LeadOut"},     {UpdatingVolume, "UpdatingVolume"},
    };
    for (const auto& [value, name] : names) {
        if (value == stage.param)
            return name;
    }
    return {};
}

INSTANTIATE_TEST_SUITE_P(InEachStage, GivenUpWriteTest,
                         ::testing::Values(Preparing, CachingImage, Caching, LeadIn, Writing, ClosingTrack, LeadOut,
                                           UpdatingVolume),
                         nameOf);

/// An hour of silence, which no machine writes in the time that a test takes to give it up.
class GivenUpHourTest : public DiscEngineTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(add(silentWave(files.path("a.wav"), {96000}, 2, {std::int64_t{96000} * 3600})));
    }

    void expectCancelledIn(DiscStage stage)
    {
        EXPECT_LT(giveUpIn(stage, imageWriter()), aSecond);
        EXPECT_EQ(stages().back(), Cancelled);
        EXPECT_LT(told.back().total, 100);
        EXPECT_EQ(images(), QStringList());
    }
};

TEST_F(GivenUpHourTest, LeavesNothingOfACache)
{
    project().SetCacheFiles(true);
    expectCancelledIn(CachingImage);
    EXPECT_EQ(stages(), (std::vector{Preparing, CachingImage, Cancelled}));
}

TEST_F(GivenUpHourTest, LeavesNothingOfAReserve)
{
    expectCancelledIn(Caching);
}

TEST_F(GivenUpHourTest, LeavesNothingOfAnImage)
{
    expectCancelledIn(Writing);
}

TEST_F(GivenUpHourTest, LeavesNothingOfAnImageWhoseEngineGoes)
{
    onProgress = [&](DiscStage stage) {
        if (stage == Writing)
            engine.reset();
    };
    ASSERT_TRUE(start(imageWriter()));
    EXPECT_TRUE(eventually([this] { return engine == nullptr; }));
    EXPECT_EQ(images(), QStringList());
}

}  // namespace
