#include "playback/LevelPanel.h"

#include "playback/PanelTest.h"

#include <QApplication>
#include <QTest>

using ::testing::_;
using ::testing::AnyNumber;
using ::testing::StrictMock;

namespace {

class Level : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    LevelPanel panel{engine};

    /// Puts a slider where a test needs it, whatever engine calls that makes.
    void prepare(const char* slider, int value)
    {
        EXPECT_CALL(engine, SetGain).Times(AnyNumber());
        EXPECT_CALL(engine, SetBalance).Times(AnyNumber());
        put(panel, slider, value);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    int gain() const { return valueOf(panel, "sldGain"); }
    int balance() const { return valueOf(panel, "sldBalance"); }
};

struct SliderRow
{
    const char* name;
    int minimum;
    int maximum;
    int value;
};

class EachLevel : public Level, public ::testing::WithParamInterface<SliderRow>
{
};

TEST_P(EachLevel, StartsWithItsRangeAndValueWithoutAnEngineCall)
{
    const auto& slider = control<Slider>(panel, GetParam().name);
    EXPECT_EQ(slider.minimum(), GetParam().minimum);
    EXPECT_EQ(slider.maximum(), GetParam().maximum);
    EXPECT_EQ(slider.value(), GetParam().value);
    EXPECT_NE(slider.accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(Sliders, EachLevel,
                         ::testing::Values(SliderRow{"sldGain", 0, 100, 100}, SliderRow{"sldBalance", -50, 50, 0},
                                           SliderRow{"sldVolume", 0, 65535, 32768}),
                         [](const auto& info) { return std::string(info.param.name); });

struct ToolTipRow
{
    const char* name;
    const char* toolTip;
};

class EachLevelToolTip : public Level, public ::testing::WithParamInterface<ToolTipRow>
{
};

TEST_P(EachLevelToolTip, IsThereWithANameForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(panel, GetParam().name).toolTip(), GetParam().toolTip);
    EXPECT_NE(control<QWidget>(panel, GetParam().name).accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Controls, EachLevelToolTip,
    ::testing::Values(ToolTipRow{"cmdBalanceLeft", "Balance to left"},
                      ToolTipRow{"cmdBalanceRight", "Balance to right"},
                      ToolTipRow{"cmdBalanceReset", "Reset balance"}, ToolTipRow{"cmdGainDown", "Volume down"},
                      ToolTipRow{"MyButton6", "Volume up"}, ToolTipRow{"txtFadeInt", "Fading interval"},
                      ToolTipRow{"cmdFadeIntUp", "Increase fading interval"},
                      ToolTipRow{"cmdFadeIntDown", "Decrease fading interval"}, ToolTipRow{"cmdFadeIn", "Fade in"},
                      ToolTipRow{"cmdFadeOut", "Fade out"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Level, IsCaptioned)
{
    EXPECT_EQ(textOf(panel, "Label9"), "Volume :");
    EXPECT_EQ(textOf(panel, "Label8"), "Balance :");
    EXPECT_EQ(textOf(panel, "Label18"), "Fading :");
    EXPECT_EQ(textOf(panel, "Label19"), "seconds");
}

TEST_F(Level, ShowsHalfAtBothEndsOfTheBalanceWhateverItIs)
{
    for (const int value : {0, -50, 50}) {
        prepare("sldBalance", value);
        EXPECT_EQ(textOf(panel, "lblBalanceLeft"), "50%");
        EXPECT_EQ(textOf(panel, "lblBalanceRight"), "50%");
    }
}

TEST_F(Level, SendsTheGain)
{
    for (const int value : {99, 0, 100}) {
        EXPECT_CALL(engine, SetGain(0, value));
        put(panel, "sldGain", value);
    }
}

TEST_F(Level, SendsTheBalance)
{
    for (const int value : {-50, 50, 0}) {
        EXPECT_CALL(engine, SetBalance(0, value));
        put(panel, "sldBalance", value);
    }
}

TEST_F(Level, SendsNothingForAPutOfTheValueHeld)
{
    put(panel, "sldGain", 100);
    put(panel, "sldBalance", 0);
    put(panel, "sldVolume", 32768);
    EXPECT_EQ(panel.sldVolume().toolTip(), "");
}

struct BalanceRow
{
    const char* name;
    const char* button;
    int before;
    int after;
};

class EachBalanceStep : public Level, public ::testing::WithParamInterface<BalanceRow>
{
};

TEST_P(EachBalanceStep, MovesByTwoAndIsCutAtTheEnd)
{
    prepare("sldBalance", GetParam().before);
    EXPECT_CALL(engine, SetBalance(0, GetParam().after));
    click(panel, GetParam().button);
    EXPECT_EQ(balance(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(Steps, EachBalanceStep,
                         ::testing::Values(BalanceRow{"LeftFromTheMiddle", "cmdBalanceLeft", 0, -2},
                                           BalanceRow{"LeftToTheEnd", "cmdBalanceLeft", -48, -50},
                                           BalanceRow{"LeftFromOneBeforeTheEnd", "cmdBalanceLeft", -49, -50},
                                           BalanceRow{"LeftFromTheRightEnd", "cmdBalanceLeft", 50, 48},
                                           BalanceRow{"RightFromTheMiddle", "cmdBalanceRight", 0, 2},
                                           BalanceRow{"RightToTheEnd", "cmdBalanceRight", 48, 50},
                                           BalanceRow{"RightFromOneBeforeTheEnd", "cmdBalanceRight", 49, 50},
                                           BalanceRow{"RightFromTheLeftEnd", "cmdBalanceRight", -50, -48},
                                           BalanceRow{"ResetFromTheLeft", "cmdBalanceReset", -7, 0},
                                           BalanceRow{"ResetFromTheRight", "cmdBalanceReset", 50, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Level, RefusesABalanceStepAtTheEnd)
{
    prepare("sldBalance", 50);
    click(panel, "cmdBalanceRight");
    EXPECT_EQ(balance(), 50);
    prepare("sldBalance", -50);
    click(panel, "cmdBalanceLeft");
    EXPECT_EQ(balance(), -50);
}

TEST_F(Level, ResetsABalanceInTheMiddleWithoutAnEngineCall)
{
    click(panel, "cmdBalanceReset");
    EXPECT_EQ(balance(), 0);
}

TEST_F(Level, LowersTheGainByOne)
{
    EXPECT_CALL(engine, SetGain(0, 99));
    click(panel, "cmdGainDown");
    EXPECT_EQ(gain(), 99);
    prepare("sldGain", 1);
    EXPECT_CALL(engine, SetGain(0, 0));
    click(panel, "cmdGainDown");
}

TEST_F(Level, RefusesToLowerTheGainBelowSilence)
{
    prepare("sldGain", 0);
    click(panel, "cmdGainDown");
    EXPECT_EQ(gain(), 0);
}

TEST_F(Level, HasAButtonForVolumeUpThatDoesNothing)
{
    prepare("sldGain", 40);
    EXPECT_TRUE(control<QToolButton>(panel, "MyButton6").isEnabled());
    click(panel, "MyButton6");
    EXPECT_EQ(gain(), 40);
    EXPECT_EQ(balance(), 0);
    EXPECT_EQ(panel.sldVolume().value(), 32768);
}

TEST_F(Level, NeverShowsTheVolumeOfTheSystem)
{
    panel.FadingVisible();
    panel.show();
    EXPECT_FALSE(panel.sldVolume().isVisible());
    EXPECT_EQ(&panel.sldVolume(), panel.findChild<Slider*>("sldVolume"));
}

struct VolumeRow
{
    const char* name;
    int value;
    const char* toolTip;
};

class EachVolume : public Level, public ::testing::WithParamInterface<VolumeRow>
{
};

TEST_P(EachVolume, IsRememberedAndTippedInTenthsAndRepeatsTheBalanceAlone)
{
    prepare("sldBalance", -12);
    EXPECT_CALL(engine, SetBalance(0, -12)).Times(1);
    panel.sldVolume().setValue(GetParam().value);
    EXPECT_EQ(panel.sldVolume().toolTip(), GetParam().toolTip);
    EXPECT_EQ(panel.masterVolume(), GetParam().value);
    EXPECT_EQ(gain(), 100);
    EXPECT_EQ(balance(), -12);
}

INSTANTIATE_TEST_SUITE_P(Volumes, EachVolume,
                         ::testing::Values(VolumeRow{"Silent", 0, "0.000"}, VolumeRow{"One", 1, "0.000"},
                                           VolumeRow{"Four", 4, "0.001"}, VolumeRow{"ATenth", 6553, "1.000"},
                                           VolumeRow{"Half", 32767, "5.000"}, VolumeRow{"Most", 60000, "9.156"},
                                           VolumeRow{"Full", 65535, "10.001"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Level, RemembersNoVolumeOfTheSystemBeforeThereIsOne)
{
    EXPECT_EQ(panel.masterVolume(), 0);
}

class Fading : public Level
{
protected:
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
    prepare("sldGain", 0);
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
    prepare("sldGain", 1);
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
    prepare("sldGain", 50);
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
    prepare("sldGain", 40);
    click(panel, "cmdFadeIn");
    for (int wanted = 41; wanted <= 100; ++wanted)
        expectStepTo(wanted);
    EXPECT_TRUE(timer().isActive());
    expectEnd();
}

TEST_F(Fading, InWinsOverAFadeOutAskedForUnderWay)
{
    prepare("sldGain", 97);
    click(panel, "cmdFadeIn");
    expectStepTo(98);
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    expectStepTo(100);
    expectEnd();
}

TEST_F(Fading, OutTurnsRoundAtOnceForAFadeInAndEndsAtFull)
{
    prepare("sldGain", 99);
    click(panel, "cmdFadeOut");
    expectStepTo(98);
    click(panel, "cmdFadeIn");
    expectStepTo(99);
    expectStepTo(100);
    expectEnd();
}

TEST_F(Fading, ForgetsBothWishesAtItsEnd)
{
    prepare("sldGain", 99);
    click(panel, "cmdFadeIn");
    click(panel, "cmdFadeOut");
    expectStepTo(100);
    expectEnd();
    click(panel, "cmdFadeOut");
    expectStepTo(99);
}

TEST_F(Fading, InWithAFadeOutWantedTooEndsWhereTheSliderIsPulledToSilence)
{
    prepare("sldGain", 60);
    click(panel, "cmdFadeIn");
    click(panel, "cmdFadeOut");
    prepare("sldGain", 0);
    expectEnd();
}

TEST_F(Fading, InAskedForInTheLastMomentOfAFadeOutEndsWithIt)
{
    prepare("sldGain", 1);
    click(panel, "cmdFadeOut");
    expectStepTo(0);
    click(panel, "cmdFadeIn");
    expectEnd();
}

TEST_F(Fading, InGoesOnFromSilenceWhereNoFadeOutIsWanted)
{
    prepare("sldGain", 60);
    click(panel, "cmdFadeIn");
    prepare("sldGain", 0);
    expectStepTo(1);
}

TEST_F(Fading, GoesOnFromWhereTheSliderIsMovedByHand)
{
    click(panel, "cmdFadeOut");
    expectStepTo(99);
    prepare("sldGain", 30);
    EXPECT_TRUE(timer().isActive());
    expectStepTo(29);
}

TEST_F(Fading, OutEndsWhereTheSliderIsPulledToSilence)
{
    click(panel, "cmdFadeOut");
    prepare("sldGain", 0);
    expectEnd();
}

TEST_F(Fading, ReachesSilenceByTheTimerItself)
{
    prepare("sldGain", 5);
    control<QLineEdit>(panel, "txtFadeInt").setText("1");
    EXPECT_CALL(engine, SetGain(0, _)).Times(5);
    click(panel, "cmdFadeOut");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !timer().isActive(); }, 5000));
    EXPECT_EQ(gain(), 0);
}

// Volume, balance, fading: one after the other, and never to the slider that is not there for the user.
TEST_F(Level, IsWalkedByTheTabKeyAsTheEyeGoes)
{
    panel.FadingVisible();
    panel.show();
    QApplication::setActiveWindow(&panel);
    control<QWidget>(panel, "cmdGainDown").setFocus();
    for (const char* next :
         {"sldGain", "MyButton6", "cmdBalanceLeft", "sldBalance", "cmdBalanceRight", "cmdBalanceReset",
          "txtFadeInt", "cmdFadeIntDown", "cmdFadeIntUp", "cmdFadeIn", "cmdFadeOut", "cmdGainDown"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
}

TEST_F(Level, FitsInTwoRowsOfTheRightColumn)
{
    panel.FadingVisible();
    panel.ensurePolished();
    EXPECT_LE(panel.minimumSizeHint().width(), 626);
    EXPECT_LE(panel.sizeHint().height(), 60);
}

}  // namespace
