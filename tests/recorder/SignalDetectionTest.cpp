#include "recorder/SilencePanelTest.h"

#include <QFile>

using ::testing::InSequence;

namespace {

/// Waiting for the first sound.
class SignalDetection : public SilenceOptions
{
};

TEST_F(SignalDetection, WaitsInAFileOfItsOwnWithTheClockStanding)
{
    waitForASignal();
    EXPECT_TRUE(isChecked("cmdDetect"));
    EXPECT_FALSE(isEnabled("chkSilenceActions"));
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(clockRuns());
}

TEST_F(SignalDetection, GoesOnWhereStopIsPressed)
{
    waitForASignal();
    session.cmdStop_Click();
    EXPECT_TRUE(isChecked("cmdDetect"));
    EXPECT_FALSE(isEnabled("chkSilenceActions"));
}

TEST_F(SignalDetection, BeginsTheRecordingWhenTheSignalComes)
{
    waitForASignal();
    now = now.addSecs(60);
    {
        const InSequence order;
        EXPECT_CALL(Recorder, EnableSilenceDetection(false));
        EXPECT_CALL(Recorder, StartRecordingToFile(QString("/music/Recording Mar-05-2007 14-04-30.mp3")))
            .WillOnce([this] {
                EXPECT_FALSE(isChecked("cmdDetect"));
                EXPECT_TRUE(isEnabled("chkSilenceActions"));
            });
    }
    emit Recorder.SoundDetected();
    EXPECT_TRUE(session.isRecording());
    EXPECT_TRUE(clockRuns());
    emit Recorder.SoundDetected();  // nothing waits any more
}

TEST_F(SignalDetection, KeepsTheFileOfTheWaitWhenTheSignalComes)
{
    QFile file(folder.filePath("wait.mp3"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    names.chosenFile = file.fileName();
    waitForASignal(file.fileName());
    EXPECT_CALL(Recorder, EnableSilenceDetection(false));
    EXPECT_CALL(Recorder, StartRecordingToFile(file.fileName()));
    emit Recorder.SoundDetected();
    EXPECT_TRUE(file.exists());
}

TEST_F(SignalDetection, GivenUpDeletesWhatWasRecordedMeanwhile)
{
    names.setOutputFolder(folder.path());
    QFile file(names.ComposeRecordingName());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    waitForASignal(file.fileName());
    now = now.addSecs(60);
    giveUp();
    EXPECT_FALSE(file.exists());
    EXPECT_TRUE(isEnabled("chkSilenceActions"));
    EXPECT_FALSE(isChecked("cmdDetect"));
    emit Recorder.SoundDetected();
}

TEST_F(SignalDetection, IsGivenUpAlsoWhereThereIsNoFileToDelete)
{
    waitForASignal("/music/Recording Mar-05-2007 14-03-30.mp3");
    giveUp();
}

TEST_F(SignalDetection, GivenUpDeletesAlsoAFileThatWasChosen)
{
    QFile file(folder.filePath("tape.mp3"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    names.chosenFile = file.fileName();
    waitForASignal(file.fileName());
    giveUp();
    EXPECT_FALSE(file.exists());
    EXPECT_EQ(names.chosenFile, folder.filePath("tape.mp3"));
}

TEST_F(SignalDetection, BeginsTheRecordingOnceMoreWhereRecordWasPressedMeanwhile)
{
    waitForASignal();
    record();
    EXPECT_TRUE(isChecked("cmdDetect"));
    EXPECT_TRUE(clockRuns());
    const InSequence order;
    EXPECT_CALL(Recorder, EnableSilenceDetection(false));
    EXPECT_CALL(Recorder, StartRecordingToFile(QString("/music/Recording Mar-05-2007 14-03-30.mp3")));
    emit Recorder.SoundDetected();
    EXPECT_FALSE(isChecked("cmdDetect"));
}

TEST_F(SignalDetection, BeginsNoRecordingDuringAReplay)
{
    waitForASignal();
    EXPECT_CALL(Recorder.sound, PlayRecordedSound());
    session.cmdPlay_Click();
    EXPECT_CALL(Recorder, EnableSilenceDetection(false));
    emit Recorder.SoundDetected();
    EXPECT_FALSE(session.isRecording());
    EXPECT_FALSE(isChecked("cmdDetect"));
}

}  // namespace
