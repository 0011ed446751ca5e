#include "encoding/TrackListPanel.h"

#include "encoding/DiscState.h"
#include "encoding/DiscWriteTexts.h"
#include "encoding/IsNoMp3Platform.h"
#include "encoding/PickedTracks.h"
#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"
#include "engines/DiscLength.h"
#include "support/WindowLife.h"
#include "support/dialogs/MsgBox.h"
#include "support/modSpecialFolders.h"
#include "ui_TrackListPanel.h"

#include <algorithm>

TrackListPanel::TrackListPanel(const DiscState& state, CommonDialog& dialog, MsgBox& msgBox, WindowLife& life,
                               QWidget* parent)
    : QWidget(parent)
    , state(state)
    , dialog(dialog)
    , msgBox(msgBox)
    , life(life)
    , ui(std::make_unique<Ui::TrackListPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdAddTrack, &QToolButton::clicked, this, &TrackListPanel::cmdAddTrack_Click);
    connect(ui->cmdRemoveTrack, &QToolButton::clicked, this, &TrackListPanel::cmdRemoveTrack_Click);
    connect(ui->cmdMoveUp, &QToolButton::clicked, this, &TrackListPanel::cmdMoveUp_Click);
    connect(ui->cmdMoveDown, &QToolButton::clicked, this, &TrackListPanel::cmdMoveDown_Click);
    connect(ui->cmdMoveFirst, &QToolButton::clicked, this, &TrackListPanel::cmdMoveFirst_Click);
    connect(ui->cmdMoveLast, &QToolButton::clicked, this, &TrackListPanel::cmdMoveLast_Click);
}

TrackListPanel::~TrackListPanel() = default;

void TrackListPanel::ManageTrackList()
{
    ui->lvwAudioTracks->makeColumns();
}

void TrackListPanel::RefreshTrackList()
{
    const int count = state.Project->GetTrackCount();
    ui->lvwAudioTracks->clearRows();
    QString format;
    for (int position = 1; position <= count; ++position) {
        const QString file = state.Project->GetTrackFile(position);
        format = trackFormatText(state.Project->GetTrackFormat(position), format);
        DiscLength length;
        length.SetLength(state.Project->GetTrackLength(position));
        ui->lvwAudioTracks->addRow(trackNumberText(position), file, format, length.LengthText());
    }
    UpdateDiscInfo();
}

void TrackListPanel::UpdateDiscInfo()
{
    if (state.Device != nullptr)
        state.Device->RefreshDisc(0);
    DiscLength required;
    required.SetLength(state.Project->GetRequiredSpace());
    DiscLength free;
    if (state.Device != nullptr)
        free.SetLength(state.Device->GetFreeSpace(0));
    ui->lblDiscInfo0->setText(QString::number(state.Project->GetTrackCount()) + QStringLiteral(" Audio Tracks"));
    ui->lblDiscInfo1->setText(required.LengthText() + QStringLiteral(" of ") + free.LengthText() +
                              QStringLiteral(" Used"));
}

void TrackListPanel::clearRows()
{
    ui->lvwAudioTracks->clearRows();
}

void TrackListPanel::setIdle(bool idle)
{
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui->lvwAudioTracks, ui->cmdAddTrack, ui->cmdMoveDown, ui->cmdMoveFirst,
                                         ui->cmdMoveLast, ui->cmdMoveUp, ui->cmdRemoveTrack})
        control->setEnabled(idle);
}

void TrackListPanel::focusOnAdding()
{
    ui->cmdAddTrack->setFocus();
}

// A dialog that is cancelled is no way out: what was picked the last time is added once more. The window can be
// closed while the dialog or a message box stands open.
void TrackListPanel::cmdAddTrack_Click()
{
    const WindowLife::Routine routine(life);
    window()->setCursor(Qt::WaitCursor);
    int position = std::max(ui->lvwAudioTracks->selectedRow(), 1);
    askForTracks();
    for (const QString& file : pickedTracks(dlgAddTrack.fileName)) {
        if (life.isClosed())
            return;
        if (addTrack(file, position))
            ++position;
    }
    if (life.isClosed())
        return;
    RefreshTrackList();
    window()->unsetCursor();
}

void TrackListPanel::askForTracks()
{
    dlgAddTrack.cancelIsError = true;
    dlgAddTrack.title = QStringLiteral("Open audio");
    dlgAddTrack.initialFolder = modSpecialFolders::recordingsFolder();
    dlgAddTrack.maxFileSize = 32000;
    dlgAddTrack.flags =
        FileDialogSetup::Explorer | FileDialogSetup::NoLongNames | FileDialogSetup::AllowMultiselect;
    dlgAddTrack.filter = trackFilter(IsNoMp3Platform(HostPlatform::current()));
    const FileDialogAnswer answer = dialog.ShowOpen(dlgAddTrack);
    if (answer.error == 0)
        dlgAddTrack.fileName = answer.fileName;
}

bool TrackListPanel::addTrack(const QString& file, int position)
{
    if (!isAllowedOnDisc(file)) {
        msgBox.show(QStringLiteral("Only .wav, .wma, or .mp3  files are allowed for an audio disc."),
                    MsgBox::Look::Information);
        return false;
    }
    bool ok = false;
    state.Project->AddTrack(file, position, ok);
    if (!ok)
        msgBox.show(QStringLiteral("Invalid Audio Format...High quality audio files only!"),
                    MsgBox::Look::Information);
    return ok;
}

void TrackListPanel::cmdRemoveTrack_Click()
{
    if (const int row = rowToWorkOn(); row > 0) {
        state.Project->RemoveTrack(row);
        RefreshTrackList();
    }
}

void TrackListPanel::cmdMoveUp_Click()
{
    if (const int row = rowToWorkOn(); row > 1) {
        putElsewhere(row, row - 1);
        rebuildRows();
    }
}

// Alone of the four it leaves the list as it was where the track does not go in again.
void TrackListPanel::cmdMoveDown_Click()
{
    const int row = rowToWorkOn();
    if (row > 0 && row < ui->lvwAudioTracks->rowCount() && putElsewhere(row, row + 1))
        rebuildRows();
}

void TrackListPanel::cmdMoveFirst_Click()
{
    if (const int row = rowToWorkOn(); row > 1) {
        putElsewhere(row, 1);
        rebuildRows();
    }
}

// The list still has the track that is taken out, so that this is one past the end: the project takes it as the
// end.
void TrackListPanel::cmdMoveLast_Click()
{
    const int rows = ui->lvwAudioTracks->rowCount();
    if (const int row = rowToWorkOn(); row > 0 && row < rows) {
        putElsewhere(row, rows + 1);
        rebuildRows();
    }
}

int TrackListPanel::rowToWorkOn()
{
    const int row = ui->lvwAudioTracks->selectedRow();
    if (row == 0)
        msgBox.show(QStringLiteral("No item is selected."), MsgBox::Look::Information);
    return row;
}

bool TrackListPanel::putElsewhere(int row, int position)
{
    const QString file = ui->lvwAudioTracks->file(row);
    state.Project->RemoveTrack(row);
    bool ok = false;
    state.Project->AddTrack(file, position, ok);
    return ok;
}

void TrackListPanel::rebuildRows()
{
    ui->lvwAudioTracks->clearRows();
    RefreshTrackList();
}

#include "moc_TrackListPanel.cpp"
