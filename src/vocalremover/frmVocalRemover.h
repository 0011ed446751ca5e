#pragma once

#include "support/WindowLife.h"
#include "vocalremover/RemoverState.h"
#include "vocalremover/VocalRemoverEngines.h"
#include "vocalremover/VocalRemoverSurroundings.h"

#include <QDialog>
#include <memory>

class FilesPanel;
class FilterPanel;
class PlayPreview;
class PreviewPanel;
class ProcessAudio;
class RemoverStatus;
class VocalPositionPanel;
namespace Ui {
class frmVocalRemover;
}

/// The vocal remover: makes of a file another one without the vocals, and lets a stretch of it be heard before.
///
/// It composes: a panel each for the files, the cut-offs and the gain, the place of the vocals and the preview, and
/// the two routines, a run and a preview. It is independent of the main window's sound and has engines of its own.
///
/// The window is made, then Load() runs once while it is still hidden, then it is shown, blocking or not. It keeps
/// nothing from one opening to the next. Closing it is never refused: removals under way are given up, waits end,
/// and the player and the editor end at once, so that nothing sounds and nothing is written any more. Where a
/// routine of its own is on the stack then, Qt::WA_DeleteOnClose deletes the window only behind that. Escape does
/// not close it, for a run takes minutes.
class frmVocalRemover : public QDialog
{
    Q_OBJECT

public:
    /// All engines are there.
    frmVocalRemover(VocalRemoverEngines engines, const VocalRemoverSurroundings& surroundings,
                    QWidget* parent = nullptr);
    ~frmVocalRemover() override;

    void Load();

    /// Every road to the window's end leads through here.
    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void placePanels();
    void connectCommands();
    void connectEngines();
    void orderTabs();
    void inputChosen();

    const VocalRemoverSurroundings surroundings;
    RemoverState state;
    WindowLife life;
    VocalRemoverEngines engines;
    const std::unique_ptr<Ui::frmVocalRemover> ui;

    // Behind the form's own controls, which come first for the Tab key.
    FilesPanel* files = nullptr;
    FilterPanel* filter = nullptr;
    VocalPositionPanel* vocalPosition = nullptr;
    PreviewPanel* preview = nullptr;
    std::unique_ptr<RemoverStatus> status;
    std::unique_ptr<ProcessAudio> processAudio;
    std::unique_ptr<PlayPreview> playPreview;
};
