#include "sound/burner/EmulatedDrive.h"

#include <cerrno>

using namespace sound;
using namespace sound::test;

namespace {

using Disc = EmulatedWriter::Disc;

constexpr const char* tooSmall = "The disc in the drive is too small for these tracks.";

DiscPlan planOf(bool atOnce, bool test = false)
{
    DiscPlan plan = threeTracks();
    plan.discAtOnce = atOnce;
    plan.test = test;
    return plan;
}

}  // namespace

class ObjectingDrive : public EmulatedDrive
{
protected:
    /// What it says against a plan; nothing where it takes it.
    std::string objectionTo(const DiscPlan& plan)
    {
        const std::optional<DiscWriteError> objection = drive().objectionTo(plan);
        if (!objection)
            return {};
        EXPECT_EQ(objection->kind, 4);  // told by its description
        return textOf(*objection);
    }

    void expectUntouched() const
    {
        for (const std::uint8_t writing : {write10, setSpeed, sendCueSheet, closeSession})
            EXPECT_EQ(writer.commandsOf(writing), 0) << std::hex << int{writing};
        EXPECT_FALSE(writer.isOpen());
        expectGivenBack();
    }
};

TEST_F(ObjectingDrive, HasNothingAgainstWhatItCanWrite)
{
    for (const bool atOnce : {true, false})
        for (const bool test : {true, false})
            EXPECT_EQ(objectionTo(planOf(atOnce, test)), "");
    expectUntouched();
}

TEST_F(ObjectingDrive, WantsABlankCd)
{
    struct Case
    {
        Disc disc;
        const char* why;
    };
    const Case cases[] = {
        {Disc::None, "There is no disc in the drive."},
        {Disc::WrittenCd, "The disc in the drive is not a blank CD."},
        {Disc::BlankDvd, "The disc in the drive is not a blank CD."},
        {Disc::BlankCd, ""},
    };
    for (const Case& one : cases) {
        writer.insert(one.disc);
        for (const bool atOnce : {true, false})
            EXPECT_EQ(objectionTo(planOf(atOnce)), one.why);
    }
    expectUntouched();
}

TEST_F(ObjectingDrive, CountsThePausesAndTheRunOutsOnlyOfTracksThatAreWrittenOneByOne)
{
    struct Case
    {
        int capacity;
        const char* atOnce;
        const char* oneByOne;
    };
    const Case cases[] = {
        {sectorsOfThreeTracks - 1, tooSmall, tooSmall},
        {sectorsOfThreeTracks, "", tooSmall},
        {sectorsOfThreeTracksOneByOne - 1, "", tooSmall},
        {sectorsOfThreeTracksOneByOne, "", ""},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.capacity);
        writer.setCapacity(one.capacity);
        EXPECT_EQ(objectionTo(planOf(true)), one.atOnce);
        EXPECT_EQ(objectionTo(planOf(false)), one.oneByOne);
    }
    expectUntouched();
}

TEST_F(ObjectingDrive, DoesNotTestWhatItWouldWrite)
{
    writer.abilities.writesTests = false;
    for (const bool atOnce : {true, false}) {
        EXPECT_EQ(objectionTo(planOf(atOnce, true)), "The drive cannot write a test.");
        EXPECT_EQ(objectionTo(planOf(atOnce, false)), "");
    }
    expectUntouched();
}

TEST_F(ObjectingDrive, IsBusyAtOnceWhileAnotherProgramUsesIt)
{
    writer.letAnotherProgramUseIt(true);
    const std::optional<DiscWriteError> objection = drive().objectionTo(planOf(true));
    ASSERT_TRUE(objection);
    EXPECT_EQ(objection->kind, DiscWriteError::system);
    EXPECT_EQ(objection->systemCode, EBUSY);
    EXPECT_EQ(writer.commandsOf(startStop), 0);
    expectUntouched();
}

TEST_F(ObjectingDrive, ThatAnotherProgramTakesBeforeItIsHadDoesNotWrite)
{
    ASSERT_EQ(objectionTo(planOf(true)), "");  // and has been found
    const int before = writer.openings();
    ASSERT_EQ(objectionTo(planOf(true)), "");
    const int untilItIsHad = writer.openings() - before;
    ASSERT_GT(untilItIsHad, 1);
    for (int openings = 0; openings < untilItIsHad; ++openings) {
        SCOPED_TRACE(openings);
        writer.letAnotherProgramTakeItAfter(openings);
        const std::optional<DiscWriteError> objection = drive().objectionTo(planOf(true));
        ASSERT_TRUE(objection);
        EXPECT_FALSE(objection->kind == DiscWriteError::system && objection->systemCode != EBUSY);
        writer.letAnotherProgramUseIt(false);
        writer.letAnotherProgramTakeItAfter(openings);
        EXPECT_EQ(write(planOf(true)).end, WriteOutcome::Failed);
        EXPECT_EQ(feed.calls, 0);
        expectUntouched();
        writer.letAnotherProgramTakeItAfter(-1);
        writer.letAnotherProgramUseIt(false);
    }
    EXPECT_EQ(objectionTo(planOf(true)), "");
}

TEST_F(ObjectingDrive, ThatIsPulledOutWhileItIsGrabbedIsGoneForTheSystem)
{
    ASSERT_EQ(objectionTo(planOf(true)), "");  // and has been found
    for (const int commands : {1, 3, 10}) {
        SCOPED_TRACE(commands);
        writer.pullOutAfter(commands);
        const std::optional<DiscWriteError> objection = drive().objectionTo(planOf(true));
        ASSERT_TRUE(objection);
        EXPECT_EQ(objection->kind, DiscWriteError::system);
        EXPECT_EQ(objection->systemCode, ENODEV);
        EXPECT_EQ(writer.openHandles(), 0);
        writer.plugInAgain();
        writer.pullOutAfter(commands);
        EXPECT_EQ(write(planOf(true)).error.systemCode, ENODEV);
        EXPECT_EQ(feed.calls, 0);
        expectUntouched();
        writer.plugInAgain();
        EXPECT_EQ(objectionTo(planOf(true)), "");
    }
}
