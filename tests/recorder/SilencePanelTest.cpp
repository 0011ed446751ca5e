#include "recorder/SilencePanelTest.h"

#include <QAccessible>

using ::testing::_;
using ::testing::InSequence;

namespace {

TEST_F(SilenceOptions, AreOffAtFirstWithSplittingAtTwoSecondsChosen)
{
    EXPECT_FALSE(isChecked("chkSilenceActions"));
    EXPECT_FALSE(isChecked("optRemoveSilence"));
    EXPECT_TRUE(isChecked("optSplitOnSilence"));
    EXPECT_EQ(pause(), "2 sec.");
    for (const char* name :
         {"optRemoveSilence", "optSplitOnSilence", "lblSilenceActions", "cmdSilenceTimeUp", "cmdSilenceTimeDown"})
        EXPECT_FALSE(isEnabled(name)) << name;
    EXPECT_TRUE(isEnabled("cmdDetect"));
    EXPECT_FALSE(isChecked("cmdDetect"));
    EXPECT_TRUE(isEnabled("chkSilenceActions"));
}

TEST_F(SilenceOptions, AreTitledAndCaptioned)
{
    EXPECT_EQ(control<QWidget>(panel, "Frame5").property("title").toString(), "Silence options");
    EXPECT_EQ(textOf(panel, "chkSilenceActions"), "Use silence options");
    EXPECT_EQ(textOf(panel, "optRemoveSilence"), "Remove silence");
    EXPECT_EQ(textOf(panel, "optSplitOnSilence"), "Start new recording on silence longer than");
    EXPECT_EQ(textOf(panel, "LabelDetectionLevel"), "Detection signal level :");
    EXPECT_EQ(textOf(panel, "cmdDetect"), "Detect signal");
}

struct SilenceToolTip
{
    const char* control;
    const char* toolTip;
};

class EachSilenceControl : public SilenceOptions, public ::testing::WithParamInterface<SilenceToolTip>
{
};

TEST_P(EachSilenceControl, HasItsToolTipAndANameForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(panel, GetParam().control).toolTip(), GetParam().toolTip);
    EXPECT_NE(control<QWidget>(panel, GetParam().control).accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Controls, EachSilenceControl,
    ::testing::Values(SilenceToolTip{"chkSilenceActions", ""},
                      SilenceToolTip{"optRemoveSilence",
                                     "Automatically remove silence when recording dictations, or "
                                     "audio that contains silence"},
                      SilenceToolTip{"optSplitOnSilence",
                                     "Automatically create several audio files when recording "
                                     "list of (protected) songs, LPs or MCs"},
                      SilenceToolTip{"cmdSilenceTimeUp", "Set silence interval"},
                      SilenceToolTip{"cmdSilenceTimeDown", "Set silence interval"},
                      SilenceToolTip{"sldDetectionLevel", "Adjust detection level sensitivity"},
                      SilenceToolTip{"cmdDetect", "Click to enable/disable signal detection"}),
    [](const auto& info) { return std::string(info.param.control); });

TEST_F(SilenceOptions, AreUsedForSplittingAtFirst)
{
    use();
    for (const char* name :
         {"optRemoveSilence", "optSplitOnSilence", "lblSilenceActions", "cmdSilenceTimeUp", "cmdSilenceTimeDown"})
        EXPECT_TRUE(isEnabled(name)) << name;
    EXPECT_FALSE(isEnabled("cmdDetect"));
}

TEST_F(SilenceOptions, AreNoLongerUsed)
{
    use();
    unuse();
    for (const char* name :
         {"optRemoveSilence", "optSplitOnSilence", "lblSilenceActions", "cmdSilenceTimeUp", "cmdSilenceTimeDown"})
        EXPECT_FALSE(isEnabled(name)) << name;
    EXPECT_TRUE(isEnabled("cmdDetect"));
}

TEST_F(SilenceOptions, AreUsedAsTheyWereChosenBefore)
{
    useToRemove();
    unuse();
    const InSequence order;
    expectWatch(3000, 0);
    click(panel, "chkSilenceActions");
}

TEST_F(SilenceOptions, WithNeitherOptionChosenWriteNothingWhenTheyAreUsed)
{
    auto& split = control<QAbstractButton>(panel, "optSplitOnSilence");
    split.setAutoExclusive(false);
    split.setChecked(false);
    click(panel, "chkSilenceActions");
    EXPECT_TRUE(isEnabled("optSplitOnSilence"));
    EXPECT_FALSE(isEnabled("cmdDetect"));
}

TEST_F(SilenceOptions, WriteEachSelectionOfAnOption)
{
    use();
    {
        const InSequence order;
        expectWatch(3000, 0);
        expectWatch(3000, 2000);
    }
    click(panel, "optRemoveSilence");
    click(panel, "optSplitOnSilence");
}

TEST_F(SilenceOptions, AreSelectedByAScreenReaderToo)
{
    use();
    expectWatch(3000, 0);
    QAccessible::queryAccessibleInterface(&control<QWidget>(panel, "optRemoveSilence"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
}

TEST_F(SilenceOptions, SplitAtPausesOfOneToNineSeconds)
{
    use();
    const InSequence order;
    for (int seconds = 3; seconds <= 9; ++seconds) {
        EXPECT_CALL(Recorder, SilenceMinimumDuration(seconds * 1000));
        click(panel, "cmdSilenceTimeUp");
        EXPECT_EQ(pause(), QString::number(seconds) + " sec.");
    }
    EXPECT_CALL(Recorder, SilenceMinimumDuration(9000));
    click(panel, "cmdSilenceTimeUp");
    EXPECT_EQ(pause(), "9 sec.");
    for (int seconds = 8; seconds >= 1; --seconds) {
        EXPECT_CALL(Recorder, SilenceMinimumDuration(seconds * 1000));
        click(panel, "cmdSilenceTimeDown");
    }
    EXPECT_CALL(Recorder, SilenceMinimumDuration(1000));
    click(panel, "cmdSilenceTimeDown");
    EXPECT_EQ(pause(), "1 sec.");
}

TEST_F(SilenceOptions, TakeThePauseFromItsLabelWhenSplittingIsSelected)
{
    use();
    EXPECT_CALL(Recorder, SilenceMinimumDuration(3000));
    click(panel, "cmdSilenceTimeUp");
    const InSequence order;
    expectWatch(3000, 3000);
    click(panel, "optSplitOnSilence");
}

// The engine then waits for the pause although silence is to be left out at once.
TEST_F(SilenceOptions, WriteThePauseAlsoWhereSilenceIsRemovedUntilAnOptionIsSelectedAgain)
{
    useToRemove();
    const InSequence order;
    EXPECT_CALL(Recorder, SilenceMinimumDuration(3000));
    click(panel, "cmdSilenceTimeUp");
    expectWatch(3000, 0);
    click(panel, "optRemoveSilence");
}

TEST_F(SilenceOptions, KeepTheirLevelInTheSettingsAtEachChange)
{
    auto& level = control<Slider>(panel, "sldDetectionLevel");
    EXPECT_EQ(level.value(), 3000);
    EXPECT_EQ(level.minimum(), 5);
    EXPECT_EQ(level.maximum(), 8000);
    EXPECT_CALL(Recorder, SilenceThreshold(120));
    level.setValue(120);
    EXPECT_EQ(stored(), "120");
    EXPECT_CALL(Recorder, SilenceThreshold(8000));
    level.setValue(9000);
    EXPECT_EQ(stored(), "8000");
    EXPECT_CALL(Recorder, SilenceThreshold(5));
    level.setValue(0);
    EXPECT_EQ(stored(), "5");
}

TEST_F(SilenceOptions, BeginWithTheLevelOfTheSettings)
{
    settings.SaveSetting("Options", "DetectionValue", "450");
    EXPECT_CALL(Recorder, SilenceThreshold(450));
    panel.readDetectionValue();
    EXPECT_EQ(control<Slider>(panel, "sldDetectionLevel").value(), 450);
}

TEST_F(SilenceOptions, BeginWithTheUsualLevelWithoutASettingAndTellTheEngineNothing)
{
    panel.readDetectionValue();
    EXPECT_EQ(control<Slider>(panel, "sldDetectionLevel").value(), 3000);
    EXPECT_EQ(stored(), "none");
}

TEST_F(SilenceOptions, UseTheLevelOfTheSlider)
{
    EXPECT_CALL(Recorder, SilenceThreshold(77));
    control<Slider>(panel, "sldDetectionLevel").setValue(77);
    const InSequence order;
    expectWatch(77, 2000);
    click(panel, "chkSilenceActions");
    expectWatch(77, 0);
    click(panel, "optRemoveSilence");
}

TEST_F(SilenceOptions, BeginANewFileAtAPause)
{
    use();
    record();
    for (int i = 0; i < 30; ++i)
        tick(session);
    now = now.addSecs(120);
    EXPECT_CALL(Recorder, ContinueRecordingToFile(QString("/music/Recording Mar-05-2007 14-05-30.mp3")));
    emit Recorder.SilenceDetected();
    EXPECT_TRUE(clockRuns());
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:14");
    emit Recorder.SoundDetected();
    EXPECT_TRUE(clockRuns());
}

TEST_F(SilenceOptions, NameEachPartAfterTheNameThatWasChosen)
{
    use();
    names.chosenFile = "/music/tape.mp3";
    record("/music/tape.mp3");
    EXPECT_CALL(Recorder, ContinueRecordingToFile(QString("/music/tape14-03-30.mp3")));
    emit Recorder.SilenceDetected();
    now = now.addSecs(3600);
    EXPECT_CALL(Recorder, ContinueRecordingToFile(QString("/music/tape15-03-30.mp3")));
    emit Recorder.SilenceDetected();
}

TEST_F(SilenceOptions, GiveTwoPartsWithinTenSecondsTheSameName)
{
    use();
    names.chosenFile = "/music/tape.mp3";
    record("/music/tape.mp3");
    now = QDateTime(now.date(), QTime(14, 3, 31));
    EXPECT_CALL(Recorder, ContinueRecordingToFile(QString("/music/tape14-03-30.mp3"))).Times(2);
    emit Recorder.SilenceDetected();
    now = now.addSecs(8);
    emit Recorder.SilenceDetected();
}

TEST_F(SilenceOptions, SplitWheneverTheEngineSaysSo)
{
    use();
    EXPECT_CALL(Recorder, ContinueRecordingToFile(_)).Times(1);
    emit Recorder.SilenceDetected();
    EXPECT_FALSE(clockRuns());
}

TEST_F(SilenceOptions, ThatAreNotUsedLetPausesPass)
{
    record();
    emit Recorder.SilenceDetected();
    EXPECT_TRUE(clockRuns());
    emit Recorder.SoundDetected();
}

TEST_F(SilenceOptions, StopTheClockWhileSilenceIsRemoved)
{
    useToRemove();
    record();
    tick(session);
    emit Recorder.SilenceDetected();
    EXPECT_FALSE(clockRuns());
    EXPECT_TRUE(session.isRecording());
    emit Recorder.SoundDetected();
    EXPECT_TRUE(clockRuns());
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:24");
}

TEST_F(SilenceOptions, UncheckedDuringARemovedPauseLeaveTheClockStandingUntilStop)
{
    useToRemove();
    record();
    tick(session);
    emit Recorder.SilenceDetected();
    unuse();
    emit Recorder.SoundDetected();
    EXPECT_FALSE(clockRuns());
    EXPECT_EQ(lblTime.text(), "00:00:14");
    stop();
    EXPECT_EQ(lblTime.text(), "00:00:00");
}

}  // namespace
