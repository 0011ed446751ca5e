#pragma once

#include "export/SaveAs.h"

#include "QtPrinters.h"
#include "engines/MockEditorEffects.h"
#include "engines/MockEditorEngine.h"
#include "engines/MockEncodeFormats.h"
#include "support/MockDialogs.h"
#include "support/controls/Slider.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QTimer>

/// A save-as round a strict editor and strict dialogs. The editor works one job at a time and tells of its end from
/// the event loop; that the next job is not begun before is checked in all tests.
class SaveAsTest : public ::testing::Test
{
protected:
    using Event = std::function<void()>;

    ::testing::StrictMock<MockEditorEngine> editor;
    ::testing::StrictMock<MockEditorEffects> effects;
    ::testing::StrictMock<MockEncodeFormats> formats;
    ::testing::StrictMock<MockCommonDialog> dialog;
    ::testing::StrictMock<MockMsgBox> msgBox;
    QString CurrentAudioPath = "/music/song.flac";
    Slider sldTempo;
    Slider sldPitchSemi;
    Slider sldPitchGrad;
    Slider sldSpeed;
    QLabel lblWavExportStatus;
    SaveAs saveAs{editor,
                  {CurrentAudioPath, sldTempo, sldPitchSemi, sldPitchGrad, sldSpeed},
                  lblWavExportStatus,
                  dialog,
                  msgBox};

    SaveAsTest()
    {
        sldTempo.setRange(-60, 60);
        sldPitchSemi.setRange(-12, 12);
        sldPitchGrad.setRange(-1200, 1200);
        sldSpeed.setRange(-60, 60);
        EXPECT_CALL(editor, Effects).WillRepeatedly(::testing::ReturnRef(effects));
        EXPECT_CALL(editor, EncodeFormats).WillRepeatedly(::testing::ReturnRef(formats));
    }

    void expectDialog(const QString& chosen)
    {
        FileDialogAnswer answer;
        answer.fileName = chosen;
        EXPECT_CALL(dialog, ShowSave).WillOnce(::testing::Return(answer));
    }

    void expectCancel()
    {
        FileDialogAnswer answer;
        answer.error = 32755;
        EXPECT_CALL(dialog, ShowSave).WillOnce(::testing::Return(answer));
    }

    void expectMp3()
    {
        EXPECT_CALL(formats, FormatForExport(2));
        EXPECT_CALL(formats.mp3, Mode(1));
        EXPECT_CALL(formats.mp3, BitRate(128000));
    }

    void expectWav()
    {
        EXPECT_CALL(formats, FormatForExport(1));
        EXPECT_CALL(formats.wav, Mode(1));
    }

    // A step whose job is started. What happens meanwhile comes before its done event.
    void expectLoad(const Event& meanwhile = {})
    {
        EXPECT_CALL(editor, LoadSound(QString("/music/song.flac"))).WillOnce([this, meanwhile] {
            return job(meanwhile, [this] { emit editor.LoadDone(0); });
        });
    }

    void expectTempo(float percent, const Event& meanwhile = {})
    {
        EXPECT_CALL(effects, ApplyTempo(0, -1, percent)).WillOnce([this, meanwhile] {
            return job(meanwhile, [this] { emit editor.EffectDone(10, 0); });
        });
    }

    void expectPitch(float semitones, const Event& meanwhile = {})
    {
        EXPECT_CALL(effects, ApplyPitch(0, -1, semitones)).WillOnce([this, meanwhile] {
            return job(meanwhile, [this] { emit editor.EffectDone(12, 0); });
        });
    }

    void expectRate(float percent, const Event& meanwhile = {})
    {
        EXPECT_CALL(effects, ApplyRate(0, -1, percent)).WillOnce([this, meanwhile] {
            return job(meanwhile, [this] { emit editor.EffectDone(11, 0); });
        });
    }

    void expectExport(const QString& path, const Event& meanwhile = {})
    {
        EXPECT_CALL(editor, ExportToFile(44100, 2, 0, 0, -1, path)).WillOnce([this, meanwhile] {
            return job(meanwhile, [this] { emit editor.ExportDone(0); });
        });
    }

    /// An effect that is asked for and refused still ends with its event.
    void expectRefusedEffects()
    {
        const auto refuse = [this](short effect) {
            QTimer::singleShot(0, &editor, [this, effect] { emit editor.EffectDone(effect, -111); });
            return -111;
        };
        EXPECT_CALL(effects, ApplyTempo(0, -1, 0.F)).WillOnce([refuse] { return refuse(10); });
        EXPECT_CALL(effects, ApplyPitch(0, -1, 0.F)).WillOnce([refuse] { return refuse(12); });
        EXPECT_CALL(effects, ApplyRate(0, -1, 0.F)).WillOnce([refuse] { return refuse(11); });
    }

    void expectBox(const char* text, MsgBox::Look look)
    {
        EXPECT_CALL(msgBox, show(QString(text), look, QString()));
    }

    void expectSuccess() { expectBox("File successfully created.", MsgBox::Look::Information); }

    /// All that follows the dialog, with every slider at 0.
    void expectRun(const QString& path)
    {
        expectLoad();
        expectTempo(0);
        expectPitch(0);
        expectRate(0);
        expectExport(path);
        expectSuccess();
    }

private:
    int job(const Event& meanwhile, const Event& done)
    {
        EXPECT_FALSE(working);
        working = true;
        QTimer::singleShot(0, &editor, [this, meanwhile, done] {
            if (meanwhile)
                meanwhile();
            QTimer::singleShot(0, &editor, [this, done] {
                working = false;
                done();
            });
        });
        return 0;
    }

    bool working = false;
};
