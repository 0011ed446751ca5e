#include "recorder/RecordingSession.h"

#include "recorder/AudioFormatPanel.h"
#include "recorder/RecorderTest.h"
#include "recorder/RecordingNames.h"
#include "support/controls/ReadOut.h"

using ::testing::InSequence;

namespace {

class Sessions : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Recorder.unwatched([this] { format.FillCodecCombo(); });
        names.chosenFile = "/tape.mp3";
    }

    void startRecording()
    {
        EXPECT_CALL(Recorder, StartRecordingToFile(QString("/tape.mp3")));
        session.cmdRecord_Click();
    }

    void startReplay()
    {
        EXPECT_CALL(Recorder.sound, PlayRecordedSound());
        session.cmdPlay_Click();
    }

    void tickTimes(int times)
    {
        for (int i = 0; i < times; ++i)
            tick(session);
    }

    bool clockRuns() const { return timerOf(session).isActive(); }

    StrictRecorder Recorder;
    AudioFormatPanel format{Recorder};
    QDateTime now{QDate(2007, 3, 5), QTime(14, 3, 37)};
    RecordingNames names{format, [this] { return now; }};
    ReadOut lblTime;
    double random = 0.5;  // the digit 4
    RecordingSession session{Recorder, names, lblTime, [this] { return random; }};
};

TEST_F(Sessions, BeginIdleWithAClockOfTenthsOfASecondThatStands)
{
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(clockRuns());
    EXPECT_EQ(timerOf(session).interval(), 100);
}

TEST_F(Sessions, RecordWithOneCallAndRunTheClock)
{
    startRecording();
    EXPECT_TRUE(session.isRecording());
    EXPECT_TRUE(clockRuns());
}

TEST_F(Sessions, StopARecording)
{
    startRecording();
    tickTimes(12);
    EXPECT_CALL(Recorder, StopRecording());
    session.cmdStop_Click();
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(clockRuns());
    EXPECT_EQ(lblTime.text(), "00:00:00");
    startRecording();
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:14");
}

TEST_F(Sessions, BeginTheNextFileWhereRecordIsPressedDuringARecording)
{
    startRecording();
    tickTimes(7);
    names.chosenFile.clear();
    names.setOutputFolder("/music");
    EXPECT_CALL(Recorder, StartRecordingToFile(QString("/music/Recording Mar-05-2007 14-03-30.mp3")));
    session.cmdRecord_Click();
    EXPECT_TRUE(clockRuns());
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:84");
    EXPECT_CALL(Recorder, StopRecording()).Times(1);
    session.cmdStop_Click();
    session.cmdStop_Click();
}

TEST_F(Sessions, ReplayWithOneCallAndRunTheClock)
{
    startReplay();
    EXPECT_FALSE(session.isRecording());
    EXPECT_TRUE(clockRuns());
}

TEST_F(Sessions, StopAReplay)
{
    startReplay();
    tickTimes(5);
    EXPECT_EQ(lblTime.text(), "00:00:54");
    EXPECT_CALL(Recorder.sound, StopRecordedSound());
    session.cmdStop_Click();
    EXPECT_FALSE(clockRuns());
    EXPECT_EQ(lblTime.text(), "00:00:00");
    startRecording();
    EXPECT_TRUE(session.isRecording());
}

TEST_F(Sessions, ReplayAgainWherePlayIsPressedDuringAReplay)
{
    startReplay();
    startReplay();
    EXPECT_CALL(Recorder.sound, StopRecordedSound()).Times(1);
    session.cmdStop_Click();
    session.cmdStop_Click();
}

TEST_F(Sessions, NeitherRecordDuringAReplayNorReplayDuringARecording)
{
    startReplay();
    session.cmdRecord_Click();
    EXPECT_FALSE(session.isRecording());
    EXPECT_CALL(Recorder.sound, StopRecordedSound());
    session.cmdStop_Click();

    startRecording();
    session.cmdPlay_Click();
    EXPECT_CALL(Recorder, StopRecording());
    session.cmdStop_Click();
}

TEST_F(Sessions, KeepTheirDisplayAndTheirCountWhereStopIsPressedAndNothingRuns)
{
    session.runClock();
    tickTimes(3);
    session.cmdStop_Click();
    EXPECT_EQ(lblTime.text(), "00:00:34");
    EXPECT_TRUE(clockRuns());
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:44");
}

TEST_F(Sessions, EndWithTheEnginesActivity)
{
    startReplay();
    EXPECT_CALL(Recorder.sound, StopRecordedSound());
    emit Recorder.RecorderSessionDone();
    EXPECT_FALSE(clockRuns());

    startRecording();
    EXPECT_CALL(Recorder, StopRecording());
    emit Recorder.RecorderSessionDone();
    EXPECT_FALSE(session.isRecording());

    emit Recorder.RecorderSessionDone();
    emit Recorder.RecorderEvent38(1);
}

TEST_F(Sessions, CountTheirTicks)
{
    startRecording();
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:14");
    tickTimes(833);
    EXPECT_EQ(lblTime.text(), "01:23:44");
}

TEST_F(Sessions, CountPastNinetyNineMinutesWithThreeDigits)
{
    startRecording();
    tickTimes(99 * 600 + 599);
    EXPECT_EQ(lblTime.text(), "99:59:94");
    tick(session);
    EXPECT_EQ(lblTime.text(), "100:00:04");
}

TEST_F(Sessions, ShowALastDigitFromZeroToEightThatIsDrawnAnewAtEachTick)
{
    startRecording();
    random = 0.0;
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:10");
    random = 0.9999999;
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:28");
    random = 1.0 / 9 + 1e-9;
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:31");
}

TEST_F(Sessions, GoOnInTheNextPartAndCountItFromZero)
{
    startRecording();
    tickTimes(50);
    EXPECT_CALL(Recorder, ContinueRecordingToFile(QString("/tape14-03-30.mp3")));
    session.startNextPart();
    EXPECT_TRUE(session.isRecording());
    EXPECT_TRUE(clockRuns());
    tick(session);
    EXPECT_EQ(lblTime.text(), "00:00:14");
}

}  // namespace
