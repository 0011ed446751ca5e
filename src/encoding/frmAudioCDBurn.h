#pragma once

#include "encoding/DiscState.h"
#include "encoding/DiscSurroundings.h"
#include "support/WindowLife.h"

#include <QDialog>
#include <memory>

class DiscDevicePanel;
class DiscEngine;
class DiscWriting;
class TrackListPanel;
class WriteProgressPanel;
namespace Ui {
class frmAudioCDBurn;
}

/// The audio CD writer: lists tracks and writes them to a disc.
///
/// It composes: a panel each for the device and the options, the list of tracks, and the progress with its two
/// commands, and the write. It is independent of the main window's sound and has an engine of its own.
///
/// The window is made, then Load() runs once while it is still hidden, then it is shown, without blocking. It keeps
/// nothing from one opening to the next. It refuses to be closed, and says nothing, until the load is through and
/// while a write is under way, and Escape never closes it: a list of tracks is not quickly made again. Where a
/// routine of its own is on the stack when it is closed, Qt::WA_DeleteOnClose deletes it only behind that. A window
/// that is deleted while it writes gives the write up.
class frmAudioCDBurn : public QDialog
{
    Q_OBJECT

public:
    frmAudioCDBurn(std::unique_ptr<DiscEngine> engine, const DiscSurroundings& around, QWidget* parent = nullptr);
    ~frmAudioCDBurn() override;

    /// Finds the devices. May show message boxes.
    void Load();

    /// Every road to the window's end leads through here, and through closeEvent() where it is not to be seen.
    void done(int result) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const std::unique_ptr<DiscEngine> AudioBurner;
    const DiscSurroundings around;
    DiscState state;
    WindowLife life;
    const std::unique_ptr<Ui::frmAudioCDBurn> ui;

    DiscDevicePanel* devices = nullptr;
    TrackListPanel* tracks = nullptr;
    WriteProgressPanel* progress = nullptr;
    std::unique_ptr<DiscWriting> writing;
};
