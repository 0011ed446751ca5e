#include "playback/PositionPanel.h"

#include "playback/PanelTest.h"
#include "playback/PlaybackState.h"
#include "support/controls/ReadOut.h"

#include <QTest>

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class Position : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    PlaybackState state;
    PositionPanel panel{engine, state};

    bool timerRuns() const { return control<QTimer>(panel, "tmrPosition").isActive(); }
    int maximumOf(const char* slider) const { return control<Slider>(panel, slider).maximum(); }
    QString begin() const { return control<QLineEdit>(panel, "txtBeginLoop").text(); }
    QString end() const { return control<QLineEdit>(panel, "txtEndLoop").text(); }

    void type(const char* box, const QString& text) const { control<QLineEdit>(panel, box).setText(text); }

    void setWindow(int beginSeconds, const QString& beginText, int endSeconds, const QString& endText) const
    {
        put(panel, "sldBeginLoop", beginSeconds);
        type("txtBeginLoop", beginText);
        put(panel, "sldEndLoop", endSeconds);
        type("txtEndLoop", endText);
    }
};

TEST_F(Position, StartsWithItsDesignValues)
{
    for (const char* slider : {"sldAudioPosition", "sldBeginLoop", "sldEndLoop"}) {
        EXPECT_EQ(control<Slider>(panel, slider).minimum(), 0) << slider;
        EXPECT_EQ(maximumOf(slider), 1000) << slider;
        EXPECT_EQ(valueOf(panel, slider), 500) << slider;
        EXPECT_NE(panel.findChild<TimeSlider*>(slider), nullptr) << slider;
    }
    EXPECT_EQ(begin(), "000");
    EXPECT_EQ(end(), "000");
    EXPECT_EQ(textOf(panel, "lblTime"), "00:00:00");
    EXPECT_EQ(control<QTimer>(panel, "tmrPosition").interval(), 30);
    EXPECT_FALSE(timerRuns());
}

TEST_F(Position, TellsTheTimeThatItShows)
{
    EXPECT_EQ(panel.timeText(), "00:00:00");
    control<ReadOut>(panel, "lblTime").setText("01:02:30");
    EXPECT_EQ(panel.timeText(), "01:02:30");
}

TEST_F(Position, IsCaptioned)
{
    QStringList captions;
    for (const QLabel* label : panel.findChildren<QLabel*>())
        captions << label->text();
    EXPECT_TRUE(captions.contains("Audio position :"));
    EXPECT_TRUE(captions.contains("Begin loop position :"));
    EXPECT_TRUE(captions.contains("End loop position :"));
}

struct DurationRow
{
    const char* name;
    int milliseconds;
    int seconds;
};

class EachDuration : public Position, public ::testing::WithParamInterface<DurationRow>
{
};

TEST_P(EachDuration, SpansTheSlidersInWholeSeconds)
{
    {
        const InSequence order;
        EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(GetParam().milliseconds));
        EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
    }
    panel.prepareForSound();
    EXPECT_EQ(maximumOf("sldAudioPosition"), GetParam().seconds);
    EXPECT_EQ(maximumOf("sldBeginLoop"), GetParam().seconds);
    EXPECT_EQ(maximumOf("sldEndLoop"), GetParam().seconds);
    EXPECT_EQ(valueOf(panel, "sldAudioPosition"), 0);
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 0);
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), GetParam().seconds);
    EXPECT_TRUE(timerRuns());
}

INSTANTIATE_TEST_SUITE_P(Durations, EachDuration,
                         ::testing::Values(DurationRow{"499ms", 499, 0}, DurationRow{"500ms", 500, 0},
                                           DurationRow{"501ms", 501, 1}, DurationRow{"1500ms", 1500, 2},
                                           DurationRow{"2500ms", 2500, 2}, DurationRow{"3500ms", 3500, 4},
                                           DurationRow{"4500ms", 4500, 4}, DurationRow{"TenMinutes", 600000, 600},
                                           DurationRow{"LongestPosition", 2147483647, 2147484}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Position, KeepsTheSpanOfASoundWithoutALength)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(0));
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
    panel.prepareForSound();
    EXPECT_EQ(maximumOf("sldAudioPosition"), 1000);
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 1000);
    EXPECT_TRUE(timerRuns());
}

TEST_F(Position, RoundsThePositionOfANewSound)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(10000));
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(3500));
    panel.prepareForSound();
    EXPECT_EQ(valueOf(panel, "sldAudioPosition"), 4);
}

TEST_F(Position, KeepsTheThousandthsForANewSound)
{
    type("txtBeginLoop", "250");
    type("txtEndLoop", "x");
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(10000));
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
    panel.prepareForSound();
    EXPECT_EQ(begin(), "250");
    EXPECT_EQ(end(), "x");
}

TEST_F(Position, CentresItsSlidersWithoutASound)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(9000));
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
    panel.prepareForSound();
    panel.resetDisplay();
    EXPECT_FALSE(timerRuns());
    for (const char* slider : {"sldAudioPosition", "sldBeginLoop", "sldEndLoop"})
        EXPECT_EQ(valueOf(panel, slider), 4) << slider;
}

TEST_F(Position, TicksByAskingPositionStatusAndPositionAgain)
{
    {
        const InSequence order;
        EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(61999));
        EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(1));
        EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(62005));
    }
    fire(panel, "tmrPosition");
    EXPECT_EQ(valueOf(panel, "sldAudioPosition"), 61);
    EXPECT_EQ(textOf(panel, "lblTime"), "01:02:00");
}

class StatusOtherThanStopped : public Position, public ::testing::WithParamInterface<int>
{
};

TEST_P(StatusOtherThanStopped, IsLeftAloneByTheTick)
{
    state.PlayLoopActive = true;
    EXPECT_CALL(engine, GetPosition(0)).Times(2).WillRepeatedly(Return(0));
    EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(GetParam()));
    fire(panel, "tmrPosition");
}

INSTANTIATE_TEST_SUITE_P(Statuses, StatusOtherThanStopped, ::testing::Values(0, 1, 2, 4, -1));

TEST_F(Position, StopsASoundThatCameToItsEndAtEachTick)
{
    for (int tick = 0; tick < 2; ++tick) {
        {
            const InSequence order;
            EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(tick == 0 ? 8000 : 0));
            EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(3));
            EXPECT_CALL(engine, StopSound(0));
            EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
        }
        fire(panel, "tmrPosition");
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }
    EXPECT_EQ(valueOf(panel, "sldAudioPosition"), 0);
    EXPECT_EQ(textOf(panel, "lblTime"), "00:00:00");
}

TEST_F(Position, HoldsAStoppedLoopAtTheWholeSecondOfItsBegin)
{
    setWindow(42, "250", 50, "000");
    state.PlayLoopActive = true;
    {
        const InSequence order;
        EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
        EXPECT_CALL(engine, GetPlayerStatus(0)).WillOnce(Return(3));
        EXPECT_CALL(engine, StopSound(0));
        EXPECT_CALL(engine, SeekSound(0, 42000));
        EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(42000));
    }
    fire(panel, "tmrPosition");
    EXPECT_EQ(textOf(panel, "lblTime"), "00:42:00");
}

TEST_F(Position, IsMovedByHandOnlyWhenTheButtonIsLetGo)
{
    auto& slider = control<TimeSlider>(panel, "sldAudioPosition");
    slider.resize(300, 24);
    control<QTimer>(panel, "tmrPosition").start();
    QTest::mousePress(&slider, Qt::LeftButton, {}, {299, 12});
    EXPECT_FALSE(timerRuns());
    EXPECT_EQ(slider.value(), 1000);

    EXPECT_CALL(engine, SeekSound(0, 1000000));
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {299, 12});
    EXPECT_TRUE(timerRuns());
}

TEST_F(Position, IsMovedByTheKeyboardWhileASoundPlays)
{
    control<QTimer>(panel, "tmrPosition").start();
    auto& slider = control<TimeSlider>(panel, "sldAudioPosition");
    EXPECT_CALL(engine, SeekSound(0, 505000));
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_TRUE(timerRuns());
}

TEST_F(Position, CannotBeMovedBeyondTheLastPositionThereIs)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(2147483647));
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(0));
    panel.prepareForSound();
    put(panel, "sldAudioPosition", 2147484);
    EXPECT_CALL(engine, SeekSound(0, 2147483647));
    emit control<TimeSlider>(panel, "sldAudioPosition").MouseUp();
    EXPECT_EQ(panel.loopEnd(), 2147483647);
}

TEST_F(Position, StartsTheTimerAfterAMoveByHandEvenWithoutASound)
{
    auto& slider = control<TimeSlider>(panel, "sldAudioPosition");
    EXPECT_CALL(engine, SeekSound(0, 500000));
    emit slider.MouseDown();
    emit slider.MouseUp();
    EXPECT_TRUE(timerRuns());
}

TEST_F(Position, CannotBeMovedByHandInALoop)
{
    state.PlayLoopActive = true;
    auto& slider = control<TimeSlider>(panel, "sldAudioPosition");
    emit slider.MouseDown();
    slider.setValue(900);
    EXPECT_CALL(engine, GetPosition(0)).WillOnce(Return(12999));
    emit slider.MouseUp();
    EXPECT_EQ(slider.value(), 12);
    EXPECT_TRUE(timerRuns());
}

TEST_F(Position, AsksNothingOfTheEngineWhenTheWindowIsChangedOutsideALoop)
{
    setWindow(10, "250", 20, "500");
    click(panel, "cmdBeginLoopUp");
    click(panel, "cmdEndLoopDown");
    panel.cmdLoopWindowForward_Click();
    panel.cmdLoopWindowBack_Click();
}

TEST_F(Position, RestartsARunningLoopOnEachChangeOfItsWindow)
{
    setWindow(10, "250", 20, "500");
    state.PlayLoopActive = true;
    EXPECT_CALL(engine, PlaySoundRange(0, 11250, 20500, -1));
    put(panel, "sldBeginLoop", 11);
    EXPECT_CALL(engine, PlaySoundRange(0, 11250, 21500, -1));
    put(panel, "sldEndLoop", 21);
    put(panel, "sldEndLoop", 21);
}

TEST_F(Position, DoesNotRestartARunningLoopWhenItsThousandthsAreTyped)
{
    setWindow(10, "250", 20, "500");
    state.PlayLoopActive = true;
    type("txtBeginLoop", "300");
    type("txtEndLoop", "600");
}

struct RangeRow
{
    const char* name;
    int beginSeconds;
    const char* beginText;
    int endSeconds;
    const char* endText;
    int begin;
    int end;
};

class EachWindow : public Position, public ::testing::WithParamInterface<RangeRow>
{
};

TEST_P(EachWindow, IsPlayedFromItsSecondsAndThousandths)
{
    const RangeRow& row = GetParam();
    setWindow(row.beginSeconds, row.beginText, row.endSeconds, row.endText);
    EXPECT_CALL(engine, PlaySoundRange(0, row.begin, row.end, -1));
    panel.playLoopWindow();
}

INSTANTIATE_TEST_SUITE_P(
    Windows, EachWindow,
    ::testing::Values(RangeRow{"Plain", 10, "250", 20, "500", 10250, 20500},
                      RangeRow{"ThousandthsAboveASecondAreAdded", 10, "1500", 20, "000", 11500, 20000},
                      RangeRow{"TextThatIsNoNumberCountsAsNone", 10, "abc", 20, "", 10000, 20000},
                      RangeRow{"LeadingDigitsCount", 10, "12ab", 20, "7.9", 10012, 20007},
                      RangeRow{"ReversedIsPassedOn", 20, "000", 10, "000", 20000, 10000},
                      RangeRow{"EmptyIsPassedOn", 5, "000", 5, "000", 5000, 5000},
                      RangeRow{"HugeTextStaysAPosition", 10, "99999999999", 20, "000", 2147483647, 20000}),
    [](const auto& info) { return std::string(info.param.name); });

struct NudgeRow
{
    const char* name;
    const char* button;
    const char* slider;
    const char* box;
    int secondsBefore;
    const char* textBefore;
    int secondsAfter;
    const char* textAfter;
    int restarts;
};

class EachNudge : public Position, public ::testing::WithParamInterface<NudgeRow>
{
};

TEST_P(EachNudge, CountsLikeATwoPlaceCounterAndRestartsARunningLoop)
{
    const NudgeRow& row = GetParam();
    put(panel, row.slider, row.secondsBefore);
    type(row.box, row.textBefore);
    state.PlayLoopActive = true;
    EXPECT_CALL(engine, PlaySoundRange).Times(row.restarts);
    click(panel, row.button);
    EXPECT_EQ(valueOf(panel, row.slider), row.secondsAfter);
    EXPECT_EQ(control<QLineEdit>(panel, row.box).text(), row.textAfter);
}

// A carry restarts twice: by the slider's own change and by the nudge.
INSTANTIATE_TEST_SUITE_P(
    Nudges, EachNudge,
    ::testing::Values(
        NudgeRow{"BeginDown", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 10, "250", 10, "249", 1},
        NudgeRow{"BeginDownToNought", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 10, "001", 10, "000", 1},
        NudgeRow{"BeginDownCarries", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 10, "000", 9, "999", 2},
        NudgeRow{"BeginDownAtTheStart", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 0, "000", 0, "000", 1},
        NudgeRow{"BeginDownOfNoNumber", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 10, "abc", 9, "999", 2},
        NudgeRow{"BeginDownOfNoNumberAtTheStart", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 0, "abc", 0,
                 "abc", 1},
        NudgeRow{"BeginDownAboveASecond", "cmdBeginLoopDown", "sldBeginLoop", "txtBeginLoop", 10, "1500", 10,
                 "1499", 1},
        NudgeRow{"BeginUp", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 10, "007", 10, "008", 1},
        NudgeRow{"BeginUpTo999", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 10, "998", 10, "999", 1},
        NudgeRow{"BeginUpCarries", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 9, "999", 10, "000", 2},
        NudgeRow{"BeginUpCarriesAboveASecond", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 9, "1500", 10,
                 "000", 2},
        NudgeRow{"BeginUpAtTheTopOfTheSlider", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 1000, "000", 1000,
                 "001", 1},
        NudgeRow{"BeginUpAtTheVeryEnd", "cmdBeginLoopUp", "sldBeginLoop", "txtBeginLoop", 1000, "999", 1000, "999",
                 1},
        NudgeRow{"EndDown", "cmdEndLoopDown", "sldEndLoop", "txtEndLoop", 10, "250", 10, "249", 1},
        NudgeRow{"EndDownCarries", "cmdEndLoopDown", "sldEndLoop", "txtEndLoop", 10, "000", 9, "999", 2},
        NudgeRow{"EndDownAtTheStart", "cmdEndLoopDown", "sldEndLoop", "txtEndLoop", 0, "000", 0, "000", 1},
        NudgeRow{"EndUp", "cmdEndLoopUp", "sldEndLoop", "txtEndLoop", 10, "250", 10, "251", 1},
        NudgeRow{"EndUpCarries", "cmdEndLoopUp", "sldEndLoop", "txtEndLoop", 999, "999", 1000, "000", 2},
        NudgeRow{"EndUpAtTheTopOfTheSlider", "cmdEndLoopUp", "sldEndLoop", "txtEndLoop", 1000, "000", 1000, "000",
                 1},
        NudgeRow{"EndUpAtTheTopWithThousandths", "cmdEndLoopUp", "sldEndLoop", "txtEndLoop", 1000, "500", 1000,
                 "500", 1},
        NudgeRow{"EndUpAtTheVeryEnd", "cmdEndLoopUp", "sldEndLoop", "txtEndLoop", 1000, "999", 1000, "999", 1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Position, NudgesBackToWhereItCameFrom)
{
    setWindow(10, "000", 20, "000");
    click(panel, "cmdBeginLoopDown");
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 9);
    EXPECT_EQ(begin(), "999");
    click(panel, "cmdBeginLoopUp");
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 10);
    EXPECT_EQ(begin(), "000");
}

TEST_F(Position, PutsTheThousandthsOfACarryBeforeTheSliderMoves)
{
    setWindow(10, "000", 20, "000");
    state.PlayLoopActive = true;
    EXPECT_CALL(engine, PlaySoundRange(0, 9999, 20000, -1)).Times(2);
    click(panel, "cmdBeginLoopDown");
}

TEST_F(Position, MovesTheLoopWindowBySecondsEndFirst)
{
    setWindow(10, "250", 20, "500");
    state.PlayLoopActive = true;
    {
        const InSequence order;
        EXPECT_CALL(engine, PlaySoundRange(0, 10250, 21500, -1));
        EXPECT_CALL(engine, PlaySoundRange(0, 11250, 21500, -1));
    }
    panel.cmdLoopWindowForward_Click();
    {
        const InSequence order;
        EXPECT_CALL(engine, PlaySoundRange(0, 11250, 20500, -1));
        EXPECT_CALL(engine, PlaySoundRange(0, 10250, 20500, -1));
    }
    panel.cmdLoopWindowBack_Click();
    EXPECT_EQ(begin(), "250");
    EXPECT_EQ(end(), "500");
}

TEST_F(Position, MovesTheLoopWindowNoFurtherThanTheEndOfTheSound)
{
    setWindow(10, "000", 999, "000");
    panel.cmdLoopWindowForward_Click();
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 1000);
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 11);
    panel.cmdLoopWindowForward_Click();
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 1000);
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 11);
}

TEST_F(Position, MovesTheLoopWindowNoFurtherThanTheStartOfTheSound)
{
    setWindow(1, "000", 20, "000");
    panel.cmdLoopWindowBack_Click();
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 0);
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 19);
    panel.cmdLoopWindowBack_Click();
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 0);
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 19);
}

TEST_F(Position, LetsTheBeginStandBehindTheEnd)
{
    setWindow(30, "000", 20, "000");
    EXPECT_EQ(valueOf(panel, "sldBeginLoop"), 30);
    EXPECT_EQ(valueOf(panel, "sldEndLoop"), 20);
}

}  // namespace
