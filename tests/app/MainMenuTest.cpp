#include "app/MainWindowTest.h"

#include "app/MainMenu.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QTest>

using ::testing::Return;

namespace {

struct EntryRow
{
    const char* key;
    const char* caption;
    const char* accelerator;
    const char* picture;
};

struct MenuRow
{
    const char* key;
    const char* caption;
    std::vector<EntryRow> entries;
};

const EntryRow dash{};

const std::vector<MenuRow> wanted{
    {"mnuFile",
     "&File",
     {{"mnuOpen", "&Open", "Ctrl+O", "tlbCmdOpen"},
      {"mnuSave", "&Save as", "Ctrl+S", "tlbCmdSaveAs"},
      {"mnuDelete", "&Delete selected item", "Del", "tlbCmdClear"},
      {"mnuClearList", "&Clear playlist", "Ctrl+Del", "tlbCmdClearAll"},
      dash,
      {"mnuRewind", "5 seconds &back", "Num+1", "tlbCmdRewind"},
      {"mnuPlay", "&Play", "Ctrl+P", "tlbCmdPlay"},
      {"mnuPlayLoop", "Play &Loop", "Ctrl+L", "tlbCmdPlayLoop"},
      {"mnuFForward", "5 seconds &forward", "Num+3", "tlbCmdFForward"},
      {"mnuPause", "P&ause", "Pause", "tlbCmdPause"},
      {"mnuStop", "&Stop", "Backspace", "tlbCmdStop"},
      {"mnuLoopWinFF", "&Loop window forward", "Shift+Right", "tlbCmdLoopWinForward"},
      {"mnuLoopWinBack", "Loop window ba&ck", "Shift+Left", "tlbCmdLoopWinBack"},
      dash,
      {"mnuResetAll", "&Reset all changes", "Esc", "cmdResetAll"},
      dash,
      {"mnuExit", "&Exit", "Alt+F4", "cmdExit"}}},
    {"mnuTempo",
     "&Tempo",
     {{"mnuTempo10Up", "&1% Up", "Right", "cmdRate10Up"},
      {"mnuTempo1Up", "&0.1% Up", "Ctrl+Right", "cmdRate1Up"},
      {"mnuTempoReset", "&Reset", "Num+0", "cmdRateReset"},
      {"mnuTempo1Down", "&0.1% Down", "Ctrl+Left", "cmdRate1Down"},
      {"mnuTempo10Down", "&1% Down", "Left", "cmdRate10Down"}}},
    {"mnuPitch",
     "&Pitch",
     {{"mnuPitch10Up", "&1% Up", "Ctrl+Up", "cmdRate10Up"},
      {"mnuPitch1Up", "&0.1% Up", "Alt+Up", "cmdRate1Up"},
      {"mnuPitchReset", "&Reset", "End", "cmdRateReset"},
      {"mnuPitch1Down", "&0.1% Down", "Alt+Down", "cmdRate1Down"},
      {"mnuPitch10Down", "&1% Down", "Ctrl+Down", "cmdRate10Down"},
      dash,
      {"mnuPitchSemi12Up", "&Octave Up", "Shift+Up", "cmdRate10Up"},
      {"mnuPitchSemi1Up", "&Semitone Up", "Up", "cmdRate1Up"},
      {"mnuPitchSemiReset", "&Reset", "End", "cmdRateReset"},
      {"mnuPitchSemi1Down", "&Semitone Down", "Down", "cmdRate1Down"},
      {"mnuPitchSemi12Down", "Octave Down", "Shift+Down", "cmdRate10Down"}}},
    {"mnuTempoPitch",
     "Tempo &and pitch",
     {{"mnuTempoPitch10Up", "&1% Up", "PgUp", "cmdRate10Up"},
      {"mnuTempoPitch1Up", "&0.1% Up", "Ctrl+PgUp", "cmdRate1Up"},
      {"mnuTempoPitchReset", "&Reset", "Home", "cmdRateReset"},
      {"mnuTempoPitch1Down", "&0.1% Down", "Ctrl+PgDown", "cmdRate1Down"},
      {"mnuTempoPitch10Down", "&1% Down", "PgDown", "cmdRate10Down"}}},
    {"mnuTools",
     "T&ools",
     {{"mnuRecordResult", "Record modified audio", "Ctrl+R", "tlbCmdRecord"},
      {"mnuMP3", "&Encode recorded audio", "Ctrl+E", "tlbCmdMP3"},
      {"mnuBpm", "&BPM calculator", "Ctrl+B", "tlbCmdBPMCalc"},
      {"mnuTranspose", "&Transpose calculator", "Ctrl+T", "tlbCmdKeyCalc"},
      {"mnuVocalRemover", "&Vocal remover", "Ctrl+V", "tlbCmdVocalRemover"}}},
    {"keyHelp",
     "&Help",
     {{"mnuContents", "&Contents...", "F1", "tlbCmdHelp"},
      dash,
      {"mnuOnlineSupport", "&Support online", "", "cmdOnlineSupport"},
      {"mnuAbout", "&About Larkspin...", "", "cmdAbout"}}},
};

class TheMenu : public MainWindow
{
protected:
    void SetUp() override
    {
        writeLists("", "");
        make();
        load();
    }

    QAction& entry(const char* key) const { return *window->findChild<QAction*>(key); }
    QMenuBar& bar() const { return control<QMenuBar>(*window, "SmartMenuXP1"); }
};

TEST_F(TheMenu, HasItsTreeInOrderWithCaptionsAcceleratorsAndPictures)
{
    const QList<QAction*> menus = bar().actions();
    ASSERT_EQ(menus.size(), static_cast<qsizetype>(wanted.size()));
    for (std::size_t m = 0; m < wanted.size(); ++m) {
        const QMenu* menu = menus[static_cast<qsizetype>(m)]->menu();
        SCOPED_TRACE(wanted[m].key);
        EXPECT_EQ(menu->objectName(), wanted[m].key);
        EXPECT_EQ(menu->title(), wanted[m].caption);
        const QList<QAction*> entries = menu->actions();
        ASSERT_EQ(entries.size(), static_cast<qsizetype>(wanted[m].entries.size()));
        for (std::size_t e = 0; e < wanted[m].entries.size(); ++e) {
            const EntryRow& row = wanted[m].entries[e];
            const QAction& action = *entries[static_cast<qsizetype>(e)];
            if (!row.key) {
                EXPECT_TRUE(action.isSeparator());
                continue;
            }
            SCOPED_TRACE(row.key);
            EXPECT_EQ(action.objectName(), row.key);
            EXPECT_EQ(action.text(), row.caption);
            EXPECT_EQ(action.shortcut().toString(QKeySequence::PortableText), row.accelerator);
            EXPECT_EQ(action.icon().cacheKey(), control<QAbstractButton>(*window, row.picture).icon().cacheKey());
            EXPECT_TRUE(action.isEnabled());
            EXPECT_FALSE(action.isCheckable());
        }
    }
}

TEST_F(TheMenu, GivesNoTwoEntriesTheSameShortcutThatWorks)
{
    QList<QKeySequence> shortcuts;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->shortcut().isEmpty() || action->shortcutContext() == Qt::WidgetShortcut)
            continue;
        EXPECT_FALSE(shortcuts.contains(action->shortcut())) << qPrintable(action->shortcut().toString());
        shortcuts << action->shortcut();
    }
}

/// Entries that put a value into one of the tempo and pitch sliders.
struct SliderRow
{
    const char* key;
    const char* slider;
    int change;
};

class EachStepOfTheMenu : public TheMenu, public ::testing::WithParamInterface<SliderRow>
{
};

TEST_P(EachStepOfTheMenu, MovesItsSlider)
{
    EXPECT_CALL(*player, ChangeTempo).Times(::testing::AnyNumber());
    EXPECT_CALL(*player, ChangeRate).Times(::testing::AnyNumber());
    EXPECT_CALL(*player, ChangePitchSemitones).Times(::testing::AnyNumber());
    EXPECT_CALL(*player, ChangePitchCents).Times(::testing::AnyNumber());
    entry(GetParam().key).trigger();
    for (const char* slider : {"sldTempo", "sldSpeed", "sldPitchSemi", "sldPitchGrad"})
        EXPECT_EQ(valueOf(*window, slider), slider == QString(GetParam().slider) ? GetParam().change : 0) << slider;
}

INSTANTIATE_TEST_SUITE_P(
    Entries, EachStepOfTheMenu,
    ::testing::Values(
        SliderRow{"mnuTempo10Up", "sldTempo", 10}, SliderRow{"mnuTempo1Up", "sldTempo", 1},
        SliderRow{"mnuTempo1Down", "sldTempo", -1}, SliderRow{"mnuTempo10Down", "sldTempo", -10},
        SliderRow{"mnuPitch10Up", "sldPitchGrad", 12}, SliderRow{"mnuPitch1Up", "sldPitchGrad", 1},
        SliderRow{"mnuPitch1Down", "sldPitchGrad", -1}, SliderRow{"mnuPitch10Down", "sldPitchGrad", -12},
        SliderRow{"mnuPitchSemi12Up", "sldPitchSemi", 12}, SliderRow{"mnuPitchSemi1Up", "sldPitchSemi", 1},
        SliderRow{"mnuPitchSemi1Down", "sldPitchSemi", -1}, SliderRow{"mnuPitchSemi12Down", "sldPitchSemi", -12},
        SliderRow{"mnuTempoPitch10Up", "sldSpeed", 10}, SliderRow{"mnuTempoPitch1Up", "sldSpeed", 1},
        SliderRow{"mnuTempoPitch1Down", "sldSpeed", -1}, SliderRow{"mnuTempoPitch10Down", "sldSpeed", -10}),
    [](const auto& info) { return std::string(info.param.key); });

TEST_F(TheMenu, ResetsTempoAndRateByTheirEntries)
{
    EXPECT_CALL(*player, ChangeTempo(0, 30.F));
    put(*window, "sldTempo", 30);
    EXPECT_CALL(*player, ChangeTempo(0, 0.F));
    entry("mnuTempoReset").trigger();
    EXPECT_CALL(*player, ChangeRate(0, 30.F));
    put(*window, "sldSpeed", 30);
    EXPECT_CALL(*player, ChangeRate(0, 0.F));
    entry("mnuTempoPitchReset").trigger();
}

TEST_F(TheMenu, ResetsBothPitchSlidersByItsFirstResetAndNothingByItsSecond)
{
    EXPECT_CALL(*player, ChangePitchSemitones(0, 3));
    put(*window, "sldPitchSemi", 3);
    entry("mnuPitchSemiReset").trigger();
    EXPECT_EQ(valueOf(*window, "sldPitchSemi"), 3);
    EXPECT_CALL(*player, ChangePitchSemitones(0, 0));
    entry("mnuPitchReset").trigger();
    EXPECT_EQ(valueOf(*window, "sldPitchSemi"), 0);

    EXPECT_CALL(*player, ChangePitchCents(0, 0.5F));
    put(*window, "sldPitchGrad", 50);
    EXPECT_CALL(*player, ChangePitchCents(0, 0.F));
    entry("mnuPitchReset").trigger();
}

TEST_F(TheMenu, ResetsThePitchByTheKeyThatTwoEntriesShow)
{
    window->show();
    QApplication::setActiveWindow(window.get());
    EXPECT_CALL(*player, ChangePitchSemitones(0, 3));
    put(*window, "sldPitchSemi", 3);
    EXPECT_CALL(*player, ChangePitchSemitones(0, 0));
    QTest::keyClick(window.get(), Qt::Key_End);
    EXPECT_EQ(valueOf(*window, "sldPitchSemi"), 0);
}

TEST_F(TheMenu, ResetsAllChanges)
{
    EXPECT_CALL(*player, ChangeTempo(0, 30.F));
    put(*window, "sldTempo", 30);
    EXPECT_CALL(*player, ChangeTempo(0, 0.F));
    entry("mnuResetAll").trigger();
}

TEST_F(TheMenu, PlaysPausesStopsAndWinds)
{
    EXPECT_CALL(*player, PlaySound(0));
    entry("mnuPlay").trigger();
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(1));
    EXPECT_CALL(*player, PauseSound(0));
    entry("mnuPause").trigger();
    EXPECT_CALL(*player, StopSound(0));
    entry("mnuStop").trigger();
    EXPECT_CALL(*player, GetPosition(0)).WillRepeatedly(Return(5000));
    EXPECT_CALL(*player, GetDuration(0)).WillRepeatedly(Return(10000));
    EXPECT_CALL(*player, SeekSound(0, 0));
    entry("mnuRewind").trigger();
    EXPECT_CALL(*player, SeekSound(0, 10000));
    entry("mnuFForward").trigger();
}

TEST_F(TheMenu, DoesNothingForPlayLoop)
{
    entry("mnuPlayLoop").trigger();
}

TEST_F(TheMenu, MovesTheLoopWindow)
{
    put(*window, "sldBeginLoop", 10);
    put(*window, "sldEndLoop", 20);
    entry("mnuLoopWinFF").trigger();
    EXPECT_EQ(valueOf(*window, "sldBeginLoop"), 11);
    entry("mnuLoopWinBack").trigger();
    EXPECT_EQ(valueOf(*window, "sldBeginLoop"), 10);
}

TEST_F(TheMenu, OpensFilesAndClearsTheList)
{
    FileDialogAnswer answer;
    answer.fileName = "/music/new.mp3";
    answer.fileTitle = "new.mp3";
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answer));
    entry("mnuOpen").trigger();
    EXPECT_EQ(list().count(), 1);
    entry("mnuDelete").trigger();  // nothing is selected
    EXPECT_EQ(list().count(), 1);
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(0));
    entry("mnuClearList").trigger();
    EXPECT_EQ(list().count(), 0);
}

TEST_F(TheMenu, ClosesTheWindowByExit)
{
    window->show();
    entry("mnuExit").trigger();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(TheMenu, OpensTheMakersPages)
{
    EXPECT_CALL(shell, ShellExecute(QString("https://maker.example/support"))).WillOnce(Return(true));
    entry("mnuOnlineSupport").trigger();
    EXPECT_CALL(shell, ShellExecute(QString("https://maker.example/"))).WillOnce(Return(true));
    click(*window, "cmdOrvenda");
}

TEST_F(TheMenu, ShowsNothingWhereThereIsNoManual)
{
    entry("mnuContents").trigger();
}

TEST_F(TheMenu, OpensTheManualBesideTheProgram)
{
    QDir(folder.path()).mkpath("help/manual");
    write("help/manual/index.html", "");
    EXPECT_CALL(shell, ShellExecute(folder.filePath("help/manual/index.html")))
        .Times(2)
        .WillRepeatedly(Return(true));
    entry("mnuContents").trigger();
    click(*window, "tlbCmdHelp");
}

TEST_F(TheMenu, NeverShowsTheParkedButtons)
{
    window->show();
    click(*window, "cmdExpand");
    for (const char* name : {"cmdExit", "cmdOnlineSupport", "cmdAbout", "tlbCmdClearAll", "cmdLoopWindowBack",
                             "cmdLoopWindowForward", "cmdGrab", "cmdUserGreen", "cmdUserRed"})
        EXPECT_FALSE(control<QToolButton>(*window, name).isVisible()) << name;
}

TEST_F(TheMenu, HasParkedButtonsThatOnlyLendTheirPicture)
{
    window->show();
    for (const char* name : {"cmdExit", "cmdOnlineSupport", "cmdAbout", "cmdGrab", "cmdUserGreen", "cmdUserRed"})
        click(*window, name);
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
