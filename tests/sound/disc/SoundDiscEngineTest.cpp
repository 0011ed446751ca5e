#include "sound/disc/DiscEngineTest.h"

#include "engines/AudioProject.h"

using namespace sound;
using namespace sound::test;

namespace {

class SoundDiscEngineTest : public DiscEngineTest
{
protected:
    QStringList names()
    {
        QStringList all;
        for (short index = 0; index < engine->GetDeviceCount(); ++index)
            all << engine->GetDevice(index)->GetDeviceName();
        return all;
    }

    QStringList tracks()
    {
        QStringList all;
        for (int position = 1; position <= project().GetTrackCount(); ++position)
            all << QFileInfo(project().GetTrackFile(position)).fileName();
        return all;
    }
};

constexpr auto imageWriterName = "Disc image writer (to Recordings)";

TEST_F(SoundDiscEngineTest, TheImageWriterIsTheLastDeviceAfterWhatWasFound)
{
    EXPECT_EQ(names(), (QStringList{"Acme Writer", imageWriterName}));
    EXPECT_EQ(engine->GetDevice(-1), nullptr);
    EXPECT_EQ(engine->GetDevice(2), nullptr);
    EXPECT_EQ(engine->GetDevice(0), engine->GetDevice(0));
}

TEST_F(SoundDiscEngineTest, WithoutADriveAndWhereTheSearchFailsThereIsTheImageWriter)
{
    makeEngine([] { return DiscDrives{}; });
    EXPECT_EQ(names(), QStringList{imageWriterName});
    EXPECT_TRUE(engine->InitDevices(false));
    makeEngine([] { return std::nullopt; });
    EXPECT_EQ(names(), QStringList{imageWriterName});
    EXPECT_FALSE(engine->InitDevices(false));
    ASSERT_TRUE(add(silence("a.wav", 300)));
    EXPECT_EQ(write(engine->GetDevice(0)), DiscStage::Completed);
    EXPECT_EQ(images().size(), 2);
}

TEST_F(SoundDiscEngineTest, DrivesFoundBeforeAreGoneWhenTheNextSearchBegins)
{
    std::vector<int> aliveThen;
    makeEngine([this, &aliveThen] {
        aliveThen.push_back(script.alive);
        return finding(script)();
    });
    engine->InitDevices(false);
    EXPECT_EQ(aliveThen, (std::vector{0, 0}));
    engine.reset();
    EXPECT_EQ(script.alive, 0);
}

TEST_F(SoundDiscEngineTest, OfADiscNothingIsToldUntilItIsLookedAt)
{
    DiscDevice& drive = *device();
    EXPECT_FALSE(drive.GetDiscInfo().GetDiscPresent());
    EXPECT_EQ(drive.GetFreeSpace(0), 0);
    EXPECT_EQ(drive.GetWriteSpeedCount(), 0);
    script.disc = {true, false, 70, 4000};
    drive.RefreshDisc(0);
    EXPECT_EQ(script.refreshes, 1);
    EXPECT_TRUE(drive.GetDiscInfo().GetDiscPresent());
    EXPECT_FALSE(drive.GetDiscInfo().GetDiscBlank());
    EXPECT_EQ(drive.GetDiscInfo().GetDiscUsed(), 70);
    EXPECT_EQ(drive.GetFreeSpace(0), 4000);
    script.disc = {};
    EXPECT_EQ(drive.GetFreeSpace(0), 4000);
    drive.RefreshDisc(0);
    EXPECT_EQ(drive.GetFreeSpace(0), 0);
    EXPECT_FALSE(drive.GetDiscInfo().GetDiscPresent());
}

TEST_F(SoundDiscEngineTest, ADeviceTellsWhatTheDriveCan)
{
    DiscDevice& drive = *device();
    drive.RefreshDisc(0);
    EXPECT_TRUE(drive.IsDeviceUsable());
    EXPECT_TRUE(drive.GetCapability(DiscDevice::underrunProtection));
    EXPECT_FALSE(drive.GetCapability(56));
    ASSERT_EQ(drive.GetWriteSpeedCount(), 2);
    EXPECT_EQ(drive.GetWriteSpeedCode(0), 7056);
    EXPECT_EQ(drive.GetWriteSpeedCode(1), 2822);
    EXPECT_EQ(drive.GetWriteSpeedCode(2), 0);
    EXPECT_EQ(drive.GetWriteSpeedCode(-1), 0);
    EXPECT_EQ(drive.GetWriteSpeedRate(2822), 16);
    EXPECT_EQ(drive.GetWriteSpeedRate(1), 0);
    drive.ReleaseDisc(false);
    EXPECT_EQ(script.ejections, 1);
}

TEST_F(SoundDiscEngineTest, TheImageWriterHasAWholeBlankDisc)
{
    DiscDevice& writer = *imageWriter();
    EXPECT_EQ(writer.GetFreeSpace(0), 0);
    writer.RefreshDisc(0);
    EXPECT_TRUE(writer.IsDeviceUsable());
    EXPECT_FALSE(writer.GetCapability(DiscDevice::underrunProtection));
    EXPECT_EQ(writer.GetWriteSpeedCount(), 0);
    EXPECT_TRUE(writer.GetDiscInfo().GetDiscPresent());
    EXPECT_TRUE(writer.GetDiscInfo().GetDiscBlank());
    EXPECT_EQ(writer.GetDiscInfo().GetDiscUsed(), 0);
    EXPECT_EQ(writer.GetFreeSpace(0), 359'849);
    writer.ReleaseDisc(false);
}

TEST_F(SoundDiscEngineTest, ATrackGoesInBeforeTheOneThatHasItsPosition)
{
    ASSERT_TRUE(add(silence("a.wav", 300), 1));
    ASSERT_TRUE(add(silence("b.wav", 301), 1));
    ASSERT_TRUE(add(silence("c.wav", 302), 2));
    ASSERT_TRUE(add(silence("d.wav", 303), 4));
    ASSERT_TRUE(add(silence("e.wav", 304), 100));
    ASSERT_TRUE(add(silence("f.wav", 305), 0));
    ASSERT_TRUE(add(silence("g.wav", 306), -7));
    EXPECT_EQ(tracks(), (QStringList{"g.wav", "f.wav", "b.wav", "c.wav", "a.wav", "d.wav", "e.wav"}));
    project().RemoveTrack(3);
    project().RemoveTrack(0);
    project().RemoveTrack(7);
    project().RemoveTrack(-1);
    EXPECT_EQ(tracks(), (QStringList{"g.wav", "f.wav", "c.wav", "a.wav", "d.wav", "e.wav"}));
    EXPECT_EQ(project().GetTrackLength(3), 302);
    project().ClearTracks();
    EXPECT_EQ(project().GetTrackCount(), 0);
}

TEST_F(SoundDiscEngineTest, APositionThatNoTrackHasIsEmpty)
{
    ASSERT_TRUE(add(files.make("a.mp3", sine(440, 44100, 2, 44100))));
    EXPECT_EQ(project().GetTrackFormat(1), AudioProject::Mp3);
    for (const int position : {0, 2, -1}) {
        EXPECT_EQ(project().GetTrackFile(position), QString());
        EXPECT_EQ(project().GetTrackFormat(position), AudioProject::Wav);
        EXPECT_EQ(project().GetTrackLength(position), 0);
    }
}

TEST_F(SoundDiscEngineTest, ANameWithoutAFolderLiesInTheCurrentOne)
{
    const QString file = silence("a.wav", 300);
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(files.folder()));
    EXPECT_TRUE(add("a.wav"));
    EXPECT_FALSE(add("b.wav"));
    EXPECT_FALSE(add(""));
    QDir::setCurrent(before);
    EXPECT_EQ(QFileInfo(project().GetTrackFile(1)).canonicalFilePath(), QFileInfo(file).canonicalFilePath());
    EXPECT_TRUE(project().GetTrackFile(1).startsWith('/'));
}

TEST_F(SoundDiscEngineTest, WhatIsRefusedLeavesTheTracksAsTheyWere)
{
    ASSERT_TRUE(add(silence("a.wav", 300)));
    EXPECT_FALSE(add(silentWave(files.path("low.wav"), {32000}, 2, {320'000}), 1));
    EXPECT_FALSE(add(files.write("no.mp3", "no sound"), 1));
    EXPECT_EQ(tracks(), QStringList{"a.wav"});
}

TEST_F(SoundDiscEngineTest, TracksNeedTheirOwnSpaceHoweverTheyAreWritten)
{
    EXPECT_EQ(project().GetRequiredSpace(), 0);
    ASSERT_TRUE(add(silence("a.wav", 300)));
    EXPECT_EQ(project().GetRequiredSpace(), 300);
    ASSERT_TRUE(add(silence("b.wav", 7)));
    ASSERT_TRUE(add(silence("c.wav", 400)));
    for (const int mode : {AudioProject::trackAtOnce, AudioProject::discAtOnce, 77}) {
        project().SetWriteMode(mode);
        EXPECT_EQ(project().GetRequiredSpace(), 300 + 300 + 400);
    }
}

TEST_F(SoundDiscEngineTest, ATrackThatIsMovedIsWhatItWasAndOneThatWasChangedIsNot)
{
    const QString file = silence("a.wav", 300);
    ASSERT_TRUE(add(file));
    project().RemoveTrack(1);
    ASSERT_TRUE(add(file));
    EXPECT_EQ(project().GetTrackLength(1), 300);

    project().RemoveTrack(1);
    silence("a.wav", 400);
    ASSERT_TRUE(add(file));
    EXPECT_EQ(project().GetTrackLength(1), 400);

    project().RemoveTrack(1);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_FALSE(add(file));
}

TEST_F(SoundDiscEngineTest, ADiscHasNinetyNineTracksAndNotAHundred)
{
    const QString file = silence("a.wav", 1);
    for (int track = 0; track < 100; ++track)
        ASSERT_TRUE(add(file));
    EXPECT_EQ(project().GetTrackCount(), 100);
    EXPECT_FALSE(start(device()));
    project().RemoveTrack(100);
    EXPECT_EQ(write(device()), DiscStage::Completed);
    EXPECT_EQ(script.plan.tracks.size(), 99U);
    EXPECT_EQ(script.taken.size(), 99 * 300 * Sectors::bytes);
}

TEST_F(SoundDiscEngineTest, NothingIsStartedWithoutADeviceOrATrack)
{
    EXPECT_FALSE(start(device()));
    ASSERT_TRUE(add(silence("a.wav", 300)));
    EXPECT_FALSE(start(nullptr));
    Script other;
    SoundDiscDevice stranger(std::make_unique<ScriptedDrive>(other), [] { return false; });
    EXPECT_FALSE(start(&stranger));
    script.usable = false;
    engine->InitDevices(false);
    EXPECT_FALSE(start(device()));
    project().AbortWrite();
    QCoreApplication::processEvents();
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(script.writes, 0);
}

TEST_F(SoundDiscEngineTest, WhileItWritesItIsLeftAlone)
{
    const QString file = silence("a.wav", 300);
    ASSERT_TRUE(add(file));
    device()->RefreshDisc(0);
    bool checked = false;
    script.write = [](const DiscPlan&, SectorFeed&, WriteWatch& watch) {
        while (!watch.givenUp())
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
        return WriteOutcome{WriteOutcome::GivenUp};
    };
    onProgress = [&](DiscStage stage) {
        if (checked || isEnd(stage))
            return;
        checked = true;
        DiscDevice* const drive = device();
        EXPECT_TRUE(engine->InitDevices(false));
        EXPECT_EQ(device(), drive);
        drive->RefreshDisc(0);
        drive->ReleaseDisc(false);
        EXPECT_EQ(drive->GetFreeSpace(0), 1000);
        EXPECT_EQ(drive->GetDeviceName(), "Acme Writer");
        EXPECT_FALSE(add(file));
        EXPECT_FALSE(start(drive));
        EXPECT_FALSE(start(imageWriter()));
        project().ClearTracks();  // the write has its own
        project().AbortWrite();
    };
    EXPECT_EQ(write(device()), DiscStage::Cancelled);
    EXPECT_TRUE(checked);
    EXPECT_EQ(script.refreshes, 1);
    EXPECT_EQ(script.ejections, 0);
    EXPECT_TRUE(add(file));
}

}  // namespace
