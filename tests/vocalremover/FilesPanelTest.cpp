#include "vocalremover/VocalRemoverTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

FileDialogSetup inputDialog()
{
    FileDialogSetup setup;
    setup.title = "Open audio";
    setup.maxFileSize = 32000;
    setup.flags = 0xC0200;
    setup.cancelIsError = false;
    setup.filter =
        "All supported audio formats|*.mp3;*.mp2;*.wav;*.ogg;*.cda;*.aiff;*.wma;*.wmv;*.asx;*.asf;*.m4a;*.mp4;"
        "*.flac;*.aac;*.ac3;*.wv|MP3 and MP2 sounds (*.mp3;*.mp2)|*.mp3;*.mp2|AAC and MP4 sounds (*.aac;*.mp4)|"
        "*.aac;*.mp4|WAV sounds (*.wav)|*.wav|OGG Vorbis sounds (*.ogg)|*.ogg|Audio CD tracks (*.cda)|*.cda|AIFF "
        "sounds (*.aiff)|*.aiff|Windows Media sounds (*.wma;*.wmv;*.asx;*.asf)|*.wma;*.wmv;*.asx;*.asf|AC3 sounds "
        "(*.ac3)|*.ac3|ALAC sounds (*.m4a)|*.m4a|FLAC sounds (*.flac)|*.flac|WavPack sounds (*.wv)|*.wv|";
    return setup;
}

FileDialogSetup outputDialog()
{
    FileDialogSetup setup;
    setup.title = "Save audio";
    setup.filterIndex = 2;
    setup.maxFileSize = 32000;
    setup.flags = 0xC0200;
    setup.cancelIsError = false;
    setup.filter =
        "WAV files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|WMA files (*.wma)|*.wma|AAC files (*.aac)|*.aac|MP4 files "
        "(*.mp4)|*.mp4|Ogg Vorbis files (*.ogg)|*.ogg|FLAC files (*.flac)|*.flac";
    return setup;
}

const char* const disabledAtFirst[] = {"cmdConvertPlayPreview",
                                       "cmdPlayOriginal",
                                       "cmdConvertStopPreview",
                                       "cmdPreviewDurationUp",
                                       "cmdPreviewDurationDown",
                                       "cmdProcess",
                                       "sldPreviewPosition",
                                       "lblPreviewPosition",
                                       "lblDurationCaption",
                                       "lblPreviewDuration",
                                       "lblSeconds"};

class FilesOfTheVocalRemover : public VocalRemoverWindow
{
protected:
    void choose(const QString& name, int loadResult = -6)
    {
        EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering(name)));
        EXPECT_CALL(*player, LoadSoundForExport(0, name)).WillOnce(Return(loadResult));
        click("cmdInput");
    }
};

TEST_F(FilesOfTheVocalRemover, AreNotChosenAtFirst)
{
    EXPECT_EQ(boxOf("txtInputAudio"), "choose input file");
    EXPECT_EQ(boxOf("txtOutputAudio"), "choose output file");
    for (const char* name : disabledAtFirst)
        EXPECT_FALSE(isEnabled(name)) << name;
    for (const char* name : {"cmdInput", "cmdOutput", "cmdHelp"})
        EXPECT_TRUE(isEnabled(name)) << name;
}

TEST_F(FilesOfTheVocalRemover, AreNamedAndTheSourceIsLoadedAndThePreviewSetUp)
{
    const InSequence order;
    EXPECT_CALL(dialog, ShowOpen(inputDialog())).WillOnce(Return(answering("/music/song.mp3")));
    expectMp3();
    EXPECT_CALL(*player, LoadSoundForExport(0, QString("/music/song.mp3"))).WillOnce([this] {
        EXPECT_EQ(boxOf("txtInputAudio"), "/music/song.mp3");
        EXPECT_EQ(boxOf("txtOutputAudio"), "/music/songNoVocal.mp3");
        for (const char* name : disabledAtFirst)
            EXPECT_TRUE(isEnabled(name)) << name;
        return 0;
    });
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
    EXPECT_CALL(*player, GetPosition(0)).WillOnce(Return(7000));
    click("cmdInput");
    EXPECT_EQ(valueOf("sldPreviewPosition"), 7);
}

TEST_F(FilesOfTheVocalRemover, StayAsTheyAreWhereTheOpenDialogIsCancelled)
{
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering("")));
    click("cmdInput");
    EXPECT_EQ(boxOf("txtInputAudio"), "choose input file");
    EXPECT_EQ(boxOf("txtOutputAudio"), "choose output file");
    EXPECT_FALSE(isEnabled("cmdProcess"));
}

TEST_F(FilesOfTheVocalRemover, AreNamedAlsoWhereThePlayerCannotReadTheSourceAndNothingIsSaid)
{
    expectMp3();
    choose("/music/notes.mp3", -6);
    EXPECT_EQ(boxOf("txtInputAudio"), "/music/notes.mp3");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/music/notesNoVocal.mp3");
    for (const char* name : disabledAtFirst)
        EXPECT_TRUE(isEnabled(name)) << name;
    EXPECT_EQ(valueOf("sldPreviewPosition"), 500);
}

TEST_F(FilesOfTheVocalRemover, MakeAWavOfAFlacByTheNamingRule)
{
    expectWav();
    choose("/music/song.flac");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/music/song.NoVocal.lac");
}

TEST_F(FilesOfTheVocalRemover, AreNotTestedAgainstTheFilterOfTheDialog)
{
    expectWav();
    choose("/music/letter.odt");
    EXPECT_EQ(boxOf("txtInputAudio"), "/music/letter.odt");
    EXPECT_TRUE(isEnabled("cmdProcess"));
}

TEST_F(FilesOfTheVocalRemover, AreNotDisabledAgainByAnotherDialogThatIsCancelled)
{
    expectMp3();
    choose("/music/song.mp3");
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering("")));
    click("cmdInput");
    EXPECT_EQ(boxOf("txtInputAudio"), "/music/song.mp3");
    for (const char* name : disabledAtFirst)
        EXPECT_TRUE(isEnabled(name)) << name;
}

TEST_F(FilesOfTheVocalRemover, TakeTheNamesOfSeveralPickedFilesAsTheyStandWhichIsNoSource)
{
    const QString first = makeSource("one.mp3");
    const QString second = makeSource("two.mp3");
    expectMp3();
    choose(home.recordings() + QChar::Null + "one.mp3" + QChar::Null + "two.mp3", -6);
    click("cmdProcess");
    click("cmdConvertPlayPreview");
}

TEST_F(FilesOfTheVocalRemover, HaveNoOutputWithoutASource)
{
    click("cmdOutput");
    EXPECT_EQ(boxOf("txtOutputAudio"), "choose output file");
}

TEST_F(FilesOfTheVocalRemover, HaveAnOutputOfTheNamingRuleToo)
{
    expectMp3();
    choose("/music/song.mp3");
    const InSequence order;
    EXPECT_CALL(dialog, ShowSave(outputDialog())).WillOnce(Return(answering("/out/mix.wav")));
    expectWav();
    click("cmdOutput");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/out/mixNoVocal.wav");
    EXPECT_EQ(boxOf("txtInputAudio"), "/music/song.mp3");
}

TEST_F(FilesOfTheVocalRemover, HaveAnOutputThatIsFlac)
{
    expectMp3();
    choose("/music/song.mp3");
    const InSequence order;
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answering("/out/mixflacflac")));
    EXPECT_CALL(formats, FormatForExport(1));  // the rule leaves "NoVocal.lac"
    EXPECT_CALL(formats.wav, Mode(1));
    click("cmdOutput");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/out/mixflacNoVocal.lac");
}

TEST_F(FilesOfTheVocalRemover, KeepTheOutputWhereTheSaveDialogIsCancelled)
{
    expectMp3();
    choose("/music/song.mp3");
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answering("")));
    click("cmdOutput");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/music/songNoVocal.mp3");
}

TEST_F(FilesOfTheVocalRemover, HaveAnOutputAsSoonAsAnyOtherTextIsTypedForTheSource)
{
    control<QLineEdit>(*window, "txtInputAudio").setText("choose input fil");
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answering("/out/mix.mp3")));
    expectMp3();
    click("cmdOutput");
    EXPECT_EQ(boxOf("txtOutputAudio"), "/out/mixNoVocal.mp3");
}

}  // namespace
