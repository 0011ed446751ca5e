#include "export/SaveAsTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

class SaveAsSteps : public SaveAsTest
{
protected:
    const InSequence order;

    void expectDialogAndFormat()
    {
        expectDialog("/out/take.mp3");
        expectMp3();
    }
};

TEST_F(SaveAsSteps, AreAllTakenInTheirOrderThoughNoSliderIsMoved)
{
    expectDialogAndFormat();
    expectLoad();
    expectTempo(0);
    expectPitch(0);
    expectRate(0);
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, TakeTheValuesOfTheSliders)
{
    sldTempo.setValue(-20);
    sldPitchSemi.setValue(-3);
    sldSpeed.setValue(60);
    expectDialogAndFormat();
    expectLoad();
    expectTempo(-20);
    expectPitch(-3);
    expectRate(60);
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

struct PitchRow
{
    const char* name;
    int semitones;
    int hundredths;
    float pitch;
};

class SaveAsPitch : public SaveAsTest, public ::testing::WithParamInterface<PitchRow>
{
};

TEST_P(SaveAsPitch, ComesFromTheSliderThatIsNotZero)
{
    const InSequence order;
    sldPitchSemi.setValue(GetParam().semitones);
    sldPitchGrad.setValue(GetParam().hundredths);
    expectDialog("/out/take.mp3");
    expectMp3();
    expectLoad();
    expectTempo(0);
    expectPitch(GetParam().pitch);
    expectRate(0);
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

INSTANTIATE_TEST_SUITE_P(
    Sliders, SaveAsPitch,
    ::testing::Values(PitchRow{"SemitonesDown", -3, 0, -3.F}, PitchRow{"OctaveUp", 12, 0, 12.F},
                      PitchRow{"HundredthsUp", 0, 150, 1.5F}, PitchRow{"OneHundredth", 0, 1, 0.01F},
                      PitchRow{"HundredthsDown", 0, -1200, -12.F}, PitchRow{"BothCancelEachOther", 2, 150, 0.F}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SaveAsSteps, ReadEachSliderWhenTheyBegin)
{
    sldTempo.setValue(-10);
    expectDialogAndFormat();
    expectLoad([this] { sldTempo.setValue(-20); });
    expectTempo(-20, [this] {
        sldTempo.setValue(50);
        sldPitchSemi.setValue(2);
        sldSpeed.setValue(7);
    });
    expectPitch(2, [this] {
        sldPitchSemi.setValue(5);
        sldSpeed.setValue(8);
    });
    expectRate(8, [this] { sldSpeed.setValue(-60); });
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, LoadTheTrackThatIsCurrentWhenTheFileIsChosen)
{
    CurrentAudioPath = "/music/another.mp3";
    FileDialogAnswer answer;
    answer.fileName = "/out/take.mp3";
    EXPECT_CALL(dialog, ShowSave).WillOnce([this, answer] {
        CurrentAudioPath = "/music/song.flac";
        return answer;
    });
    expectMp3();
    expectRun("/out/take.mp3");
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, AreTakenAnewEachTime)
{
    for (int i = 0; i < 2; ++i) {
        expectDialogAndFormat();
        expectRun("/out/take.mp3");
        saveAs.RecordSoundTouch();
    }
}

TEST_F(SaveAsSteps, GoOnWithTheEffectsAfterATrackThatCannotBeLoaded)
{
    expectDialogAndFormat();
    EXPECT_CALL(editor, LoadSound(QString("/music/song.flac"))).WillOnce(Return(-6));
    EXPECT_CALL(editor, LastError).WillOnce(Return(-6));
    expectBox("File could not be loaded.\nInvalid sound file", MsgBox::Look::Critical);
    expectRefusedEffects();
    EXPECT_CALL(editor, ExportToFile(44100, 2, 0, 0, -1, QString("/out/take.mp3"))).WillOnce(Return(-111));
    EXPECT_CALL(editor, LastError).WillOnce(Return(-111));
    expectBox("Export to file failed.\nThe sound editor doesn't contain any sound", MsgBox::Look::Critical);
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, GoOnToTheExportAfterARefusedEffect)
{
    expectDialogAndFormat();
    expectLoad();
    expectRefusedEffects();
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, EndWithTheReasonWhereTheExportIsRefusedAndKeepTheLastPercent)
{
    expectDialogAndFormat();
    expectLoad();
    expectTempo(0);
    expectPitch(0);
    expectRate(0);
    EXPECT_CALL(editor, ExportToFile(44100, 2, 0, 0, -1, QString("/out/take.mp3"))).WillOnce([this] {
        emit editor.ExportPercent(3);
        return 1;
    });
    EXPECT_CALL(editor, LastError).WillOnce(Return(-8));
    expectBox("Export to file failed.\nA file creation failed (probably attempting to save a playlist file)",
              MsgBox::Look::Critical);
    saveAs.RecordSoundTouch();
    EXPECT_EQ(lblWavExportStatus.text(), "Exporting audio, please wait...3%");
}

TEST_F(SaveAsSteps, WaitForTheirOwnEventOnly)
{
    expectDialogAndFormat();
    expectLoad([this] { emit editor.EffectDone(10, 0); });
    expectTempo(0, [this] { emit editor.LoadDone(0); });
    expectPitch(0);
    expectRate(0, [this] { emit editor.LoadDone(0); });
    expectExport("/out/take.mp3", [this] { emit editor.EffectDone(11, 0); });
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, EndWithTheDoneEventOfAnyEffect)
{
    expectDialogAndFormat();
    expectLoad();
    EXPECT_CALL(effects, ApplyTempo(0, -1, 0.F)).WillOnce([this] {
        QTimer::singleShot(0, &editor, [this] { emit editor.EffectDone(99, 0); });
        return 0;
    });
    expectPitch(0);
    expectRate(0);
    expectExport("/out/take.mp3");
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, ReportSuccessWhateverTheDoneEventsSay)
{
    const auto fails = [this](const std::function<void()>& done) {
        return [this, done] {
            QTimer::singleShot(0, &editor, done);
            return 0;
        };
    };
    expectDialogAndFormat();
    EXPECT_CALL(editor, LoadSound).WillOnce(fails([this] { emit editor.LoadDone(-6); }));
    EXPECT_CALL(effects, ApplyTempo).WillOnce(fails([this] { emit editor.EffectDone(10, -25); }));
    EXPECT_CALL(effects, ApplyPitch).WillOnce(fails([this] { emit editor.EffectDone(12, -27); }));
    EXPECT_CALL(effects, ApplyRate).WillOnce(fails([this] { emit editor.EffectDone(11, -26); }));
    EXPECT_CALL(editor, ExportToFile).WillOnce(fails([this] { emit editor.ExportDone(-8); }));
    expectSuccess();
    saveAs.RecordSoundTouch();
}

TEST_F(SaveAsSteps, EndWhenTheUserHasReadThatTheFileIsThere)
{
    expectDialogAndFormat();
    expectLoad();
    expectTempo(0);
    expectPitch(0);
    expectRate(0);
    expectExport("/out/take.mp3", [this] { emit editor.ExportPercent(100); });
    bool returned = false;
    EXPECT_CALL(msgBox, show(QString("File successfully created."), MsgBox::Look::Information, QString()))
        .WillOnce([&] {
            EXPECT_FALSE(returned);
            EXPECT_EQ(lblWavExportStatus.text(), "");
        });
    saveAs.RecordSoundTouch();
    returned = true;
}

}  // namespace
