#include "app/MainWindowTest.h"
#include "support/IconTheme.h"
#include "support/controls/LevelBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolBar>

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

TEST_F(MainWindow, IsTitledAndCollapsedAtFirst)
{
    make();
    EXPECT_EQ(window->windowTitle(), "Larkspin");
    EXPECT_EQ(window->height(), 534);
    EXPECT_EQ(textOf(*window, "lblOutputMode"), "Output mode : Sound preview");
    EXPECT_EQ(textOf(*window, "lblWavExportStatus"), "");
}

TEST_F(MainWindow, HasTheIconOfTheProgram)
{
    make();
    EXPECT_FALSE(window->windowIcon().pixmap(64, 64).isNull());
}

TEST_F(MainWindow, ShowsItsExpandButtonOnceItIsLoaded)
{
    writeLists("", "");
    make();
    EXPECT_TRUE(control<QToolButton>(*window, "cmdExpand").isHidden());
    load();
    EXPECT_FALSE(control<QToolButton>(*window, "cmdExpand").isHidden());
    EXPECT_TRUE(control<QToolButton>(*window, "cmdColapse").isHidden());
}

TEST_F(MainWindow, ExpandsAndCollapsesWithOneOfTheTwoButtonsShown)
{
    writeLists("", "");
    make();
    load();
    window->show();
    click(*window, "cmdExpand");
    EXPECT_EQ(window->height(), 692);
    EXPECT_FALSE(control<QToolButton>(*window, "cmdExpand").isVisible());
    EXPECT_TRUE(control<QToolButton>(*window, "cmdColapse").isVisible());
    click(*window, "cmdColapse");
    EXPECT_EQ(window->height(), 534);
    EXPECT_TRUE(control<QToolButton>(*window, "cmdExpand").isVisible());
    EXPECT_FALSE(control<QToolButton>(*window, "cmdColapse").isVisible());
}

TEST_F(MainWindow, HandsTheKeyboardOfWhatGoesToTheButtonThatComes)
{
    writeLists("", "");
    make();
    load();
    window->show();
    QApplication::setActiveWindow(window.get());
    control<QWidget>(*window, "cmdExpand").setFocus();
    for (const char* next : {"cmdColapse", "cmdExpand"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
    list().setFocus();
    click(*window, "cmdExpand");
    EXPECT_EQ(QApplication::focusWidget(), &list());
    control<QWidget>(*window, "Slider80Hz").setFocus();
    click(*window, "cmdColapse");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdExpand");
}

TEST_F(MainWindow, StaysMaximizedWhenItIsExpandedOrCollapsed)
{
    writeLists("", "");
    make();
    load();
    window->showMaximized();
    const QSize whole = window->size();
    for (const char* button : {"cmdExpand", "cmdColapse"}) {
        click(*window, button);
        EXPECT_TRUE(window->isMaximized()) << button;
        EXPECT_EQ(window->size(), whole) << button;
    }
}

TEST_F(MainWindow, ChangesNothingWhereItIsExpandedOrCollapsedAlready)
{
    writeLists("", "");
    make();
    load();
    click(*window, "cmdExpand");
    window->resize(1000, 650);
    click(*window, "cmdExpand");
    EXPECT_EQ(window->height(), 650);
    click(*window, "cmdColapse");
    window->resize(1000, 600);
    click(*window, "cmdColapse");
    EXPECT_EQ(window->height(), 600);
}

TEST_F(MainWindow, AsksNothingOfTheEnginesBeforeItIsLoaded)
{
    make();
}

TEST_F(MainWindow, StartsPlayerMeterAndEditorBeforeItReadsTheLists)
{
    make();
    {
        const InSequence order;
        expectEngineStart();
        EXPECT_CALL(msgBox, show(QString("No such file or directory"), MsgBox::Look::Exclamation, QString("Error")))
            .WillOnce([this] { write("path.pms", "/music/a.mp3\r\n"); });
        expectMixer();
        expectEqualizer();
    }
    window->Load();
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(paths().itemText(0), "/music/a.mp3");  // it was read after list.pms had failed
}

TEST_F(MainWindow, ShowsABoxForEachListFileOnItsFirstRunAndWorks)
{
    make();
    expectEngineStart();
    expectMixer();
    expectEqualizer();
    EXPECT_CALL(msgBox, show(_, MsgBox::Look::Exclamation, QString("Error"))).Times(2);
    window->Load();
    EXPECT_EQ(list().count(), 0);
    window->show();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindow, GoesOnWithoutAnEditor)
{
    writeLists("a (MP3 file)\r\n", "/music/a.mp3\r\n");
    make(EditorIs::Missing);
    load();
    EXPECT_EQ(list().count(), 1);
}

TEST_F(MainWindow, GoesOnWithoutAMixer)
{
    writeLists("", "");
    make();
    {
        const InSequence order;
        expectEngineStart();
        auto mixer = std::make_unique<::testing::StrictMock<MockOutputMixer>>();
        auto& itsMixer = *mixer;
        EXPECT_CALL(engines, createOutputMixer).WillOnce(Return(::testing::ByMove(std::move(mixer))));
        EXPECT_CALL(itsMixer, mixerOpen).WillOnce(Return(1));
        EXPECT_CALL(msgBox, show(QString("Couldn't open the mixer please check if a audio mixer is installed then "
                                         "retry."),
                                 MsgBox::Look::Plain, QString()));
        expectEqualizer();
    }
    window->Load();
    EXPECT_EQ(valueOf(*window, "sldVolume"), 32768);
    EXPECT_FALSE(control<QToolButton>(*window, "cmdFadeIn").isHidden());
}

TEST_F(MainWindow, SeedsTheHiddenVolumeFromTheMixerAndShowsTheFades)
{
    writeLists("", "");
    make();
    EXPECT_TRUE(control<QToolButton>(*window, "cmdFadeIn").isHidden());
    load();
    EXPECT_EQ(valueOf(*window, "sldVolume"), 32767);
    EXPECT_FALSE(control<QToolButton>(*window, "cmdFadeIn").isHidden());
    window->show();
    click(*window, "cmdExpand");
    EXPECT_FALSE(control<Slider>(*window, "sldVolume").isVisible());
}

TEST_F(MainWindow, ShowsWhatThePlayerMeasures)
{
    writeLists("", "");
    make();
    load();
    emit player->VuPeaks(0, 1000, 32767);
    const QList<LevelBar*> bars = window->findChildren<LevelBar*>();
    ASSERT_EQ(bars.size(), 2);
    EXPECT_EQ(bars[0]->value(), 1000);
    EXPECT_EQ(bars[1]->value(), 32767);
}

TEST_F(MainWindow, ClearsTheMarksBeforeItLoadsATrack)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(60000));
    control<QWidget>(*window, "lblTime").setProperty("text", "00:10:00");
    click(*window, "cmdAddMark");
    auto& list = control<ListBox>(*window, "lstMark");
    ASSERT_EQ(list.count(), 1);
    EXPECT_CALL(*player, LoadSound).WillOnce([&list](short, const QString&) {
        EXPECT_EQ(list.count(), 0);
        return 1;
    });
    EXPECT_CALL(*player, LastError).WillOnce(Return(-6));
    EXPECT_CALL(msgBox, show(_, MsgBox::Look::Critical, _));
    this->list().setListIndex(-1);
    this->list().setListIndex(0);
    EXPECT_TRUE(list.isHidden());
}

TEST_F(MainWindow, WorksTheMarksByItsKeys)
{
    makeWithAFile();
    pickTheFile();
    window->show();
    QApplication::setActiveWindow(window.get());
    EXPECT_CALL(*player, GetDuration(0)).WillRepeatedly(Return(60000));
    for (const char* time : {"00:10:00", "00:20:00", "00:30:00"}) {
        control<QWidget>(*window, "lblTime").setProperty("text", time);
        QTest::keyClick(window.get(), Qt::Key_F5);
    }
    const InSequence order;
    EXPECT_CALL(*player, SeekSound(0, 29700));  // back from the first is the last
    EXPECT_CALL(*player, PlaySound(0));
    QTest::keyClick(window.get(), Qt::Key_F6);
    EXPECT_CALL(*player, SeekSound(0, 29700));
    EXPECT_CALL(*player, PlaySound(0));
    QTest::keyClick(window.get(), Qt::Key_F7);
    EXPECT_CALL(*player, SeekSound(0, 9700));
    EXPECT_CALL(*player, PlaySound(0));
    QTest::keyClick(window.get(), Qt::Key_F8);
}

TEST_F(MainWindow, AddsOneMarkForAKeyThatIsHeldDown)
{
    makeWithAFile();
    pickTheFile();
    window->show();
    QApplication::setActiveWindow(window.get());
    EXPECT_CALL(*player, GetDuration(0)).WillRepeatedly(Return(60000));
    control<QWidget>(*window, "lblTime").setProperty("text", "00:10:00");
    for (const bool repeated : {false, true, true, true})
        QTest::simulateEvent(window.get(), true, Qt::Key_F5, Qt::NoModifier, {}, repeated);
    EXPECT_EQ(control<ListBox>(*window, "lstMark").count(), 1);
}

TEST_F(MainWindow, ReadsItsPlaylistAndSelectsAndLoadsNothing)
{
    writeLists("a (MP3 file)\r\nb (Wav file)\r\n", "/music/a.mp3\r\n/music/b.wav\r\n");
    make();
    load();
    EXPECT_EQ(list().itemText(1), "b (Wav file)");
    EXPECT_EQ(paths().itemText(1), "/music/b.wav");
    EXPECT_EQ(list().listIndex(), -1);
    EXPECT_FALSE(control<QTimer>(*window, "tmrPosition").isActive());
}

TEST_F(MainWindow, WritesItsPlaylistWhenItCloses)
{
    writeLists("a, b (MP3 file)\r\n", "/music/a.mp3\r\n");
    make();
    load();
    EXPECT_TRUE(window->close());
    EXPECT_EQ(read("list.pms"), QByteArray("a\r\nb (MP3 file)\r\n"));
    EXPECT_EQ(read("path.pms"), QByteArray("/music/a.mp3\r\n"));
}

TEST_F(MainWindow, ClosesOnceAndStopsNoEngine)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_TRUE(window->close());
    QFile::remove(folder.filePath("list.pms"));
    window->close();
    EXPECT_EQ(read("list.pms"), QByteArray("no such file"));
}

TEST_F(MainWindow, ClosesThoughItsPlaylistCannotBeWritten)
{
    writeLists("", "");
    make();
    load();
    window->show();
    folder.remove();
    EXPECT_CALL(msgBox, show(QString("No such file or directory"), MsgBox::Look::Exclamation, QString("Error")))
        .Times(2);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindow, LoadsAnItemOnceForAClick)
{
    makeWithAFile();
    window->show();
    EXPECT_CALL(*player, LoadSound(0, folder.filePath("song.wav"))).Times(1).WillRepeatedly(Return(0));
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(60000));
    EXPECT_CALL(*player, GetPosition(0)).WillOnce(Return(0));
    const QPoint item = list().visualRect(list().model()->index(0, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, item);
    EXPECT_EQ(valueOf(*window, "sldEndLoop"), 60);
}

TEST_F(MainWindow, LoadsTheSameItemAgainFromTheStart)
{
    makeWithAFile();
    window->show();
    EXPECT_CALL(*player, LoadSound(0, folder.filePath("song.wav"))).Times(2).WillRepeatedly(Return(0));
    EXPECT_CALL(*player, GetDuration(0)).Times(2).WillRepeatedly(Return(60000));
    EXPECT_CALL(*player, GetPosition(0)).Times(2).WillRepeatedly(Return(0));
    const QPoint item = list().visualRect(list().model()->index(0, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, item);
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, item);
}

TEST_F(MainWindow, TellsOfAMissingFileAndKeepsTheLoop)
{
    writeLists("gone (Wav file)\r\n", "/nowhere/gone.wav\r\n");
    make();
    load();
    EXPECT_CALL(msgBox,
                show(QString("File doesn't exist, or CD not presented."), MsgBox::Look::Exclamation, QString()));
    list().setListIndex(0);
    EXPECT_EQ(list().listIndex(), 0);
}

TEST_F(MainWindow, LoopsFromThePanelAndTheContextMenuButNotFromTheToolbar)
{
    makeWithAFile();
    pickTheFile();
    click(*window, "tlbCmdPlayLoop");
    EXPECT_CALL(*player, PlaySoundRange(0, 0, 60000, -1)).Times(2);
    click(*window, "cmdPlayLoop");
    trigger("mnuPlayLoopListItem");
}

TEST_F(MainWindow, PlaysFromPanelToolbarAndContextMenu)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_CALL(*player, PlaySound(0)).Times(3);
    click(*window, "cmdPlay");
    click(*window, "tlbCmdPlay");
    trigger("mnuPlayListItem");
}

TEST_F(MainWindow, SharesTheLoopBetweenItsPanels)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_CALL(*player, PlaySoundRange(0, 0, 60000, -1));
    click(*window, "cmdPlayLoop");

    EXPECT_CALL(*player, PlaySoundRange(0, 1000, 60000, -1));
    put(*window, "sldBeginLoop", 1);

    {
        const InSequence order;
        EXPECT_CALL(*player, StopSound(0));
        EXPECT_CALL(*player, SeekSound(0, 1000));
    }
    click(*window, "tlbCmdStop");

    EXPECT_CALL(*player, PlaySound(0));
    click(*window, "tlbCmdPlay");
    put(*window, "sldBeginLoop", 2);  // the loop has ended: no call
}

TEST_F(MainWindow, EndsTheLoopWithANewLoad)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_CALL(*player, PlaySoundRange(0, 0, 60000, -1));
    click(*window, "cmdPlayLoop");
    list().setListIndex(-1);
    pickTheFile();
    EXPECT_CALL(*player, StopSound(0));
    click(*window, "cmdStop");
}

TEST_F(MainWindow, PausesStopsAndWindsFromTheToolbar)
{
    makeWithAFile();
    pickTheFile();
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(1));
    EXPECT_CALL(*player, PauseSound(0));
    click(*window, "tlbCmdPause");
    EXPECT_CALL(*player, StopSound(0));
    click(*window, "tlbCmdStop");
    EXPECT_CALL(*player, GetPosition(0)).WillRepeatedly(Return(30000));
    EXPECT_CALL(*player, GetDuration(0)).WillRepeatedly(Return(60000));
    EXPECT_CALL(*player, SeekSound(0, 25000));
    click(*window, "tlbCmdRewind");
    EXPECT_CALL(*player, SeekSound(0, 35000));
    click(*window, "tlbCmdFForward");
}

TEST_F(MainWindow, MovesTheLoopWindowFromTheToolbar)
{
    makeWithAFile();
    put(*window, "sldBeginLoop", 10);
    put(*window, "sldEndLoop", 20);
    click(*window, "tlbCmdLoopWinForward");
    EXPECT_EQ(valueOf(*window, "sldBeginLoop"), 11);
    EXPECT_EQ(valueOf(*window, "sldEndLoop"), 21);
    click(*window, "tlbCmdLoopWinBack");
    click(*window, "tlbCmdLoopWinBack");
    EXPECT_EQ(valueOf(*window, "sldBeginLoop"), 9);
    EXPECT_EQ(valueOf(*window, "sldEndLoop"), 19);
}

TEST_F(MainWindow, OpensRemovesAndClearsFromTheToolbar)
{
    makeWithAFile();
    FileDialogAnswer answer;
    answer.fileName = "/music/new.mp3";
    answer.fileTitle = "new.mp3";
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answer));
    click(*window, "tlbCmdOpen");
    EXPECT_EQ(list().itemText(1), "new (MP3 file)");

    click(*window, "tlbCmdClear");  // nothing is selected
    EXPECT_EQ(list().count(), 2);
    pickTheFile();
    EXPECT_CALL(*player, CloseSound(0));
    click(*window, "tlbCmdClear");
    EXPECT_EQ(list().count(), 1);

    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(0));
    click(*window, "tlbCmdClearAll");
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(paths().count(), 0);
}

TEST_F(MainWindow, ShowsThePlayersConversionInItsStatusRow)
{
    make();
    emit player->ConversionPercent(0, 7);
    EXPECT_EQ(textOf(*window, "lblWavExportStatus"), "Exporting audio : 7 %");
    emit player->ConversionDone(0, 1);
    EXPECT_EQ(textOf(*window, "lblWavExportStatus"), "");
}

}  // namespace
