#include "playback/LevelPanel.h"

#include "playback/PanelTest.h"

#include <QTest>

using ::testing::_;
using ::testing::AnyNumber;
using ::testing::StrictMock;

namespace {

class Fading : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    LevelPanel panel{engine};

    /// Puts the gain where a test needs it.
    void putGain(int value)
    {
        EXPECT_CALL(engine, SetGain).Times(AnyNumber());
        put(panel, "sldGain", value);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    int gain() const { return valueOf(panel, "sldGain"); }
    const QTimer& timer() const { return control<QTimer>(panel, "tmrFade"); }
    QString interval() const { return control<QLineEdit>(panel, "txtFadeInt").text(); }

    /// One tick that is to move the gain to a value.
    void expectStepTo(int value)
    {
        EXPECT_CALL(engine, SetGain(0, value)).Times(1);
        fire(panel, "tmrFade");
        EXPECT_EQ(gain(), value);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    /// What is then left of it, in milliseconds: a wait begun anew is longer.
    int letSomeOfTheWaitPass() const
    {
        const int rest = timer().interval() - 5;
        while (timer().remainingTime() > rest) {
        }
        return rest;
    }

    /// One tick that is to end the fade: no engine call, and none by the next one either.
    void expectEnd()
    {
        const int before = gain();
        fire(panel, "tmrFade");
        EXPECT_FALSE(timer().isActive());
        fire(panel, "tmrFade");
        EXPECT_EQ(gain(), before);
    }
};

TEST_F(Fading, IsOffAtFirst)
{
    EXPECT_FALSE(timer().isActive());
    EXPECT_EQ(timer().interval(), 100);
    EXPECT_FALSE(timer().isSingleShot());
    EXPECT_EQ(interval(), "3");
    EXPECT_TRUE(control<QLineEdit>(panel, "txtFadeInt").isReadOnly());
}

TEST_F(Fading, ShowsItsSevenControlsOnlyWhenAsked)
{
    const auto hidden = [this] {
        QStringList names;
        for (const char* name :
             {"Label18", "Label19", "cmdFadeOut", "cmdFadeIn", "cmdFadeIntUp", "cmdFadeIntDown", "txtFadeInt"})
            if (control<QWidget>(panel, name).isHidden())
                names << name;
        return names.size();
    };
    EXPECT_EQ(hidden(), 7);
    panel.FadingVisible();
    EXPECT_EQ(hidden(), 0);
}

TEST_F(Fading, CountsItsIntervalUpToNineSeconds)
{
    for (const char* seconds : {"4", "5", "6", "7", "8", "9", "9"}) {
        click(panel, "cmdFadeIntUp");
        EXPECT_EQ(interval(), seconds);
    }
}

TEST_F(Fading, CountsItsIntervalDownToOneSecond)
{
    for (const char* seconds : {"2", "1", "1"}) {
        click(panel, "cmdFadeIntDown");
        EXPECT_EQ(interval(), seconds);
    }
}

TEST_F(Fading, OfNineSecondsComesDownToEight)
{
    control<QLineEdit>(panel, "txtFadeInt").setText("9");
    click(panel, "cmdFadeIntDown");
    EXPECT_EQ(interval(), "8");
}

TEST_F(Fading, InDoesNotStartAtFullGain)
{
    click(panel, "cmdFadeIn");
    EXPECT_FALSE(timer().isActive());
    fire(panel, "tmrFade");
    EXPECT_EQ(gain(), 100);
}

TEST_F(Fading, OutDoesNotStartAtSilence)
{
    putGain(0);
    click(panel, "cmdFadeOut");
    EXPECT_FALSE(timer().isActive());
    fire(panel, "tmrFade");
    EXPECT_EQ(gain(), 0);
}

TEST_F(Fading, StartsWithTheIntervalThatTheTimerHolds)
{
    click(panel, "cmdFadeOut");
    EXPECT_TRUE(timer().isActive());
    EXPECT_EQ(timer().interval(), 100);
    EXPECT_EQ(gain(), 100);
}

struct IntervalRow
{
    const char* seconds;
    int stepMs;
};

class EachInterval : public Fading, public ::testing::WithParamInterface<IntervalRow>
{
};

TEST_P(EachInterval, IsAHundredTicksLong)
{
    control<QLineEdit>(panel, "txtFadeInt").setText(GetParam().seconds);
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    EXPECT_EQ(timer().interval(), GetParam().stepMs);
}

INSTANTIATE_TEST_SUITE_P(Intervals, EachInterval,
                         ::testing::Values(IntervalRow{"1", 10}, IntervalRow{"2", 20}, IntervalRow{"3", 30},
                                           IntervalRow{"4", 40}, IntervalRow{"5", 50}, IntervalRow{"6", 60},
                                           IntervalRow{"7", 70}, IntervalRow{"8", 80}, IntervalRow{"9", 90}),
                         [](const auto& info) { return std::string("Seconds") + info.param.seconds; });

TEST_F(Fading, TakesUpAnIntervalChangedUnderWayWithTheNextTick)
{
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    click(panel, "cmdFadeIntDown");
    EXPECT_EQ(timer().interval(), 30);
    expectStepTo(98);
    EXPECT_EQ(timer().interval(), 20);
}

TEST_F(Fading, KeepsTheIntervalForTheFirstTickOfTheNextFade)
{
    putGain(1);
    click(panel, "cmdFadeOut");
    expectStepTo(0);
    expectEnd();
    click(panel, "cmdFadeIntUp");
    click(panel, "cmdFadeIn");
    EXPECT_EQ(timer().interval(), 30);
    expectStepTo(1);
    EXPECT_EQ(timer().interval(), 40);
}

TEST_F(Fading, KeepsTheBeatOfItsTimerWithEachTick)
{
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    const int rest = letSomeOfTheWaitPass();
    expectStepTo(98);
    EXPECT_LE(timer().remainingTime(), rest);
}

TEST_F(Fading, KeepsTheBeatOfItsTimerWhenItIsAskedForUnderWay)
{
    putGain(50);
    click(panel, "cmdFadeOut");
    const int rest = letSomeOfTheWaitPass();
    click(panel, "cmdFadeIn");
    click(panel, "cmdFadeOut");
    EXPECT_LE(timer().remainingTime(), rest);
}

TEST_F(Fading, OutFromFullTakesAHundredStepsAndOneMoreTickToStop)
{
    click(panel, "cmdFadeOut");
    for (int wanted = 99; wanted >= 0; --wanted)
        expectStepTo(wanted);
    EXPECT_TRUE(timer().isActive());
    expectEnd();
}

TEST_F(Fading, InFromFortyTakesSixtySteps)
{
    putGain(40);
    click(panel, "cmdFadeIn");
    for (int wanted = 41; wanted <= 100; ++wanted)
        expectStepTo(wanted);
    EXPECT_TRUE(timer().isActive());
    expectEnd();
}

TEST_F(Fading, InWinsOverAFadeOutAskedForUnderWay)
{
    putGain(97);
    click(panel, "cmdFadeIn");
    expectStepTo(98);
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    expectStepTo(100);
    expectEnd();
}

TEST_F(Fading, OutTurnsRoundAtOnceForAFadeInAndEndsAtFull)
{
    putGain(99);
    click(panel, "cmdFadeOut");
    expectStepTo(98);
    click(panel, "cmdFadeIn");
    expectStepTo(99);
    expectStepTo(100);
    expectEnd();
}

TEST_F(Fading, ForgetsBothWishesAtItsEnd)
{
    putGain(99);
    click(panel, "cmdFadeIn");
    click(panel, "cmdFadeOut");
    expectStepTo(100);
    expectEnd();
    click(panel, "cmdFadeOut");
    expectStepTo(99);
}

TEST_F(Fading, InWithAFadeOutWantedTooEndsWhereTheSliderIsPulledToSilence)
{
    putGain(60);
    click(panel, "cmdFadeIn");
    click(panel, "cmdFadeOut");
    putGain(0);
    expectEnd();
}

TEST_F(Fading, InAskedForInTheLastMomentOfAFadeOutEndsWithIt)
{
    putGain(1);
    click(panel, "cmdFadeOut");
    expectStepTo(0);
    click(panel, "cmdFadeIn");
    expectEnd();
}

TEST_F(Fading, InGoesOnFromSilenceWhereNoFadeOutIsWanted)
{
    putGain(60);
    click(panel, "cmdFadeIn");
    putGain(0);
    expectStepTo(1);
}

TEST_F(Fading, GoesOnFromWhereTheSliderIsMovedByHand)
{
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    putGain(30);
    EXPECT_TRUE(timer().isActive());
    expectStepTo(29);
}

TEST_F(Fading, OutEndsWhereTheSliderIsPulledToSilence)
{
    click(panel, "cmdFadeOut");
    putGain(0);
    expectEnd();
}

TEST_F(Fading, ReachesSilenceByTheTimerItself)
{
    putGain(5);
    control<QLineEdit>(panel, "txtFadeInt").setText("1");
    EXPECT_CALL(engine, SetGain(0, _)).Times(5);
    click(panel, "cmdFadeOut");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !timer().isActive(); }, 5000));
    EXPECT_EQ(gain(), 0);
}

}  // namespace
