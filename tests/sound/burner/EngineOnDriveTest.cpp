#include "sound/burner/BurnerDrives.h"
#include "sound/burner/EmulatedWriter.h"
#include "sound/disc/DiscEngineTest.h"

#include <algorithm>

using namespace sound;
using namespace sound::test;

namespace {

using enum DiscStage;

/// The 16 bits of a WAV file, and the silence that makes it a track of so many sectors.
EmulatedWriter::Bytes onDiscAs(const QString& file, int sectors)
{
    QByteArray bytes;
    runFfmpeg({"-i", "file:" + file, "-f", "s16le", "pipe:1"}, {}, &bytes);
    EmulatedWriter::Bytes track(bytes.begin(), bytes.end());
    track.resize(static_cast<std::size_t>(sectors) * Sectors::bytes);
    return track;
}

}  // namespace

/// The whole road of a disc, from the files to the sectors that a drive is given.
class EngineOnDrive : public DiscEngineTest
{
protected:
    EngineOnDrive() { makeEngine(burnerDrives()); }

    EmulatedWriter writer;
};

TEST_F(EngineOnDrive, HasTheDriveBeforeTheImageWriter)
{
    ASSERT_EQ(engine->GetDeviceCount(), 2);
    EXPECT_EQ(device()->GetDeviceName(), "LARKTEST EMULATED WRITER (/dev/sr0)");
    device()->RefreshDisc(0);
    EXPECT_EQ(device()->GetFreeSpace(0), EmulatedWriter::latestLeadOut);
    EXPECT_EQ(device()->GetWriteSpeedCount(), 4);
}

TEST_F(EngineOnDrive, WritesTheSoundOfTheFilesToTheBit)
{
    ASSERT_TRUE(add(tone("a.wav", 4.1, 440)));  // 307.5 sectors
    ASSERT_TRUE(add(tone("b.wav", 1, 1000)));   // less than a track has
    EmulatedWriter::Bytes wanted = onDiscAs(files.path("a.wav"), 308);
    const EmulatedWriter::Bytes second = onDiscAs(files.path("b.wav"), 300);
    wanted.insert(wanted.end(), second.begin(), second.end());
    for (const bool cached : {true, false}) {
        for (const int mode : {AudioProject::discAtOnce, AudioProject::trackAtOnce}) {
            writer.insert(EmulatedWriter::Disc::BlankCd);
            project().SetCacheFiles(cached);
            project().SetWriteMode(mode);
            ASSERT_EQ(write(device()), Completed);
            EXPECT_TRUE(writer.written(0, 1000, Sectors::bytes) == wanted) << cached << ' ' << mode;
            EXPECT_EQ(writer.openHandles(), 0);
        }
    }
    EXPECT_TRUE(errors.empty());
    device()->ReleaseDisc(false);
    EXPECT_TRUE(writer.isOpen());
}

TEST_F(EngineOnDrive, TellsWhatTheDriveToldOfItsFault)
{
    ASSERT_TRUE(add(tone("a.wav", 5)));
    writer.failWriteAt(100, {3, 0x73, 0x03});
    ASSERT_EQ(write(device()), Failed);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::device);
    EXPECT_EQ(errors[0].deviceError.code, 0x037303);
    EXPECT_EQ(errors[0].deviceError.maker, "LARKTEST");

    writer.failWriteAt(-1, {});
    writer.insert(EmulatedWriter::Disc::BlankCd);
    EXPECT_EQ(write(device()), Completed);
}

TEST_F(EngineOnDrive, IsCancelledWhileTheDriveWrites)
{
    ASSERT_TRUE(add(tone("a.wav", 60)));
    project().SetWriteMode(AudioProject::discAtOnce);
    writer.writeSlowly(10);
    onProgress = [this](DiscStage stage) {
        if (stage == Writing)
            project().AbortWrite();
    };
    EXPECT_EQ(write(device()), Cancelled);
    EXPECT_LT(writer.endOfWritten(), 4500);
    EXPECT_EQ(project().GetTrackCount(), 1);
    EXPECT_EQ(writer.openHandles(), 0);
}
