#include "playback/LevelPanel.h"

#include "playback/PanelTest.h"

#include <QApplication>
#include <QTest>

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

struct LevelSliderRow
{
    const char* name;
    int minimum;
    int maximum;
    int value;
};

class EachLevel : public Level, public ::testing::WithParamInterface<LevelSliderRow>
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
                         ::testing::Values(LevelSliderRow{"sldGain", 0, 100, 100},
                                           LevelSliderRow{"sldBalance", -50, 50, 0},
                                           LevelSliderRow{"sldVolume", 0, 65535, 32768}),
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
