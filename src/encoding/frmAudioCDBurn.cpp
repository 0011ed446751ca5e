#include "encoding/frmAudioCDBurn.h"

#include "encoding/DiscDevicePanel.h"
#include "encoding/DiscWriting.h"
#include "encoding/TrackListPanel.h"
#include "encoding/WriteProgressPanel.h"
#include "engines/DiscEngine.h"
#include "support/Pictures.h"
#include "support/dialogs/MsgBox.h"
#include "ui_frmAudioCDBurn.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <utility>

frmAudioCDBurn::frmAudioCDBurn(std::unique_ptr<DiscEngine> engine, const DiscSurroundings& around, QWidget* parent)
    : QDialog(parent, Qt::Window)
    , AudioBurner(std::move(engine))
    , around(around)
    , life(*this)
    , ui(std::make_unique<Ui::frmAudioCDBurn>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    devices = new DiscDevicePanel(*AudioBurner, state, around.msgBox, this);
    tracks = new TrackListPanel(state, around.dialog, around.msgBox, life, this);
    progress = new WriteProgressPanel(this);
    writing = std::make_unique<DiscWriting>(
        DiscWritingParts{*AudioBurner, *devices, *tracks, *progress, state, life, around.msgBox});
    ui->placeOfDevices->addWidget(devices);
    ui->placeOfTracks->addWidget(tracks);
    ui->placeOfProgress->addWidget(progress);
    connect(devices, &DiscDevicePanel::deviceChanged, tracks, &TrackListPanel::UpdateDiscInfo);
    tracks->focusOnAdding();
}

frmAudioCDBurn::~frmAudioCDBurn() = default;

void frmAudioCDBurn::Load()
{
    if (!AudioBurner->InitDevices(false))
        around.msgBox.show(QStringLiteral("Devices Cannot be initialized...Contact support!"), MsgBox::Look::Plain);
    state.Project = AudioBurner->GetAudioProject();
    devices->FillDeviceList();
    tracks->ManageTrackList();
    writing->SetControlsIdle(true);
}

void frmAudioCDBurn::done(int result)
{
    if (!state.WindowIdle)
        return;
    life.close();
    QDialog::done(result);
    setEnabled(false);
}

void frmAudioCDBurn::closeEvent(QCloseEvent* event)
{
    if (state.WindowIdle)
        QDialog::closeEvent(event);
    else
        event->ignore();
}

void frmAudioCDBurn::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        event->ignore();
    else
        QDialog::keyPressEvent(event);
}

#include "moc_frmAudioCDBurn.cpp"
