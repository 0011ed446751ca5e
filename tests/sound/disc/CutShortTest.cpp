#include "sound/disc/DiscEngineTest.h"

#include <QEventLoop>
#include <QTimer>

using namespace sound;
using namespace sound::test;

namespace {

using enum DiscStage;

/// A file that is cut short while the drive already writes, and the ring is full.
class CutShortTest : public DiscEngineTest
{
protected:
    void SetUp() override
    {
        file = files.path("long.wav");
        ASSERT_TRUE(add(silence("long.wav", longTrack)));
        ASSERT_TRUE(add(tone("b.wav", 4)));
        script.write = [this](const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) {
            QFile::resize(file, QFileInfo(file).size() - 300 * Sectors::bytes);
            return takeAll(plan, feed, watch, 100, script.taken);
        };
    }

    QString file;
};

TEST_F(CutShortTest, IsWrittenWithSilenceInThePlaceOfWhatIsMissing)
{
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(warnings, (std::vector{DiscFileReport{file, "The file ends early"}}));
    EXPECT_TRUE(script.taken == QByteArray(longTrack * Sectors::bytes, '\0') + trackOf(files.path("b.wav"), 300));
    EXPECT_TRUE(errors.empty());
}

TEST_F(CutShortTest, FailsWhereNobodyLetsItGoOn)
{
    goOn = false;
    EXPECT_EQ(write(device()), Failed);
    EXPECT_EQ(warnings.size(), 1U);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::sourceFile);
    EXPECT_EQ(errors[0].fileError, (DiscFileError{-6, "The file ends early", file}));
}

TEST_F(CutShortTest, IsAskedAboutOnTheMainThreadForAsLongAsThatTakes)
{
    onWarning = [this] {
        QEventLoop box;
        QTimer::singleShot(200, &box, &QEventLoop::quit);
        box.exec();
        EXPECT_FALSE(ended());
    };
    EXPECT_EQ(write(device()), Completed);
    EXPECT_EQ(warnings.size(), 1U);
}

TEST_F(CutShortTest, AbortEndsTheWaitForTheAnswer)
{
    onWarning = [this] {
        project().AbortWrite();
        EXPECT_TRUE(eventually([this] { return ended(); }));
    };
    EXPECT_EQ(write(device()), Cancelled);
    EXPECT_TRUE(errors.empty());
}

TEST_F(CutShortTest, AnEngineMayGoWhileItAsks)
{
    onWarning = [this] {
        told.clear();
        engine.reset();
    };
    ASSERT_TRUE(start(device()));
    EXPECT_TRUE(eventually([this] { return engine == nullptr; }));
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(script.alive, 0);
}

}  // namespace
