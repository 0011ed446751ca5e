#include "export/SaveAsTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

/// The command given again while it runs. Nothing prevents it: the two share the editor and the name of the file.
class SaveAsTwice : public SaveAsTest
{
protected:
    const InSequence order;

    void expectBusy(const char* action)
    {
        EXPECT_CALL(editor, LastError).WillOnce(Return(-110));
        expectBox(action, MsgBox::Look::Critical);
    }
};

TEST_F(SaveAsTwice, IsRefusedByABusyEditorWhoseRunThenWritesTheLaterName)
{
    expectDialog("/out/first.mp3");
    expectMp3();
    expectLoad([this] { saveAs.RecordSoundTouch(); });

    expectDialog("/out/second.wav");
    expectWav();
    EXPECT_CALL(editor, LoadSound).WillOnce(Return(-110));
    expectBusy("File could not be loaded.\nThe sound editor is busy");
    expectRefusedEffects();
    EXPECT_CALL(editor, ExportToFile(44100, 2, 0, 0, -1, QString("/out/second.wav"))).WillOnce(Return(-110));
    expectBusy("Export to file failed.\nThe sound editor is busy");

    expectTempo(0);
    expectPitch(0);
    expectRate(0);
    expectExport("/out/second.wav");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsTwice, LeavesTheFirstRunItsFileWhenItIsCancelled)
{
    expectDialog("/out/first.mp3");
    expectMp3();
    expectLoad();
    expectTempo(0, [this] { saveAs.RecordSoundTouch(); });
    expectCancel();
    expectPitch(0);
    expectRate(0);
    expectExport("/out/first.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

// The job of the first run has ended by the time that the second file is chosen, so the editor is free.
TEST_F(SaveAsTwice, WaitsForTheSecondRunThatBeganBetweenTwoStepsOfTheFirst)
{
    expectDialog("/out/first.wav");
    expectWav();
    expectLoad();
    EXPECT_CALL(effects, ApplyTempo(0, -1, 0.F)).WillOnce([this] {
        QTimer::singleShot(0, &editor, [this] { saveAs.RecordSoundTouch(); });
        return 0;
    });

    FileDialogAnswer answer;
    answer.fileName = "/out/second.wav";
    EXPECT_CALL(dialog, ShowSave).WillOnce([this, answer] {
        emit editor.EffectDone(10, 0);
        return answer;
    });
    expectWav();
    expectRun("/out/second.wav");

    expectPitch(0);
    expectRate(0);
    expectExport("/out/second.wav");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

// The load of the first run ends while the second file is chosen, and the second load is refused.
TEST_F(SaveAsTwice, DoesNotTakeADoneEventFromTheFirstRun)
{
    expectDialog("/out/first.wav");
    expectWav();
    EXPECT_CALL(editor, LoadSound).WillOnce([this] {
        QTimer::singleShot(0, &editor, [this] { saveAs.RecordSoundTouch(); });
        return 0;
    });

    FileDialogAnswer answer;
    answer.fileName = "/out/second.wav";
    EXPECT_CALL(dialog, ShowSave).WillOnce([this, answer] {
        emit editor.LoadDone(0);
        return answer;
    });
    expectWav();
    EXPECT_CALL(editor, LoadSound).WillOnce(Return(-6));
    EXPECT_CALL(editor, LastError).WillOnce(Return(-6));
    expectBox("File could not be loaded.\nInvalid sound file", MsgBox::Look::Critical);
    expectRefusedEffects();
    EXPECT_CALL(editor, ExportToFile).WillOnce(Return(-111));
    EXPECT_CALL(editor, LastError).WillOnce(Return(-111));
    expectBox("Export to file failed.\nThe sound editor doesn't contain any sound", MsgBox::Look::Critical);

    expectTempo(0);
    expectPitch(0);
    expectRate(0);
    expectExport("/out/second.wav");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

}  // namespace
