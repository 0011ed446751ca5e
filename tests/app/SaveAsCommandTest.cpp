#include "app/MainWindowTest.h"
#include "engines/MockEditorEffects.h"
#include "engines/MockEncodeFormats.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

using ::testing::InSequence;
using ::testing::Return;
using ::testing::ReturnRef;
using ::testing::StrictMock;

namespace {

/// Saving as, from the main window.
class SaveAsCommand : public MainWindow
{
protected:
    StrictMock<MockEditorEffects> effects;
    StrictMock<MockEncodeFormats> formats;

    void SetUp() override
    {
        makeWithAFile();
        EXPECT_CALL(*editor, Effects).WillRepeatedly(ReturnRef(effects));
        EXPECT_CALL(*editor, EncodeFormats).WillRepeatedly(ReturnRef(formats));
    }

    void expectRequestForAFile()
    {
        EXPECT_CALL(msgBox,
                    show(QString("Please select file from playlist."), MsgBox::Look::Information, QString()));
    }

    void expectDialogAndLoad()
    {
        FileDialogAnswer answer;
        answer.fileName = folder.filePath("take.wav");
        EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answer));
        EXPECT_CALL(formats, FormatForExport(1));
        EXPECT_CALL(formats.wav, Mode(1));
        EXPECT_CALL(*editor, LoadSound(folder.filePath("song.wav"))).WillOnce([this] {
            return job([this] { emit editor->LoadDone(0); });
        });
    }

    int job(const std::function<void()>& done)
    {
        QTimer::singleShot(0, editor, done);
        return 0;
    }
};

TEST_F(SaveAsCommand, HasAButtonAMenuEntryAndAKey)
{
    window->show();
    QApplication::setActiveWindow(window.get());
    expectRequestForAFile();
    click(*window, "tlbCmdSaveAs");
    expectRequestForAFile();
    trigger("mnuSave");
    expectRequestForAFile();
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
}

TEST_F(SaveAsCommand, SavesTheLoadedTrackWithTheSlidersOfTheWindow)
{
    pickTheFile();
    EXPECT_CALL(*player, ChangeTempo(0, -20.F));
    EXPECT_CALL(*player, ChangePitchCents(0, 1.5F));
    EXPECT_CALL(*player, ChangeRate(0, 5.F));
    put(*window, "sldTempo", -20);
    put(*window, "sldPitchGrad", 150);
    put(*window, "sldSpeed", 5);

    const InSequence order;
    expectDialogAndLoad();
    EXPECT_CALL(effects, ApplyTempo(0, -1, -20.F)).WillOnce([this] {
        return job([this] {
            emit editor->EffectPercent(10, 33);
            EXPECT_EQ(textOf(*window, "lblWavExportStatus"), "Applying tempo...33%");
            emit editor->EffectDone(10, 0);
        });
    });
    EXPECT_CALL(effects, ApplyPitch(0, -1, 1.5F)).WillOnce([this] {
        return job([this] { emit editor->EffectDone(12, 0); });
    });
    EXPECT_CALL(effects, ApplyRate(0, -1, 5.F)).WillOnce([this] {
        return job([this] { emit editor->EffectDone(11, 0); });
    });
    EXPECT_CALL(*editor, ExportToFile(44100, 2, 0, 0, -1, folder.filePath("take.wav"))).WillOnce([this] {
        return job([this] { emit editor->ExportDone(0); });
    });
    EXPECT_CALL(msgBox, show(QString("File successfully created."), MsgBox::Look::Information, QString()));
    click(*window, "tlbCmdSaveAs");
    EXPECT_EQ(textOf(*window, "lblWavExportStatus"), "");
}

TEST_F(SaveAsCommand, AsksForASelectionAlsoWhenTheListHoldsFiles)
{
    ASSERT_EQ(list().count(), 1);
    expectRequestForAFile();
    click(*window, "tlbCmdSaveAs");
}

TEST_F(SaveAsCommand, SavesATrackThatWasRemovedFromTheList)
{
    pickTheFile();
    EXPECT_CALL(*player, CloseSound(0));
    click(*window, "tlbCmdClear");
    FileDialogAnswer cancel;
    cancel.error = FileDialogAnswer::cancelled;
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(cancel));
    click(*window, "tlbCmdSaveAs");
}

TEST_F(SaveAsCommand, KeepsTheWindowAliveWhileTheEditorWorks)
{
    pickTheFile();
    const InSequence order;
    expectDialogAndLoad();
    EXPECT_CALL(effects, ApplyTempo).WillOnce([this] {
        return job([this] {
            click(*window, "cmdPlay");
            put(*window, "sldSpeed", 10);
            emit editor->EffectDone(10, 0);
        });
    });
    EXPECT_CALL(*player, PlaySound(0));
    EXPECT_CALL(*player, ChangeRate(0, 10.F));
    EXPECT_CALL(effects, ApplyPitch(0, -1, 0.F)).WillOnce([this] {
        return job([this] { emit editor->EffectDone(12, 0); });
    });
    EXPECT_CALL(effects, ApplyRate(0, -1, 10.F)).WillOnce([this] {
        return job([this] { emit editor->EffectDone(11, 0); });
    });
    EXPECT_CALL(*editor, ExportToFile).WillOnce(Return(1));
    EXPECT_CALL(*editor, LastError).WillOnce(Return(-8));
    EXPECT_CALL(msgBox, show);
    trigger("mnuSave");
}

TEST_F(SaveAsCommand, EndsWithTheProgramWhenTheWindowIsClosedMeanwhile)
{
    QApplication::setQuitOnLastWindowClosed(true);
    const auto restore = qScopeGuard([] { QApplication::setQuitOnLastWindowClosed(false); });
    pickTheFile();
    window->show();
    const InSequence order;
    expectDialogAndLoad();
    EXPECT_CALL(effects, ApplyTempo).WillOnce([this] { return job([this] { window->close(); }); });
    QTimer::singleShot(0, window.get(), [this] { click(*window, "tlbCmdSaveAs"); });
    QApplication::exec();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(read("list.pms"), QByteArray("song (Wav file)\r\n"));
}

TEST_F(MainWindow, SavesNothingWithoutAnEditor)
{
    writeLists("", "");
    make(EditorIs::Missing);
    load();
    click(*window, "tlbCmdSaveAs");
    trigger("mnuSave");
}

}  // namespace
