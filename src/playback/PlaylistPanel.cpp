#include "playback/PlaylistPanel.h"

#include "engines/PlayerEngine.h"
#include "playback/PlaybackState.h"
#include "playback/PlaylistItem.h"
#include "playback/PositionPanel.h"
#include "support/dialogs/AudioFileFilter.h"
#include "support/dialogs/CommonDialog.h"
#include "ui_PlaylistPanel.h"

#include <QMenu>

PlaylistPanel::PlaylistPanel(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                             CommonDialog& CommonDialog1, QWidget* parent)
    : QWidget(parent)
    , SoundTouch(SoundTouch)
    , state(state)
    , position(position)
    , CommonDialog1(CommonDialog1)
    , ui(std::make_unique<Ui::PlaylistPanel>())
    , mnuList(new QMenu(QStringLiteral("List"), this))
{
    ui->setupUi(this);
    ui->lstPath->hide();
    mnuList->setObjectName("mnuList");
    mnuList->addActions(
        {ui->mnuPlayListItem, ui->mnuPlayLoopListItem, ui->mnuRemoveListItem, ui->mnuClearPlaylist});

    connect(ui->cmdOpen, &QToolButton::clicked, this, &PlaylistPanel::cmdOpen_Click);
    connect(ui->lstAudio, &ListBox::Click, this, &PlaylistPanel::lstAudio_Click);
    connect(ui->lstAudio, &QWidget::customContextMenuRequested, this, &PlaylistPanel::showListMenu);
    connect(ui->mnuPlayListItem, &QAction::triggered, this, &PlaylistPanel::playWanted);
    connect(ui->mnuPlayLoopListItem, &QAction::triggered, this, &PlaylistPanel::playLoopWanted);
    connect(ui->mnuRemoveListItem, &QAction::triggered, this, &PlaylistPanel::tlbCmdClear_Click);
    connect(ui->mnuClearPlaylist, &QAction::triggered, this, &PlaylistPanel::tlbCmdClearAll_Click);
}

PlaylistPanel::~PlaylistPanel() = default;

ListBox& PlaylistPanel::lstAudio()
{
    return *ui->lstAudio;
}

ListBox& PlaylistPanel::lstPath()
{
    return *ui->lstPath;
}

void PlaylistPanel::cmdOpen_Click()
{
    FileDialogSetup setup;
    setup.title = QStringLiteral("Open audio");
    setup.filter = audioFileFilter;
    setup.flags = FileDialogSetup::AllowMultiselect | FileDialogSetup::Explorer | FileDialogSetup::NoLongNames;
    setup.maxFileSize = 32000;
    setup.cancelIsError = true;
    const FileDialogAnswer answer = CommonDialog1.ShowOpen(setup);
    if (answer.error != 0)
        return;

    for (const PlaylistItem& item : playlistItems(answer.fileName, answer.fileTitle)) {
        ui->lstAudio->addItem(item.label);
        ui->lstPath->addItem(item.path);
    }
}

void PlaylistPanel::tlbCmdClear_Click()
{
    const int index = ui->lstAudio->listIndex();
    if (index < 0)
        return;
    ui->lstPath->removeItem(index);
    ui->lstAudio->removeItem(index);
    position.resetDisplay();
    SoundTouch.CloseSound(0);
}

void PlaylistPanel::tlbCmdClearAll_Click()
{
    ui->lstAudio->clear();
    ui->lstPath->clear();
    position.resetDisplay();
    if (SoundTouch.GetDuration(0) >= 1)
        SoundTouch.CloseSound(0);
}

void PlaylistPanel::lstAudio_Click()
{
    state.CurrentAudioPath = ui->lstPath->itemText(ui->lstAudio->listIndex());
    emit itemPicked();
}

// The press of the right button has picked the item under the pointer by now.
void PlaylistPanel::showListMenu(const QPoint& point)
{
    mnuList->popup(ui->lstAudio->viewport()->mapToGlobal(point));
}

#include "moc_PlaylistPanel.cpp"
