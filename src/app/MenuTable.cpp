#include "app/MenuTable.h"

#include <QCoreApplication>

#define CAPTION(text) QT_TRANSLATE_NOOP("MainMenu", text)

namespace {

const MenuEntry separator;

QList<MenuEntry> fileEntries()
{
    return {
        {"mnuOpen", CAPTION("&Open"), Qt::CTRL | Qt::Key_O, "tlbCmdOpen", {"cmdOpen"}},
        {"mnuSave", CAPTION("&Save as"), Qt::CTRL | Qt::Key_S, "tlbCmdSaveAs", {"tlbCmdSaveAs"}},
        {"mnuDelete", CAPTION("&Delete selected item"), Qt::Key_Delete, "tlbCmdClear", {"tlbCmdClear"}},
        {"mnuClearList",
         CAPTION("&Clear playlist"),
         Qt::CTRL | Qt::Key_Delete,
         "tlbCmdClearAll",
         {"tlbCmdClearAll"}},
        separator,
        {"mnuRewind", CAPTION("5 seconds &back"), Qt::KeypadModifier | Qt::Key_1, "tlbCmdRewind", {"cmdRewind"}},
        {"mnuPlay", CAPTION("&Play"), Qt::CTRL | Qt::Key_P, "tlbCmdPlay", {"tlbCmdPlay"}},
        // The toolbar's button does nothing, and so does the entry: a loop is started from the panel.
        {"mnuPlayLoop", CAPTION("Play &Loop"), Qt::CTRL | Qt::Key_L, "tlbCmdPlayLoop", {"tlbCmdPlayLoop"}},
        {"mnuFForward",
         CAPTION("5 seconds &forward"),
         Qt::KeypadModifier | Qt::Key_3,
         "tlbCmdFForward",
         {"cmdFForward"}},
        {"mnuPause", CAPTION("P&ause"), Qt::Key_Pause, "tlbCmdPause", {"tlbCmdPause"}},
        {"mnuStop", CAPTION("&Stop"), Qt::Key_Backspace, "tlbCmdStop", {"tlbCmdStop"}},
        {"mnuLoopWinFF",
         CAPTION("&Loop window forward"),
         Qt::SHIFT | Qt::Key_Right,
         "tlbCmdLoopWinForward",
         {"cmdLoopWindowForward"}},
        {"mnuLoopWinBack",
         CAPTION("Loop window ba&ck"),
         Qt::SHIFT | Qt::Key_Left,
         "tlbCmdLoopWinBack",
         {"cmdLoopWindowBack"}},
        separator,
        {"mnuResetAll", CAPTION("&Reset all changes"), Qt::Key_Escape, "cmdResetAll", {"cmdResetAll"}},
        separator,
        {"mnuExit", CAPTION("&Exit"), Qt::ALT | Qt::Key_F4, "cmdExit", {}},
    };
}

// The captions count in tenths of the steps that the sliders take.
QList<MenuEntry> tempoEntries()
{
    return {
        {"mnuTempo10Up", CAPTION("&1% Up"), Qt::Key_Right, "cmdRate10Up", {"cmdTempo10Up"}},
        {"mnuTempo1Up", CAPTION("&0.1% Up"), Qt::CTRL | Qt::Key_Right, "cmdRate1Up", {"cmdTempo1Up"}},
        {"mnuTempoReset", CAPTION("&Reset"), Qt::KeypadModifier | Qt::Key_0, "cmdRateReset", {"cmdTempoReset"}},
        {"mnuTempo1Down", CAPTION("&0.1% Down"), Qt::CTRL | Qt::Key_Left, "cmdRate1Down", {"cmdTempo1Down"}},
        {"mnuTempo10Down", CAPTION("&1% Down"), Qt::Key_Left, "cmdRate10Down", {"cmdTempo10Down"}},
    };
}

QList<MenuEntry> pitchEntries()
{
    return {
        {"mnuPitch10Up", CAPTION("&1% Up"), Qt::CTRL | Qt::Key_Up, "cmdRate10Up", {"cmdPitch10UpGrad"}},
        {"mnuPitch1Up", CAPTION("&0.1% Up"), Qt::ALT | Qt::Key_Up, "cmdRate1Up", {"cmdPitch1UpGrad"}},
        {"mnuPitchReset",
         CAPTION("&Reset"),
         Qt::Key_End,
         "cmdRateReset",
         {"cmdPitchResetGrad", "cmdPitchResetSemi"}},
        {"mnuPitch1Down", CAPTION("&0.1% Down"), Qt::ALT | Qt::Key_Down, "cmdRate1Down", {"cmdPitch1DownGrad"}},
        {"mnuPitch10Down", CAPTION("&1% Down"), Qt::CTRL | Qt::Key_Down, "cmdRate10Down", {"cmdPitch10DownGrad"}},
        separator,
        {"mnuPitchSemi12Up", CAPTION("&Octave Up"), Qt::SHIFT | Qt::Key_Up, "cmdRate10Up", {"cmdPitch12UpSemi"}},
        {"mnuPitchSemi1Up", CAPTION("&Semitone Up"), Qt::Key_Up, "cmdRate1Up", {"cmdPitch1UpSemi"}},
        // Inert: mnuPitchReset, which has the same key, resets both pitch sliders.
        {"mnuPitchSemiReset", CAPTION("&Reset"), Qt::Key_End, "cmdRateReset", {}},
        {"mnuPitchSemi1Down", CAPTION("&Semitone Down"), Qt::Key_Down, "cmdRate1Down", {"cmdPitch1DownSemi"}},
        {"mnuPitchSemi12Down",
         CAPTION("Octave Down"),
         Qt::SHIFT | Qt::Key_Down,
         "cmdRate10Down",
         {"cmdPitch12DownSemi"}},
    };
}

QList<MenuEntry> tempoPitchEntries()
{
    return {
        {"mnuTempoPitch10Up", CAPTION("&1% Up"), Qt::Key_PageUp, "cmdRate10Up", {"cmdRate10Up"}},
        {"mnuTempoPitch1Up", CAPTION("&0.1% Up"), Qt::CTRL | Qt::Key_PageUp, "cmdRate1Up", {"cmdRate1Up"}},
        {"mnuTempoPitchReset", CAPTION("&Reset"), Qt::Key_Home, "cmdRateReset", {"cmdRateReset"}},
        {"mnuTempoPitch1Down",
         CAPTION("&0.1% Down"),
         Qt::CTRL | Qt::Key_PageDown,
         "cmdRate1Down",
         {"cmdRate1Down"}},
        {"mnuTempoPitch10Down", CAPTION("&1% Down"), Qt::Key_PageDown, "cmdRate10Down", {"cmdRate10Down"}},
    };
}

QList<MenuEntry> toolsEntries()
{
    return {
        {"mnuRecordResult",
         CAPTION("Record modified audio"),
         Qt::CTRL | Qt::Key_R,
         "tlbCmdRecord",
         {"tlbCmdRecord"}},
        {"mnuMP3", CAPTION("&Encode recorded audio"), Qt::CTRL | Qt::Key_E, "tlbCmdMP3", {"tlbCmdMP3"}},
        {"mnuBpm", CAPTION("&BPM calculator"), Qt::CTRL | Qt::Key_B, "tlbCmdBPMCalc", {"tlbCmdBPMCalc"}},
        {"mnuTranspose",
         CAPTION("&Transpose calculator"),
         Qt::CTRL | Qt::Key_T,
         "tlbCmdKeyCalc",
         {"tlbCmdKeyCalc"}},
        // Not a press of the toolbar's button: from there the window blocks this one, from here it does not.
        {"mnuVocalRemover", CAPTION("&Vocal remover"), Qt::CTRL | Qt::Key_V, "tlbCmdVocalRemover", {}},
    };
}

QList<MenuEntry> helpEntries()
{
    return {
        {"mnuContents", CAPTION("&Contents..."), Qt::Key_F1, "tlbCmdHelp", {"tlbCmdHelp"}},
        separator,
        {"mnuOnlineSupport", CAPTION("&Support online"), {}, "cmdOnlineSupport", {}},
        {"mnuAbout", CAPTION("&About Larkspin..."), {}, "cmdAbout", {}},
    };
}

}  // namespace

const QList<MenuOfTable>& menuTable()
{
    static const QList<MenuOfTable> table{
        {"mnuFile", CAPTION("&File"), fileEntries()},
        {"mnuTempo", CAPTION("&Tempo"), tempoEntries()},
        {"mnuPitch", CAPTION("&Pitch"), pitchEntries()},
        {"mnuTempoPitch", CAPTION("Tempo &and pitch"), tempoPitchEntries()},
        {"mnuTools", CAPTION("T&ools"), toolsEntries()},
        {"keyHelp", CAPTION("&Help"), helpEntries()},
    };
    return table;
}
