// Drives that need long to stop.

#include "sound/disc/DiscEngineTest.h"

#include <atomic>
#include <future>

using namespace sound;
using namespace sound::test;

namespace {

using enum DiscStage;

/// The drive stops when the test lets it.
class SlowDriveTest : public DiscEngineTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(add(silence("a.wav", 310)));
        script.write = [this](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
            QByteArray taken;
            if (++writes > 1)
                return takeAll(plan, feed, watch, 50, taken);
            watch.stage(Writing, 0);
            watch.written(0, sectorsBefore);
            while (!watch.givenUp())
                std::this_thread::sleep_for(std::chrono::milliseconds{1});
            stopping.get_future().wait();
            return WriteOutcome{sectorsBefore == plan.tracks[0].sectors ? WriteOutcome::Written
                                                                        : WriteOutcome::GivenUp};
        };
        device()->RefreshDisc(0);
        refreshesBefore = script.refreshes;
    }

    void TearDown() override
    {
        engine.reset();
        EXPECT_TRUE(eventually([this] { return script.alive == 0; }));
    }

    void stopDrive() { stopping.set_value(); }

    /// Returns how long it took.
    qint64 writeAndGiveUp() { return giveUpIn(Writing, device()); }

    std::int64_t ends() const
    {
        return std::ranges::count_if(told, [](const ToldProgress& progress) { return isEnd(progress.stage); });
    }

    std::int64_t sectorsBefore = 100;
    std::atomic<int> writes = 0;
    int refreshesBefore = 0;

private:
    std::promise<void> stopping;
};

TEST_F(SlowDriveTest, TheUserIsNotLetWaitForIt)
{
    EXPECT_LT(writeAndGiveUp(), aSecond);
    EXPECT_EQ(awake, 0);
    EXPECT_EQ(project().GetTrackCount(), 1);
    EXPECT_TRUE(add(silence("b.wav", 300)));

    stopDrive();
    EXPECT_TRUE(eventually([this] {
        device()->RefreshDisc(0);
        return script.refreshes > refreshesBefore;
    }));
    EXPECT_EQ(ends(), 1);
    EXPECT_TRUE(errors.empty());
}

TEST_F(SlowDriveTest, IsAskedNothingWhileItStops)
{
    writeAndGiveUp();
    script.disc = {};
    device()->RefreshDisc(0);
    device()->ReleaseDisc(false);
    EXPECT_EQ(script.refreshes, refreshesBefore);
    EXPECT_EQ(script.ejections, 0);
    EXPECT_TRUE(device()->GetDiscInfo().GetDiscPresent());
    EXPECT_TRUE(engine->InitDevices(false));
    EXPECT_EQ(script.alive, 1);
    stopDrive();
}

TEST_F(SlowDriveTest, TheNextWriteBeginsWhenItHasStopped)
{
    writeAndGiveUp();
    told.clear();
    ASSERT_TRUE(start(device()));
    ASSERT_TRUE(eventually([this] { return !told.empty(); }));
    EXPECT_FALSE(start(device()));
    EXPECT_EQ(stages(), std::vector{Preparing});
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(awake, 1);
    stopDrive();
    EXPECT_EQ(end(), Completed);
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(awake, 0);
}

TEST_F(SlowDriveTest, TheNextWriteIsGivenUpWithoutWaitingEither)
{
    writeAndGiveUp();
    told.clear();
    ASSERT_TRUE(start(imageWriter()));
    QElapsedTimer sinceAbort;
    sinceAbort.start();
    project().AbortWrite();
    EXPECT_EQ(end(), Cancelled);
    EXPECT_LT(sinceAbort.elapsed(), aSecond);
    stopDrive();
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(images(), QStringList());
}

TEST_F(SlowDriveTest, TheProgramStaysUntilItHasStopped)
{
    writeAndGiveUp();
    QElapsedTimer taken;
    taken.start();
    engine.reset();
    EXPECT_LT(taken.elapsed(), aSecond);
    EXPECT_EQ(script.alive, 1);

    QTimer::singleShot(0, [this] { stopDrive(); });
    QTimer::singleShot(20000, QCoreApplication::instance(), [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(script.alive, 0);
}

TEST_F(SlowDriveTest, ADiscWhoseLastSectorHasBeenSentIsFinished)
{
    sectorsBefore = 310;
    QElapsedTimer sinceAbort;
    onProgress = [&](DiscStage stage) {
        if (stage != Writing || sinceAbort.isValid())
            return;
        sinceAbort.start();
        project().AbortWrite();
        QTimer::singleShot(1500, [this] { stopDrive(); });
    };
    EXPECT_EQ(write(device()), Completed);
    EXPECT_GE(sinceAbort.elapsed(), 1500);
    EXPECT_EQ(ends(), 1);
}

}  // namespace
