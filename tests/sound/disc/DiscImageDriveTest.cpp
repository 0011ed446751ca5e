#include "sound/disc/DiscImageDrive.h"

#include "sound/DiscOf.h"
#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <QDir>
#include <cerrno>
#include <cstring>
#include <limits>
#include <optional>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::int64_t always = std::numeric_limits<std::int64_t>::max();

/// Sectors of which each byte is the number of its sector.
class NumberedSectors : public SectorFeed
{
public:
    explicit NumberedSectors(std::int64_t sectors = always)
        : left(sectors)
    {
    }

    bool read(std::span<std::byte> sectors) override
    {
        for (; !sectors.empty(); sectors = sectors.subspan(Sectors::bytes)) {
            if (left-- == 0)
                return false;
            std::memset(sectors.data(), number++ & 0x7F, Sectors::bytes);
        }
        return true;
    }

    int number = 1;

private:
    std::int64_t left;
};

class Watch : public WriteWatch
{
public:
    void stage(DiscStage stage, int) override { last = stage; }
    void written(int track, std::int64_t sectors) override
    {
        place = {track, sectors};
        if (atPlace)
            atPlace();
    }
    bool givenUp() const override { return up || (last == DiscStage::UpdatingVolume && upWhenUpdating); }

    bool up = false;
    bool upWhenUpdating = false;
    DiscStage last = DiscStage::Preparing;
    std::pair<int, std::int64_t> place;
    std::function<void()> atPlace;
};

class DiscImageDriveTest : public ::testing::Test
{
protected:
    DiscImageDriveTest() { plan.tracks = {{300, {}}, {310, {}}}; }

    QStringList entries() const
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                      QDir::Name);
    }

    WriteOutcome write()
    {
        NumberedSectors feed;
        return drive.write(plan, feed, watch);
    }

    SoundFiles files;
    QString folder = files.path("new/Recordings") + '/';
    DiscPlan plan;
    Watch watch;
    DiscImageDrive drive{folder, [] { return QDateTime(QDate(2007, 3, 5), QTime(14, 3, 30)); }};
};

TEST_F(DiscImageDriveTest, PausesCountWhereTheTracksAreWrittenOneByOne)
{
    plan.tracks = {{Sectors::wholeDisc - 300 - Sectors::pause, {}}, {300, {}}};
    EXPECT_FALSE(drive.objectionTo(plan));
    ++plan.tracks[0].sectors;
    ASSERT_TRUE(drive.objectionTo(plan));
    EXPECT_EQ(drive.objectionTo(plan)->kind, DiscWriteError::device);
    plan.tracks[0].sectors += Sectors::pause - 1;
    plan.discAtOnce = true;
    EXPECT_FALSE(drive.objectionTo(plan));
    ++plan.tracks[0].sectors;
    EXPECT_TRUE(drive.objectionTo(plan));
}

TEST_F(DiscImageDriveTest, AlwaysHasABlankDiscInIt)
{
    EXPECT_TRUE(drive.usable());
    EXPECT_FALSE(drive.hasUnderrunProtection());
    EXPECT_EQ(drive.disc(), (LoadedDisc{true, true, 0, 359'849}));  // 79:57:74
    EXPECT_TRUE(drive.speeds().empty());
    EXPECT_EQ(drive.name(), "Disc image writer (to Recordings)");
}

TEST_F(DiscImageDriveTest, NamesImagesByTheTimeAtWhichTheyBegin)
{
    EXPECT_EQ(write().end, WriteOutcome::Written);
    EXPECT_EQ(entries(), (QStringList{"Disc image Mar-05-2007 14-03.bin", "Disc image Mar-05-2007 14-03.cue"}));
    EXPECT_TRUE(contentOf(folder + "Disc image Mar-05-2007 14-03.cue")
                    .startsWith("FILE \"Disc image Mar-05-2007 14-03.bin\" BINARY\n"));
    EXPECT_EQ(watch.last, DiscStage::UpdatingVolume);
    EXPECT_EQ(watch.place, std::pair(1, std::int64_t{310}));
}

TEST_F(DiscImageDriveTest, WritesSilenceBetweenTracksThatAreWrittenOneByOne)
{
    write();
    const QByteArray image = contentOf(folder + "Disc image Mar-05-2007 14-03.bin");
    ASSERT_EQ(image.size(), 2352 * (300 + 150 + 310));
    EXPECT_EQ(image.left(2352), QByteArray(2352, 1));
    EXPECT_EQ(image.mid(2352 * 299, 2352), QByteArray(2352, 300 & 0x7F));
    EXPECT_EQ(image.mid(2352 * 300, 2352 * 150), QByteArray(2352 * 150, 0));
    EXPECT_EQ(image.mid(2352 * 450, 2352), QByteArray(2352, 301 & 0x7F));
    EXPECT_EQ(image.right(2352), QByteArray(2352, 610 & 0x7F));
}

TEST_F(DiscImageDriveTest, NeverReplacesWhatIsThere)
{
    QDir().mkpath(folder);
    files.write("new/Recordings/Disc image Mar-05-2007 14-03.cue", "somebody else's");
    files.write("new/Recordings/Disc image Mar-05-2007 14-03 2.bin", "another's");
    ASSERT_TRUE(QFile::link(files.path("nowhere"), folder + "Disc image Mar-05-2007 14-03 3.bin"));
    EXPECT_EQ(write().end, WriteOutcome::Written);
    EXPECT_EQ(contentOf(folder + "Disc image Mar-05-2007 14-03.cue"), "somebody else's");
    EXPECT_EQ(contentOf(folder + "Disc image Mar-05-2007 14-03 2.bin"), "another's");
    EXPECT_TRUE(entries().contains("Disc image Mar-05-2007 14-03 4.bin"));
    EXPECT_TRUE(contentOf(folder + "Disc image Mar-05-2007 14-03 4.cue").contains("14-03 4.bin\" BINARY"));
    EXPECT_EQ(entries().size(), 5);
}

TEST_F(DiscImageDriveTest, LeavesANameThatIsTakenWhileItWrites)
{
    watch.atPlace = [this] { files.write("new/Recordings/Disc image Mar-05-2007 14-03.bin", "quicker"); };
    EXPECT_EQ(write().end, WriteOutcome::Written);
    EXPECT_EQ(contentOf(folder + "Disc image Mar-05-2007 14-03.bin"), "quicker");
    EXPECT_TRUE(contentOf(folder + "Disc image Mar-05-2007 14-03 2.cue").contains("14-03 2.bin\" BINARY"));
    EXPECT_EQ(QFileInfo(folder + "Disc image Mar-05-2007 14-03 2.bin").size(), 2352 * 760);
}

TEST_F(DiscImageDriveTest, ATestTakesAllAndWritesNothing)
{
    plan.test = true;
    NumberedSectors feed;
    EXPECT_EQ(drive.write(plan, feed, watch).end, WriteOutcome::Written);
    EXPECT_EQ(feed.number, 611);
    EXPECT_EQ(watch.place, std::pair(1, std::int64_t{310}));
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST_F(DiscImageDriveTest, WhatIsGivenUpLeavesNothing)
{
    watch.atPlace = [this] { watch.up = true; };
    EXPECT_EQ(write().end, WriteOutcome::GivenUp);
    EXPECT_EQ(entries(), QStringList());
    watch.up = false;
    watch.atPlace = {};
    watch.upWhenUpdating = true;
    EXPECT_EQ(write().end, WriteOutcome::GivenUp);
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(DiscImageDriveTest, WithoutFurtherSectorsItLeavesNothing)
{
    NumberedSectors feed(450);
    EXPECT_EQ(drive.write(plan, feed, watch).end, WriteOutcome::FeedFailed);
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(DiscImageDriveTest, AFullDiscIsToldAndLeavesNothing)
{
    const DiscOf disc(500'000);
    const WriteOutcome outcome = write();
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.kind, DiscWriteError::outputFile);
    EXPECT_EQ(outcome.error.fileError,
              (DiscFileError{EFBIG, "File too large", folder + "Disc image Mar-05-2007 14-03.bin"}));
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(DiscImageDriveTest, WithoutItsCueSheetThereIsNoImage)
{
    std::optional<DiscOf> full;
    watch.atPlace = [&] {
        if (watch.place == std::pair(1, std::int64_t{310}))
            full.emplace(0);  // all sectors have found their place
    };
    const WriteOutcome outcome = write();
    full.reset();
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.fileError,
              (DiscFileError{EFBIG, "File too large", folder + "Disc image Mar-05-2007 14-03.cue"}));
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(DiscImageDriveTest, AFolderThatCannotBeIsToldAndNothingIsTaken)
{
    files.write("new", "a file where the folder would be");
    const WriteOutcome outcome = write();
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.kind, DiscWriteError::outputFile);
    EXPECT_EQ(outcome.error.fileError.code, ENOTDIR);
    EXPECT_EQ(watch.last, DiscStage::Preparing);
}

TEST_F(DiscImageDriveTest, MoreThanADiscHoldsIsRefused)
{
    plan.tracks = {{359'849 - 150 - 300, {}}, {301, {}}};
    const WriteOutcome outcome = write();
    EXPECT_EQ(outcome.end, WriteOutcome::Failed);
    EXPECT_EQ(outcome.error.kind, DiscWriteError::device);
    EXPECT_EQ(outcome.error.deviceError.model, drive.name());
    EXPECT_FALSE(QFileInfo::exists(folder));
}

}  // namespace
