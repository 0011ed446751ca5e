#include "sound/burner/EmulatedDrive.h"

#include <linux/cdrom.h>

using namespace sound;
using namespace sound::test;

namespace {

using Disc = EmulatedWriter::Disc;
using Kernel = KernelNews::Kind;

constexpr LoadedDisc blank{true, true, 0, EmulatedWriter::latestLeadOut};
constexpr LoadedDisc nothing{};

constexpr Kernel kernelsThatTell[] = {Kernel::When, Kernel::Once};

}  // namespace

class RefreshedDrive : public EmulatedDrive
{
protected:
    /// Whether the drive is looked at, which begins with the question who it is.
    bool refreshLooks()
    {
        const int before = writer.commandsOf(inquiry);
        drive().refresh();
        return writer.commandsOf(inquiry) > before;
    }

    /// Until what was found before counts.
    void settle()
    {
        int looks = 0;
        while (refreshLooks() && looks < 3)
            ++looks;
        ASSERT_LT(looks, 3);
    }
};

TEST_F(RefreshedDrive, IsLookedAtOnceHoweverOftenItIsRefreshed)
{
    for (const Disc disc : {Disc::BlankCd, Disc::WrittenCd, Disc::BlankDvd, Disc::None}) {
        writer.insert(disc);
        EXPECT_TRUE(refreshLooks());
        const LoadedDisc found = drive().disc();
        const std::vector<WriteSpeed> speeds = drive().speeds();
        const int motor = writer.commandsOf(startStop);
        for (int i = 0; i < 12; ++i)
            EXPECT_FALSE(refreshLooks()) << static_cast<int>(disc);
        EXPECT_EQ(drive().disc(), found);
        EXPECT_EQ(drive().speeds(), speeds);
        EXPECT_EQ(writer.commandsOf(startStop), motor);
        expectGivenBack();
    }
}

TEST_F(RefreshedDrive, IsLookedAtOnceMoreWhereTheKernelDoesNotTellWhen)
{
    writer.letKernelTell(Kernel::Once);
    EXPECT_TRUE(refreshLooks());
    EXPECT_TRUE(refreshLooks());
    for (int i = 0; i < 12; ++i)
        EXPECT_FALSE(refreshLooks());
    EXPECT_EQ(drive().disc(), blank);
}

TEST_F(RefreshedDrive, SeesABlankDiscThatHasJustBeenPutIn)
{
    for (const Kernel kernel : {Kernel::When, Kernel::Once, Kernel::Nothing}) {
        writer.letKernelTell(kernel);
        writer.insert(Disc::None);
        for (int i = 0; i < 3; ++i)
            drive().refresh();
        EXPECT_EQ(drive().disc(), nothing);
        writer.insert(Disc::BlankCd);
        drive().refresh();
        EXPECT_EQ(drive().disc(), blank);
        EXPECT_EQ(drive().speeds().size(), writer.abilities.measuredSpeeds.size());
    }
}

TEST_F(RefreshedDrive, SeesThatItHasAnotherDisc)
{
    for (const Kernel kernel : kernelsThatTell) {
        writer.letKernelTell(kernel);
        writer.insert(Disc::BlankCd);
        settle();
        writer.fillDisc(1234);
        EXPECT_TRUE(refreshLooks());
        EXPECT_EQ(drive().disc(), (LoadedDisc{true, false, 1234, 0}));
        EXPECT_TRUE(drive().speeds().empty());
    }
}

TEST_F(RefreshedDrive, IsLookedAtWheneverItsTrayHasBeenMoved)
{
    for (const Kernel kernel : kernelsThatTell) {
        writer.letKernelTell(kernel);
        writer.insert(Disc::BlankCd);
        settle();
        writer.moveTray(true);
        EXPECT_TRUE(refreshLooks());
        EXPECT_EQ(drive().disc(), nothing);
        EXPECT_TRUE(writer.isOpen());
        settle();
        writer.moveTray(false);
        EXPECT_TRUE(refreshLooks());
        EXPECT_EQ(drive().disc(), blank);
        settle();
        writer.moveTray(true);
        writer.moveTray(false);
        EXPECT_TRUE(refreshLooks());
        EXPECT_EQ(drive().disc(), blank);
    }
}

TEST_F(RefreshedDrive, IsLookedAtEachTimeWhereTheKernelTellsOfNoChange)
{
    writer.letKernelTell(Kernel::Nothing);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(refreshLooks());
    EXPECT_EQ(drive().disc(), blank);
}

TEST_F(RefreshedDrive, IsLookedAtEachTimeWhereItsStateIsInDoubt)
{
    struct Case
    {
        const char* name;
        int status;
        std::vector<Disc> discs;
    };
    const Case cases[] = {{"a failure", -1, {Disc::BlankCd, Disc::None}},
                          {"not told", CDS_NO_INFO, {Disc::BlankCd, Disc::None}},
                          {"not ready yet", CDS_DRIVE_NOT_READY, {Disc::BlankCd, Disc::None}},
                          {"a disc, but there is none", CDS_DISC_OK, {Disc::None}},
                          {"no disc, but there is one", CDS_NO_DISC, {Disc::BlankCd}}};
    for (const Case& one : cases)
        for (const Disc disc : one.discs) {
            SCOPED_TRACE(one.name);
            writer.insert(disc);
            writer.letKernelTellStatus(one.status);
            for (int i = 0; i < 3; ++i)
                EXPECT_TRUE(refreshLooks());
            EXPECT_EQ(drive().disc(), disc == Disc::None ? nothing : blank);
        }
}

TEST_F(RefreshedDrive, ThatCannotBeOpenedAnyMoreLooksEmptyUntilItCan)
{
    settle();
    EXPECT_EQ(drive().disc(), blank);
    writer.letAnotherProgramUseIt(true);
    EXPECT_FALSE(refreshLooks());  // it is left alone
    EXPECT_EQ(drive().disc(), nothing);
    writer.letAnotherProgramUseIt(false);
    EXPECT_TRUE(refreshLooks());
    EXPECT_EQ(drive().disc(), blank);
}

TEST_F(RefreshedDrive, ThatAnotherProgramTakesDuringALookIsLookedAtAgain)
{
    drive();  // is found
    const int before = writer.openings();
    drive().refresh();
    const int ofOneLook = writer.openings() - before;
    ASSERT_GT(ofOneLook, 1);
    EXPECT_EQ(drive().disc(), blank);
    for (int openings = 0; openings < ofOneLook; ++openings) {
        SCOPED_TRACE(openings);
        writer.insert(Disc::BlankCd);
        writer.letAnotherProgramTakeItAfter(openings);
        drive().refresh();
        EXPECT_EQ(drive().disc(), nothing);
        EXPECT_EQ(writer.openHandles(), 0);
        writer.letAnotherProgramTakeItAfter(-1);
        writer.letAnotherProgramUseIt(false);
        EXPECT_TRUE(refreshLooks());
        EXPECT_EQ(drive().disc(), blank);
    }
}

// Before its first answer a drive is not one to libburn, which then keeps the file open: that moment is left out.
TEST_F(RefreshedDrive, ThatIsPulledOutAtAnyMomentOfALookIsEmptyUntilItIsBack)
{
    drive();  // is found
    const int before = writer.commandsOfAll();
    drive().refresh();
    const int ofOneLook = writer.commandsOfAll() - before;
    ASSERT_GT(ofOneLook, 10);
    for (int commands = 1; commands < ofOneLook; ++commands) {
        SCOPED_TRACE(commands);
        writer.insert(Disc::BlankCd);
        writer.pullOutAfter(commands);
        drive().refresh();
        EXPECT_EQ(writer.openHandles(), 0);
        drive().refresh();
        EXPECT_EQ(drive().disc(), nothing);
        EXPECT_TRUE(drive().speeds().empty());
        writer.plugInAgain();
        drive().refresh();
        EXPECT_EQ(drive().disc(), blank);
    }
}

TEST_F(RefreshedDrive, SeesWhatItHasWrittenItself)
{
    settle();
    EXPECT_EQ(write(threeTracks()).end, WriteOutcome::Written);
    EXPECT_TRUE(refreshLooks());
    EXPECT_FALSE(drive().disc().blank);
    EXPECT_EQ(drive().disc().used, writer.endOfWritten());
}

TEST_F(RefreshedDrive, IsLookedAtAfterEachThingThatItDidEvenInVain)
{
    settle();
    watch.gaveUp = true;
    EXPECT_EQ(write(threeTracks()).end, WriteOutcome::GivenUp);
    EXPECT_TRUE(refreshLooks());
    settle();
    EXPECT_EQ(drive().objectionTo(threeTracks()), std::nullopt);
    EXPECT_TRUE(refreshLooks());
    settle();
    drive().eject();
    EXPECT_TRUE(refreshLooks());
    EXPECT_EQ(drive().disc(), nothing);
    EXPECT_TRUE(writer.isOpen());
}
