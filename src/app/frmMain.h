#pragma once

#include "app/HelpFile.h"
#include "app/OpenWindows.h"
#include "app/Surroundings.h"
#include "playback/PlaybackState.h"
#include "support/TipOfDay.h"
#include "support/modList.h"

#include <QMainWindow>
#include <memory>

class ConversionStatus;
class EditorEngine;
class EqualizerPanel;
class IndependentWindows;
class KeypadAccelerators;
class LevelPanel;
class MainMenu;
class MainToolBar;
class MarksPanel;
class MetersPanel;
class ParkedButtons;
class PlayerEngine;
class PlaylistPanel;
class PositionPanel;
class QTimer;
class SaveAs;
class TempoPitchPanel;
class TrackLoader;
class TransportPanel;
namespace Ui {
class frmMain;
}

/// The program: the window that opens first, owns the player and the editor, and ends the process when it closes.
///
/// It only composes: each panel holds the logic of its concern, and the window connects the panels with each other,
/// with menu, toolbar and keys, and with the windows that they open.
///
/// The window is made, then Load() runs once while it is still hidden, then it is shown. Closing it writes the
/// playlist, closes the windows beside it, and cannot be undone. No engine is stopped then: the sound ends with the
/// player, and that with the program. Only where a window refuses to be closed, and the program therefore goes on,
/// is the sound ended.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMain(const Surroundings& surroundings, QWidget* parent = nullptr);
    ~frmMain() override;

    /// Starts the engines, reads the playlist and builds the menu, behind the splash window. A step that fails is
    /// given up and the next one runs.
    void Load();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void placePanels();
    void connectPanels();
    void connectToolBar();
    void connectMenu();
    void connectMarkKeys();
    void orderTabs();
    void connectCalculators();
    void connectSaveAs();
    void lstAudio_Click();
    void tmrTip_Timer();
    void cmdExpand_Click();
    void cmdColapse_Click();
    void setHeight(int wanted);
    void openKeyCalculator();
    void openBpmCalculator();
    void openAbout();
    void Unload();

    QString listFile() const;
    QString pathFile() const;

    const Surroundings surroundings;
    const HelpFile help;
    modList lists;
    PlaybackState state;
    TipPlace tipPlace;
    OpenWindows windows;
    bool unloaded = false;
    bool showingTip = false;

    const std::unique_ptr<PlayerEngine> SoundTouch;
    const std::unique_ptr<EditorEngine> Editor;

    const std::unique_ptr<Ui::frmMain> ui;

    PositionPanel* const position;
    TempoPitchPanel* const tempoPitch;
    TransportPanel* const transport;
    PlaylistPanel* const playlist;
    MarksPanel* const marks;
    LevelPanel* const level;
    MetersPanel* const meters;
    EqualizerPanel* const equalizer;
    MainToolBar* const toolBar;
    ParkedButtons* const parked;
    const std::unique_ptr<KeypadAccelerators> keypad;
    MainMenu* const menu;
    QTimer* const tmrTip;
    const std::unique_ptr<IndependentWindows> independent;
    const std::unique_ptr<TrackLoader> loader;
    std::unique_ptr<ConversionStatus> conversionStatus;
    std::unique_ptr<SaveAs> saveAs;
};
