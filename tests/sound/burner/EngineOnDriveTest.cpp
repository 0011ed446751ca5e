#include "sound/burner/BurnerDrives.h"
#include "sound/burner/EmulatedWriter.h"
#include "sound/disc/DiscEngineTest.h"

#include <algorithm>
#include <cerrno>

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

TEST_F(EngineOnDrive, IsCancelledWithinASecondWhateverTheDriveStillDoes)
{
    ASSERT_TRUE(add(tone("a.wav", 60)));
    writer.writeSlowly(10);
    for (const int mode : {AudioProject::discAtOnce, AudioProject::trackAtOnce}) {
        writer.insert(EmulatedWriter::Disc::BlankCd);
        project().SetWriteMode(mode);
        EXPECT_LT(giveUpIn(Writing, device()), aSecond);
        EXPECT_EQ(project().GetTrackCount(), 1);
        EXPECT_TRUE(eventually([this] { return writer.openHandles() == 0; }));
        EXPECT_LT(writer.endOfWritten(), 4500);
    }
}

TEST_F(EngineOnDrive, TellsWhatSpeaksAgainstADiscBeforeAnythingIsDecoded)
{
    constexpr auto tooSmall = "The disc in the drive is too small for these tracks.";
    constexpr int sectors = 400 + 500;
    constexpr int sectorsOneByOne = sectors + Sectors::pause + 2 * 2;  // the laser goes out after each
    struct Case
    {
        EmulatedWriter::Disc disc;
        int capacity;
        int mode;
        bool test;
        const char* why;
    };
    const Case cases[] = {
        {EmulatedWriter::Disc::None, 5000, AudioProject::discAtOnce, false, "There is no disc in the drive."},
        {EmulatedWriter::Disc::WrittenCd, 5000, AudioProject::discAtOnce, false,
         "The disc in the drive is not a blank CD."},
        {EmulatedWriter::Disc::BlankCd, sectors - 1, AudioProject::discAtOnce, false, tooSmall},
        {EmulatedWriter::Disc::BlankCd, sectorsOneByOne - 1, AudioProject::trackAtOnce, false, tooSmall},
        {EmulatedWriter::Disc::BlankCd, 5000, AudioProject::discAtOnce, true, "The drive cannot write a test."},
    };
    ASSERT_TRUE(add(silence("a.wav", 400)));
    ASSERT_TRUE(add(silence("b.wav", 500)));
    writer.abilities.writesTests = false;
    engine->InitDevices(false);
    for (const bool cached : {true, false})
        for (const Case& one : cases) {
            SCOPED_TRACE(one.why);
            errors.clear();
            writer.insert(one.disc);
            writer.setCapacity(one.capacity);
            project().SetCacheFiles(cached);
            project().SetWriteMode(one.mode);
            project().SetTestMode(one.test);
            ASSERT_EQ(write(device()), Failed);
            EXPECT_EQ(stages(), (std::vector{Preparing, Failed}));
            ASSERT_EQ(errors.size(), 1U);
            EXPECT_EQ(errors[0].description, one.why);
            EXPECT_EQ(writer.endOfWritten(), 0);
            EXPECT_EQ(writer.openHandles(), 0);
        }

    writer.insert(EmulatedWriter::Disc::BlankCd);
    writer.setCapacity(sectors);
    project().SetCacheFiles(true);
    project().SetWriteMode(AudioProject::discAtOnce);
    project().SetTestMode(false);
    ASSERT_EQ(write(device()), Completed);
    EXPECT_EQ(stages().at(1), CachingImage);
    EXPECT_EQ(writer.endOfWritten(), sectors);
}

TEST_F(EngineOnDrive, TellsThatTheDriveIsInUseBeforeAnythingIsDecoded)
{
    ASSERT_TRUE(add(silence("a.wav", 400)));
    project().SetCacheFiles(true);
    writer.letAnotherProgramUseIt(true);
    ASSERT_EQ(write(device()), Failed);
    EXPECT_EQ(stages(), (std::vector{Preparing, Failed}));
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].kind, DiscWriteError::system);
    EXPECT_EQ(errors[0].systemCode, EBUSY);

    writer.letAnotherProgramUseIt(false);
    EXPECT_EQ(write(device()), Completed);
}

TEST_F(EngineOnDrive, IsNotLookedAtForEachTrackThatIsAddedOrMoved)
{
    constexpr std::uint8_t inquiry = 0x12;
    device()->RefreshDisc(0);
    const int looks = writer.commandsOf(inquiry);
    for (int i = 0; i < 12; ++i) {
        ASSERT_TRUE(add(silence(QString("%1.wav").arg(i), 300), 1));
        device()->RefreshDisc(0);
    }
    EXPECT_EQ(writer.commandsOf(inquiry), looks);
    EXPECT_EQ(device()->GetFreeSpace(0), EmulatedWriter::latestLeadOut);

    writer.insert(EmulatedWriter::Disc::None);
    device()->RefreshDisc(0);
    EXPECT_EQ(device()->GetFreeSpace(0), 0);
    writer.insert(EmulatedWriter::Disc::BlankCd);
    device()->RefreshDisc(0);
    EXPECT_TRUE(device()->GetDiscInfo().GetDiscBlank());
}
