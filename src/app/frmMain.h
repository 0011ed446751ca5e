#pragma once

#include "playback/PlaybackState.h"
#include "support/modList.h"

#include <QMainWindow>
#include <memory>

class CommonDialog;
class ConversionStatus;
class EditorEngine;
class EngineSet;
class MainToolBar;
class MsgBox;
class PlayerEngine;
class PlaylistPanel;
class PositionPanel;
class TempoPitchPanel;
class TrackLoader;
class TransportPanel;
namespace Ui {
class frmMain;
}

/// The program: the window that opens first, owns the player and the editor, and ends the process when it closes.
///
/// It only composes: each panel holds the logic of its concern, and the window connects the panels with each other
/// and with the toolbar.
///
/// The window is made, then Load() runs once while it is still hidden, then it is shown. Closing it writes the
/// playlist and cannot be undone. No engine is stopped then: the sound ends with the player, and that with the
/// window.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    /// @p applicationFolder holds the playlist files. The engine set and the dialogs outlive the window.
    frmMain(EngineSet& engines, CommonDialog& CommonDialog1, MsgBox& msgBox, const QString& applicationFolder,
            QWidget* parent = nullptr);
    ~frmMain() override;

    /// Starts the engines and reads the playlist. A step that fails is given up and the next one runs.
    void Load();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void placePanels();
    void connectPanels();
    void connectToolBar();
    void orderTabs();
    void lstAudio_Click();
    void Unload();

    QString listFile() const;
    QString pathFile() const;

    const QString applicationFolder;
    modList lists;
    PlaybackState state;
    bool unloaded = false;

    const std::unique_ptr<PlayerEngine> SoundTouch;
    const std::unique_ptr<EditorEngine> Editor;
    const std::unique_ptr<Ui::frmMain> ui;

    PositionPanel* const position;
    TempoPitchPanel* const tempoPitch;
    TransportPanel* const transport;
    PlaylistPanel* const playlist;
    MainToolBar* const toolBar;
    const std::unique_ptr<TrackLoader> loader;
    std::unique_ptr<ConversionStatus> conversionStatus;
};
