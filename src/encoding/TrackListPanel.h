#pragma once

#include "support/dialogs/CommonDialog.h"

#include <QWidget>
#include <memory>

class MsgBox;
class WindowLife;
struct DiscState;
namespace Ui {
class TrackListPanel;
}

/// The tracks that are to become a disc: adding, ordering, removing, and how much of the disc they need.
///
/// The project holds the tracks. The list here is rebuilt from it after each change, with no row selected.
class TrackListPanel : public QWidget
{
    Q_OBJECT

public:
    /// The window's state and life, the dialog and the message box outlive the panel. The commands need the state's
    /// project.
    TrackListPanel(const DiscState& state, CommonDialog& dialog, MsgBox& msgBox, WindowLife& life,
                   QWidget* parent = nullptr);
    ~TrackListPanel() override;

    /// Sets up the list, once.
    void ManageTrackList();

    /// Writes the rows from the project.
    void RefreshTrackList();

    /// Writes how many tracks there are, and what they need of the disc that is loaded now.
    void UpdateDiscInfo();

    /// Takes the rows out of the list, and leaves the project as it is.
    void clearRows();

    /// Whether the controls can be used.
    void setIdle(bool idle);

    /// Puts the keyboard where the work begins.
    void focusOnAdding();

private:
    void cmdAddTrack_Click();
    void cmdRemoveTrack_Click();
    void cmdMoveUp_Click();
    void cmdMoveDown_Click();
    void cmdMoveFirst_Click();
    void cmdMoveLast_Click();

    void askForTracks();
    bool addTrack(const QString& file, int position);

    /// The number of the selected row; where none is, says so and gives 0.
    int rowToWorkOn();

    /// Takes the track out and puts it in again. False where it did not go in.
    bool putElsewhere(int row, int position);
    void rebuildRows();

    const DiscState& state;
    CommonDialog& dialog;
    MsgBox& msgBox;
    WindowLife& life;
    const std::unique_ptr<Ui::TrackListPanel> ui;

    /// Keeps the file name of the last pick.
    FileDialogSetup dlgAddTrack;
};
