#include "playback/PlaylistPanel.h"

#include "playback/PanelTest.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"
#include "support/controls/ListBox.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class Playlist : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    StrictMock<MockCommonDialog> dialog;
    PlaybackState state;
    PositionPanel position{engine, state};
    PlaylistPanel panel{engine, state, position, dialog};
    ListBox& lstAudio = control<ListBox>(panel, "lstAudio");
    ListBox& lstPath = control<ListBox>(panel, "lstPath");
    QSignalSpy picked{&panel, &PlaylistPanel::itemPicked};

    void fill()
    {
        lstAudio.addItems({"a (MP3 file)", "b (Wav file)", "c. (FLAC file)"});
        lstPath.addItems({"/music/a.mp3", "/music/b.wav", "/music/c.flac"});
    }

    static QStringList items(const ListBox& list)
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts << list.itemText(i);
        return texts;
    }

    void answer(const QStringList& parts, const QString& title = {})
    {
        FileDialogAnswer given;
        given.fileName = parts.join(QChar::Null);
        given.fileTitle = title;
        EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(given));
    }

    void trigger(const char* action) { panel.findChild<QAction*>(action)->trigger(); }

    void expectDisplayReset() const
    {
        EXPECT_FALSE(control<QTimer>(position, "tmrPosition").isActive());
        for (const char* slider : {"sldAudioPosition", "sldBeginLoop", "sldEndLoop"})
            EXPECT_EQ(valueOf(position, slider), control<Slider>(position, slider).maximum() / 2) << slider;
    }

    void startTimer() const
    {
        control<QTimer>(position, "tmrPosition").start();
        for (const char* slider : {"sldAudioPosition", "sldBeginLoop", "sldEndLoop"}) {
            control<Slider>(position, slider).setMaximum(187);
            put(position, slider, 5);
        }
    }
};

TEST_F(Playlist, ShowsLabelsAndHidesPaths)
{
    EXPECT_FALSE(lstAudio.isHidden());
    EXPECT_TRUE(lstPath.isHidden());
}

TEST_F(Playlist, AsksForFilesWithItsDialogSetUp)
{
    FileDialogSetup setup;
    setup.title = "Open audio";
    setup.filter =
        "All supported audio "
        "formats|*.mp3;*.mp2;*.wav;*.ogg;*.cda;*.aiff;*.wma;*.wmv;*.asx;*.asf;*.m4a;*.mp4;*.flac;"
        "*.aac;*.ac3;*.wv|MP3 and MP2 sounds (*.mp3;*.mp2)|*.mp3;*.mp2|AAC and MP4 sounds "
        "(*.aac;*.mp4)|*.aac;*.mp4|"
        "WAV sounds (*.wav)|*.wav|OGG Vorbis sounds (*.ogg)|*.ogg|Audio CD tracks (*.cda)|*.cda|"
        "AIFF sounds (*.aiff)|*.aiff|Windows Media sounds (*.wma;*.wmv;*.asx;*.asf)|*.wma;*.wmv;*.asx;*.asf|"
        "AC3 sounds (*.ac3)|*.ac3|ALAC sounds (*.m4a)|*.m4a|FLAC sounds (*.flac)|*.flac|WavPack sounds "
        "(*.wv)|*.wv|";
    setup.flags = 786944;
    setup.maxFileSize = 32000;
    setup.cancelIsError = true;
    FileDialogAnswer cancel;
    cancel.error = 32755;
    EXPECT_CALL(dialog, ShowOpen(setup)).WillOnce(Return(cancel));
    click(panel, "cmdOpen");
    EXPECT_EQ(lstAudio.count(), 0);
    EXPECT_EQ(lstPath.count(), 0);
}

TEST_F(Playlist, AddsOneFileAtTheEndWithoutSelectingIt)
{
    fill();
    answer({"/music/d.ogg"}, "d.ogg");
    click(panel, "cmdOpen");
    EXPECT_EQ(items(lstAudio).last(), "d (Ogg Vorbis file)");
    EXPECT_EQ(items(lstPath).last(), "/music/d.ogg");
    EXPECT_EQ(lstAudio.listIndex(), -1);
    EXPECT_EQ(picked.count(), 0);
}

TEST_F(Playlist, AddsSeveralFilesInTheDialogsOrder)
{
    answer({"/music", "z.mp3", "a.wav"});
    click(panel, "cmdOpen");
    EXPECT_EQ(items(lstAudio), QStringList({"z (MP3 file)", "a (Wav file)"}));
    EXPECT_EQ(items(lstPath), QStringList({"/music/z.mp3", "/music/a.wav"}));
}

TEST_F(Playlist, AddsTheLabelFirstAndRemovesThePathFirst)
{
    QStringList order;
    for (const ListBox* list : {&lstAudio, &lstPath}) {
        QObject::connect(list->model(), &QAbstractItemModel::rowsInserted,
                         [&order, list] { order << "add to " + list->objectName(); });
        QObject::connect(list->model(), &QAbstractItemModel::rowsRemoved,
                         [&order, list] { order << "remove from " + list->objectName(); });
    }
    answer({"/music/d.ogg"}, "d.ogg");
    click(panel, "cmdOpen");
    lstAudio.setListIndex(0);
    EXPECT_CALL(engine, CloseSound(0));
    panel.tlbCmdClear_Click();
    EXPECT_EQ(order,
              QStringList({"add to lstAudio", "add to lstPath", "remove from lstPath", "remove from lstAudio"}));
}

TEST_F(Playlist, RemovesAnItemThatHasNoPath)
{
    lstAudio.addItems({"Hello", "Dolly (MP3 file)"});
    lstPath.addItem("/music/Hello");
    lstAudio.setListIndex(1);
    EXPECT_CALL(engine, CloseSound(0));
    panel.tlbCmdClear_Click();
    EXPECT_EQ(items(lstAudio), QStringList("Hello"));
    EXPECT_EQ(items(lstPath), QStringList("/music/Hello"));
}

TEST_F(Playlist, TakesTheSameFileTwice)
{
    answer({"/music/d.ogg"}, "d.ogg");
    click(panel, "cmdOpen");
    answer({"/music/d.ogg"}, "d.ogg");
    click(panel, "cmdOpen");
    EXPECT_EQ(items(lstPath), QStringList({"/music/d.ogg", "/music/d.ogg"}));
}

TEST_F(Playlist, NamesThePathOfAPickedItemBeforeItTellsOfThePick)
{
    fill();
    QString seen;
    QObject::connect(&panel, &PlaylistPanel::itemPicked, [&] { seen = state.CurrentAudioPath; });
    lstAudio.setListIndex(1);
    EXPECT_EQ(seen, "/music/b.wav");
    EXPECT_EQ(picked.count(), 1);
}

TEST_F(Playlist, TellsOfAClickOnceAndOfEachFurtherClickOnTheSameItem)
{
    fill();
    panel.resize(300, 300);
    panel.show();
    const QPoint item = lstAudio.visualRect(lstAudio.model()->index(2, 0)).center();
    QTest::mouseClick(lstAudio.viewport(), Qt::LeftButton, {}, item);
    EXPECT_EQ(picked.count(), 1);
    EXPECT_EQ(state.CurrentAudioPath, "/music/c.flac");
    QTest::mouseClick(lstAudio.viewport(), Qt::LeftButton, {}, item);
    EXPECT_EQ(picked.count(), 2);
}

TEST_F(Playlist, NamesNoPathForAnItemThatHasNone)
{
    lstAudio.addItems({"Hello", "Dolly (MP3 file)"});
    lstPath.addItem("/music/Hello");
    lstAudio.setListIndex(1);
    EXPECT_EQ(state.CurrentAudioPath, "");
    EXPECT_EQ(picked.count(), 1);
}

TEST_F(Playlist, RemovesNothingWithoutASelection)
{
    fill();
    startTimer();
    panel.tlbCmdClear_Click();
    EXPECT_EQ(lstAudio.count(), 3);
    EXPECT_TRUE(control<QTimer>(position, "tmrPosition").isActive());
}

TEST_F(Playlist, RemovesTheSelectedItemAndClosesTheSound)
{
    fill();
    lstAudio.setListIndex(1);
    startTimer();
    EXPECT_CALL(engine, CloseSound(0)).WillOnce([this] { expectDisplayReset(); });
    panel.tlbCmdClear_Click();
    EXPECT_EQ(items(lstAudio), QStringList({"a (MP3 file)", "c. (FLAC file)"}));
    EXPECT_EQ(items(lstPath), QStringList({"/music/a.mp3", "/music/c.flac"}));
    EXPECT_EQ(lstAudio.listIndex(), -1);
    EXPECT_EQ(picked.count(), 1);
    EXPECT_EQ(state.CurrentAudioPath, "/music/b.wav");
}

TEST_F(Playlist, RemovesAnItemFromTheContextMenu)
{
    fill();
    lstAudio.setListIndex(0);
    EXPECT_CALL(engine, CloseSound(0));
    trigger("mnuRemoveListItem");
    EXPECT_EQ(lstAudio.count(), 2);
}

TEST_F(Playlist, SendsARunningLoopItsCentredWindowBeforeTheSoundCloses)
{
    fill();
    lstAudio.setListIndex(0);
    startTimer();
    state.PlayLoopActive = true;
    {
        const InSequence order;
        EXPECT_CALL(engine, PlaySoundRange(0, 93000, 5000, -1));
        EXPECT_CALL(engine, PlaySoundRange(0, 93000, 93000, -1));
        EXPECT_CALL(engine, CloseSound(0));
    }
    panel.tlbCmdClear_Click();
}

TEST_F(Playlist, EmptiesBothListsAndClosesTheSoundThatIsThere)
{
    fill();
    lstAudio.setListIndex(2);
    startTimer();
    {
        const InSequence order;
        EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(1));
        EXPECT_CALL(engine, CloseSound(0));
    }
    panel.tlbCmdClearAll_Click();
    EXPECT_EQ(lstAudio.count(), 0);
    EXPECT_EQ(lstPath.count(), 0);
    EXPECT_EQ(state.CurrentAudioPath, "/music/c.flac");
    expectDisplayReset();
}

TEST_F(Playlist, ClosesNoSoundThatIsNotThere)
{
    fill();
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(0));
    trigger("mnuClearPlaylist");
    EXPECT_EQ(lstAudio.count(), 0);
    expectDisplayReset();
}

TEST_F(Playlist, OffersItsCommandsInTheContextMenuInOrder)
{
    const auto* menu = panel.findChild<QMenu*>("mnuList");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), "List");
    QStringList entries;
    for (const QAction* action : menu->actions())
        entries << action->objectName() + ":" + action->text();
    EXPECT_EQ(entries, QStringList({"mnuPlayListItem:Play", "mnuPlayLoopListItem:Play loop",
                                    "mnuRemoveListItem:Remove list item", "mnuClearPlaylist:Clear list"}));
}

TEST_F(Playlist, PassesPlayAndPlayLoopOfTheContextMenuOn)
{
    const QSignalSpy play(&panel, &PlaylistPanel::playWanted);
    const QSignalSpy playLoop(&panel, &PlaylistPanel::playLoopWanted);
    trigger("mnuPlayListItem");
    EXPECT_EQ(play.count(), 1);
    EXPECT_EQ(playLoop.count(), 0);
    trigger("mnuPlayLoopListItem");
    EXPECT_EQ(playLoop.count(), 1);
}

TEST_F(Playlist, ShowsTheContextMenuAfterTheRightButtonPickedTheItem)
{
    fill();
    panel.resize(300, 300);
    panel.show();
    const QPoint item = lstAudio.visualRect(lstAudio.model()->index(1, 0)).center();
    QTest::mouseClick(lstAudio.viewport(), Qt::RightButton, {}, item);
    EXPECT_EQ(picked.count(), 1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, item, lstAudio.viewport()->mapToGlobal(item));
    QApplication::sendEvent(lstAudio.viewport(), &event);
    auto* menu = panel.findChild<QMenu*>("mnuList");
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    EXPECT_EQ(picked.count(), 1);
}

}  // namespace
