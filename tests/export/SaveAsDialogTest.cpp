#include "export/SaveAsTest.h"

#include <QStandardPaths>

using ::testing::InSequence;
using ::testing::Return;

namespace {

class SaveAsDialog : public SaveAsTest
{
};

TEST_F(SaveAsDialog, IsNotShownWhileNoTrackIsCurrent)
{
    CurrentAudioPath.clear();
    expectBox("Please select file from playlist.", MsgBox::Look::Information);
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsDialog, StartsInTheRecordingsFolderAndOffersMp3First)
{
    FileDialogSetup setup;
    setup.fileName = "";
    setup.cancelIsError = true;
    setup.initialFolder =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/Larkspin Recordings/";
    setup.title = "Save audio as";
    setup.filter =
        "WAV files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|WMA files (*.wma)|*.wma|AAC files (*.aac)|*.aac|"
        "MP4 files (*.mp4)|*.mp4|Ogg Vorbis files (*.ogg)|*.ogg";
    setup.filterIndex = 2;
    setup.flags = 4;
    FileDialogAnswer cancel;
    cancel.error = 32755;
    EXPECT_CALL(dialog, ShowSave(setup)).WillOnce(Return(cancel));
    saveAs.RecordSoundTouch();
}

struct NoFileRow
{
    const char* name;
    int error;
    const char* fileName;
};

class SaveAsDialogWithoutAFile : public SaveAsTest, public ::testing::WithParamInterface<NoFileRow>
{
};

TEST_P(SaveAsDialogWithoutAFile, EndsTheCommandQuietlyAndIsShownAgainTheNextTime)
{
    const InSequence order;
    FileDialogAnswer answer;
    answer.error = GetParam().error;
    answer.fileName = GetParam().fileName;
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answer));
    saveAs.RecordSoundTouch();  // a strict editor is asked nothing
    EXPECT_EQ(lblWavExportStatus.text(), "");

    expectDialog("/out/take.wav");
    expectWav();
    expectRun("/out/take.wav");
    saveAs.RecordSoundTouch();
}

INSTANTIATE_TEST_SUITE_P(Answers, SaveAsDialogWithoutAFile,
                         ::testing::Values(NoFileRow{"Cancelled", 32755, ""},
                                           NoFileRow{"CancelledOverAName", 32755, "/out/other.mp3"},
                                           NoFileRow{"LeftEmpty", 0, ""}, NoFileRow{"Broken", 20477, ""}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SaveAsDialog, ThatFailsDoesNotWriteTheFileOfTheTimeBefore)
{
    const InSequence order;
    expectDialog("/out/take.wav");
    expectWav();
    expectRun("/out/take.wav");
    saveAs.RecordSoundTouch();

    FileDialogAnswer broken;
    broken.error = 20477;
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(broken));
    saveAs.RecordSoundTouch();
}

}  // namespace
