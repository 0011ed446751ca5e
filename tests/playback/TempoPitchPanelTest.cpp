#include "playback/TempoPitchPanel.h"

#include "playback/PanelTest.h"

#include <QCheckBox>
#include <QSignalSpy>
#include <QTest>

using ::testing::InSequence;
using ::testing::StrictMock;

namespace {

class TempoPitch : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    TempoPitchPanel panel{engine};

    /// Puts a slider where a test needs it, whatever engine calls that makes.
    void prepare(const char* slider, int value)
    {
        EXPECT_CALL(engine, ChangeTempo).Times(::testing::AnyNumber());
        EXPECT_CALL(engine, ChangeRate).Times(::testing::AnyNumber());
        EXPECT_CALL(engine, ChangePitchSemitones).Times(::testing::AnyNumber());
        EXPECT_CALL(engine, ChangePitchCents).Times(::testing::AnyNumber());
        put(panel, slider, value);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }
};

TEST_F(TempoPitch, StartsAtNeutralWithoutAnEngineCall)
{
    for (const char* slider : {"sldTempo", "sldSpeed", "sldPitchSemi", "sldPitchGrad"})
        EXPECT_EQ(valueOf(panel, slider), 0) << slider;
    EXPECT_EQ(textOf(panel, "lblTempo"), "100%");
    EXPECT_EQ(textOf(panel, "lblRate"), "100%");
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "0");
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0%");
    EXPECT_FALSE(control<QCheckBox>(panel, "chkApplySettings").isChecked());
    EXPECT_FALSE(panel.appliesToAllTracks());
}

TEST_F(TempoPitch, IsCaptioned)
{
    EXPECT_EQ(textOf(panel, "Label1"), "Tempo");
    EXPECT_EQ(textOf(panel, "Label2"), "Pitch semitones");
    EXPECT_EQ(textOf(panel, "Label3"), "Pitch gradual");
    EXPECT_EQ(textOf(panel, "Label4"), "Tempo pitch");
    EXPECT_EQ(control<QLabel>(panel, "Label2").toolTip(), "Click to calculate desired key");
    EXPECT_EQ(control<QCheckBox>(panel, "chkApplySettings").text(), "Apply settings to all list members");
}

struct SliderRow
{
    const char* name;
    int minimum;
    int maximum;
};

class EachSlider : public TempoPitch, public ::testing::WithParamInterface<SliderRow>
{
};

TEST_P(EachSlider, HasItsRange)
{
    const auto& slider = control<Slider>(panel, GetParam().name);
    EXPECT_EQ(slider.minimum(), GetParam().minimum);
    EXPECT_EQ(slider.maximum(), GetParam().maximum);
    EXPECT_EQ(slider.toolTip(), "");
}

INSTANTIATE_TEST_SUITE_P(Sliders, EachSlider,
                         ::testing::Values(SliderRow{"sldTempo", -60, 60}, SliderRow{"sldSpeed", -60, 60},
                                           SliderRow{"sldPitchSemi", -12, 12},
                                           SliderRow{"sldPitchGrad", -1200, 1200}),
                         [](const auto& info) { return std::string(info.param.name); });

struct StepRow
{
    const char* button;
    const char* slider;
    int step;
    int limit;
    const char* toolTip;
};

class EachStep : public TempoPitch, public ::testing::WithParamInterface<StepRow>
{
};

TEST_P(EachStep, MovesItsSlider)
{
    prepare(GetParam().slider, 0);
    EXPECT_CALL(engine, ChangeTempo).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangeRate).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangePitchSemitones).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangePitchCents).Times(::testing::AnyNumber());
    click(panel, GetParam().button);
    EXPECT_EQ(valueOf(panel, GetParam().slider), GetParam().step);
}

TEST_P(EachStep, ReachesTheEndOfItsSlider)
{
    prepare(GetParam().slider, GetParam().limit - GetParam().step);
    EXPECT_CALL(engine, ChangeTempo).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangeRate).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangePitchSemitones).Times(::testing::AnyNumber());
    EXPECT_CALL(engine, ChangePitchCents).Times(::testing::AnyNumber());
    click(panel, GetParam().button);
    EXPECT_EQ(valueOf(panel, GetParam().slider), GetParam().limit);
}

TEST_P(EachStep, PastTheEndOfTheSliderIsRefusedNotCut)
{
    const int oneTooFar = GetParam().limit - GetParam().step + (GetParam().step > 0 ? 1 : -1);
    prepare(GetParam().slider, oneTooFar);
    click(panel, GetParam().button);
    EXPECT_EQ(valueOf(panel, GetParam().slider), oneTooFar);
}

TEST_P(EachStep, HasItsToolTipAndANameForScreenReaders)
{
    EXPECT_EQ(control<QToolButton>(panel, GetParam().button).toolTip(), GetParam().toolTip);
    EXPECT_NE(control<QToolButton>(panel, GetParam().button).accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(Buttons, EachStep,
                         ::testing::Values(StepRow{"cmdTempo10Up", "sldTempo", 10, 60, "+1"},
                                           StepRow{"cmdTempo10Down", "sldTempo", -10, -60, "-1"},
                                           StepRow{"cmdTempo1Up", "sldTempo", 1, 60, "+0.1"},
                                           StepRow{"cmdTempo1Down", "sldTempo", -1, -60, "-0.1"},
                                           StepRow{"cmdRate10Up", "sldSpeed", 10, 60, "+1"},
                                           StepRow{"cmdRate10Down", "sldSpeed", -10, -60, "-1"},
                                           StepRow{"cmdRate1Up", "sldSpeed", 1, 60, "+0.1"},
                                           StepRow{"cmdRate1Down", "sldSpeed", -1, -60, "-0.1"},
                                           StepRow{"cmdPitch12UpSemi", "sldPitchSemi", 12, 12, "+12"},
                                           StepRow{"cmdPitch12DownSemi", "sldPitchSemi", -12, -12, "-12"},
                                           StepRow{"cmdPitch1UpSemi", "sldPitchSemi", 1, 12, "+1"},
                                           StepRow{"cmdPitch1DownSemi", "sldPitchSemi", -1, -12, "-1"},
                                           StepRow{"cmdPitch10UpGrad", "sldPitchGrad", 12, 1200, "+1"},
                                           StepRow{"cmdPitch10DownGrad", "sldPitchGrad", -12, -1200, "-1"},
                                           StepRow{"cmdPitch1UpGrad", "sldPitchGrad", 1, 1200, "+0.1"},
                                           StepRow{"cmdPitch1DownGrad", "sldPitchGrad", -1, -1200, "-0.1"}),
                         [](const auto& info) { return std::string(info.param.button); });

TEST_F(TempoPitch, SendsThePercentageOfTempoAndShowsWhatIsLeftOfTheOriginal)
{
    EXPECT_CALL(engine, ChangeTempo(0, -60.0F));
    put(panel, "sldTempo", -60);
    EXPECT_EQ(textOf(panel, "lblTempo"), "40%");
    EXPECT_CALL(engine, ChangeTempo(0, 60.0F));
    put(panel, "sldTempo", 60);
    EXPECT_EQ(textOf(panel, "lblTempo"), "160%");
}

TEST_F(TempoPitch, SendsThePercentageOfRateAndShowsWhatIsLeftOfTheOriginal)
{
    EXPECT_CALL(engine, ChangeRate(0, -25.0F));
    put(panel, "sldSpeed", -25);
    EXPECT_EQ(textOf(panel, "lblRate"), "75%");
    EXPECT_CALL(engine, ChangeRate(0, 60.0F));
    put(panel, "sldSpeed", 60);
    EXPECT_EQ(textOf(panel, "lblRate"), "160%");
}

TEST_F(TempoPitch, SendsSemitonesAndShowsThemPlain)
{
    EXPECT_CALL(engine, ChangePitchSemitones(0, 12));
    put(panel, "sldPitchSemi", 12);
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "12");
    EXPECT_CALL(engine, ChangePitchSemitones(0, -7));
    put(panel, "sldPitchSemi", -7);
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "-7");
}

struct GradualRow
{
    const char* name;
    int hundredths;
    float semitones;
    const char* text;
};

class GradualPitch : public TempoPitch, public ::testing::WithParamInterface<GradualRow>
{
};

TEST_P(GradualPitch, SendsSemitonesWithHundredthsAndShowsTwelfthsOfThem)
{
    EXPECT_CALL(engine, ChangePitchCents(0, GetParam().semitones));
    put(panel, "sldPitchGrad", GetParam().hundredths);
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, GradualPitch,
    ::testing::Values(GradualRow{"Top", 1200, 12.0F, "100.0%"}, GradualRow{"Bottom", -1200, -12.0F, "-100.0%"},
                      GradualRow{"OneAndAHalf", 150, 1.5F, "12.5%"}, GradualRow{"Twelve", 12, 0.12F, "1.0%"},
                      GradualRow{"One", 1, 0.01F, "0.1%"}, GradualRow{"MinusSix", -6, -0.06F, "-0.5%"},
                      GradualRow{"Seven", 7, 0.07F, "0.6%"}, GradualRow{"MinusOne", -1, -0.01F, "-0.1%"},
                      GradualRow{"Five", 5, 0.05F, "0.4%"}, GradualRow{"MinusFive", -5, -0.05F, "-0.4%"},
                      GradualRow{"QuarterRoundsUp", 3, 0.03F, "0.3%"},
                      GradualRow{"MinusQuarterRoundsDown", -3, -0.03F, "-0.3%"},
                      GradualRow{"ThreeQuarters", 9, 0.09F, "0.8%"},
                      GradualRow{"OneAndAQuarterRoundsUp", 15, 0.15F, "1.3%"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TempoPitch, ShowsGradualZeroWithAPlaceOnceTheSliderWasTouched)
{
    prepare("sldPitchGrad", 5);
    EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
    put(panel, "sldPitchGrad", 0);
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0.0%");
}

TEST_F(TempoPitch, MovingTheGradualSliderWhileSemitonesAreSetClearsBoth)
{
    prepare("sldPitchSemi", 3);
    {
        const InSequence order;
        EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
        EXPECT_CALL(engine, ChangePitchSemitones(0, 0));
        EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
    }
    click(panel, "cmdPitch1UpGrad");
    EXPECT_EQ(valueOf(panel, "sldPitchSemi"), 0);
    EXPECT_EQ(valueOf(panel, "sldPitchGrad"), 0);
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "0");
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0.0%");

    EXPECT_CALL(engine, ChangePitchCents(0, 0.01F));
    click(panel, "cmdPitch1UpGrad");
    EXPECT_EQ(valueOf(panel, "sldPitchGrad"), 1);
}

TEST_F(TempoPitch, MovingTheSemitonesWhileTheGradualSliderIsSetClearsBoth)
{
    prepare("sldPitchGrad", 150);
    {
        const InSequence order;
        EXPECT_CALL(engine, ChangePitchSemitones(0, 0));
        EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
        EXPECT_CALL(engine, ChangePitchSemitones(0, 0));
    }
    put(panel, "sldPitchSemi", -5);
    EXPECT_EQ(valueOf(panel, "sldPitchSemi"), 0);
    EXPECT_EQ(valueOf(panel, "sldPitchGrad"), 0);
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "0");
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0.0%");
}

TEST_F(TempoPitch, ResetsEachSliderByItsOwnButton)
{
    prepare("sldTempo", 10);
    EXPECT_CALL(engine, ChangeTempo(0, 0.0F));
    click(panel, "cmdTempoReset");
    EXPECT_EQ(textOf(panel, "lblTempo"), "100%");

    prepare("sldSpeed", 10);
    EXPECT_CALL(engine, ChangeRate(0, 0.0F));
    click(panel, "cmdRateReset");
    EXPECT_EQ(textOf(panel, "lblRate"), "100%");

    prepare("sldPitchSemi", 10);
    EXPECT_CALL(engine, ChangePitchSemitones(0, 0));
    click(panel, "cmdPitchResetSemi");
    EXPECT_EQ(textOf(panel, "lblPitchSemi"), "0");

    prepare("sldPitchGrad", 10);
    EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
    click(panel, "cmdPitchResetGrad");
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0.0%");
}

TEST_F(TempoPitch, ResetsNothingThatIsNeutralAlready)
{
    for (const char* button :
         {"cmdTempoReset", "cmdRateReset", "cmdPitchResetSemi", "cmdPitchResetGrad", "cmdResetAll"})
        click(panel, button);
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0%");
}

TEST_F(TempoPitch, ResetsAllInTheOrderGradualSemitonesRateTempo)
{
    prepare("sldTempo", 10);
    prepare("sldSpeed", -5);
    prepare("sldPitchGrad", 150);
    {
        const InSequence order;
        EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
        EXPECT_CALL(engine, ChangeRate(0, 0.0F));
        EXPECT_CALL(engine, ChangeTempo(0, 0.0F));
    }
    click(panel, "cmdResetAll");
}

TEST_F(TempoPitch, ResetsAllWithOnlySemitonesSetByOneCall)
{
    prepare("sldPitchSemi", 3);
    EXPECT_CALL(engine, ChangePitchSemitones(0, 0)).Times(1);
    click(panel, "cmdResetAll");
    EXPECT_EQ(textOf(panel, "lblPitchGrade"), "0%");
}

TEST_F(TempoPitch, ResetsForANewTrackInTheOrderTempoSemitonesGradualRate)
{
    prepare("sldTempo", 10);
    prepare("sldSpeed", -5);
    prepare("sldPitchSemi", 3);
    {
        const InSequence order;
        EXPECT_CALL(engine, ChangeTempo(0, 0.0F));
        EXPECT_CALL(engine, ChangePitchSemitones(0, 0));
        EXPECT_CALL(engine, ChangeRate(0, 0.0F));
    }
    panel.resetForTrack();
    EXPECT_EQ(textOf(panel, "lblTempo"), "100%");
}

TEST_F(TempoPitch, ResetsTheGradualPitchForANewTrackBetweenTempoAndRate)
{
    prepare("sldTempo", 10);
    prepare("sldSpeed", -5);
    prepare("sldPitchGrad", 150);
    {
        const InSequence order;
        EXPECT_CALL(engine, ChangeTempo(0, 0.0F));
        EXPECT_CALL(engine, ChangePitchCents(0, 0.0F));
        EXPECT_CALL(engine, ChangeRate(0, 0.0F));
    }
    panel.resetForTrack();
}

TEST_F(TempoPitch, TellsItsResetToolTips)
{
    for (const char* button : {"cmdTempoReset", "cmdRateReset", "cmdPitchResetSemi", "cmdPitchResetGrad"})
        EXPECT_EQ(control<QToolButton>(panel, button).toolTip(), "Reset") << button;
    EXPECT_EQ(control<QToolButton>(panel, "cmdResetAll").toolTip(), "Reset all");
}

TEST_F(TempoPitch, AsksForTheCalculatorsByButtonAndCaption)
{
    const QSignalSpy bpm(&panel, &TempoPitchPanel::bpmCalculatorWanted);
    const QSignalSpy key(&panel, &TempoPitchPanel::keyCalculatorWanted);
    EXPECT_EQ(control<QToolButton>(panel, "cmdBPMCalc").toolTip(), "Beats per minute calculator");
    EXPECT_EQ(control<QToolButton>(panel, "cmdKeyCalc").toolTip(), "Transpose calculator");
    click(panel, "cmdBPMCalc");
    EXPECT_EQ(bpm.size(), 1);
    EXPECT_EQ(key.size(), 0);
    click(panel, "cmdKeyCalc");
    EXPECT_EQ(key.size(), 1);
    QTest::mouseClick(&control<QLabel>(panel, "Label2"), Qt::LeftButton);
    EXPECT_EQ(key.size(), 2);
    EXPECT_EQ(bpm.size(), 1);
}

TEST_F(TempoPitch, AppliesToAllTracksWhenTheBoxIsChecked)
{
    control<QCheckBox>(panel, "chkApplySettings").click();
    EXPECT_TRUE(panel.appliesToAllTracks());
}

}  // namespace
