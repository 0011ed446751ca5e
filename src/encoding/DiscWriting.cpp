#include "encoding/DiscWriting.h"

#include "encoding/DiscDevicePanel.h"
#include "encoding/DiscState.h"
#include "encoding/DiscWriteTexts.h"
#include "encoding/StageDisplay.h"
#include "encoding/TrackListPanel.h"
#include "encoding/WriteProgressPanel.h"
#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"
#include "engines/DiscEngine.h"
#include "engines/DiscLength.h"
#include "support/WindowLife.h"
#include "support/dialogs/MsgBox.h"

DiscWriting::DiscWriting(const DiscWritingParts& parts, QObject* parent)
    : QObject(parent)
    , parts(parts)
{
    connect(&parts.progress, &WriteProgressPanel::writeWanted, this, &DiscWriting::cmdWriteDisc_Click);
    connect(&parts.progress, &WriteProgressPanel::cancelWanted, this, &DiscWriting::cmdCancel_Click);
    const DiscEngine* AudioBurner = &parts.AudioBurner;
    connect(AudioBurner, &DiscEngine::WriteProgress, this, &DiscWriting::AudioBurner_WriteProgress);
    connect(AudioBurner, &DiscEngine::FileWarning, this, &DiscWriting::AudioBurner_FileWarning);
    connect(AudioBurner, &DiscEngine::WriteError, this, &DiscWriting::AudioBurner_WriteError);
}

void DiscWriting::SetControlsIdle(bool idle)
{
    parts.devices.setIdle(idle);
    parts.tracks.setIdle(idle);
    parts.progress.setWriteEnabled(idle);
    parts.progress.setCancelEnabled(!idle);
    parts.state.WindowIdle = idle;
    QWidget* window = parts.progress.window();
    if (idle)
        window->unsetCursor();
    else
        window->setCursor(Qt::WaitCursor);
}

// While a message box of the check stood open the window can have been closed, or the command given once more.
void DiscWriting::cmdWriteDisc_Click()
{
    const WindowLife::Routine routine(parts.life);
    if (!CheckDiscSpace() || parts.life.isClosed() || !parts.state.WindowIdle)
        return;
    AudioProject& project = *parts.state.Project;
    project.SetProjectKind(1);
    parts.devices.passSettingsTo(project);
    bool ok = false;
    project.StartWrite(parts.state.Device, ok);
    if (ok)
        SetControlsIdle(false);
    else
        parts.msgBox.show(QStringLiteral("Disc Write could not be started."), MsgBox::Look::Critical);
}

void DiscWriting::cmdCancel_Click()
{
    parts.state.Project->AbortWrite();
    parts.progress.setStatus(QStringLiteral("Aborting Write...Please Wait!"));
}

// A disc that is not blank is only warned of: what decides is the room on it.
bool DiscWriting::CheckDiscSpace()
{
    DiscDevice* device = parts.state.Device;
    DiscInfo disc;
    if (device != nullptr) {
        device->RefreshDisc(0);
        disc = device->GetDiscInfo();
    }
    if (disc.GetDiscUsed() != 0 || !disc.GetDiscBlank() || !disc.GetDiscPresent())
        parts.msgBox.show(QStringLiteral("Please insert a blank disc before continuing!"),
                          MsgBox::Look::Information);
    if (parts.life.isClosed())
        return false;

    DiscLength free;
    if (device != nullptr)
        free.SetLength(device->GetFreeSpace(0));
    DiscLength required;
    required.SetLength(parts.state.Project->GetRequiredSpace());
    if (free.GetLength() >= required.GetLength())
        return true;
    parts.msgBox.show(QStringLiteral("Free Space on the loaded disc is ") + free.LengthText() +
                          QStringLiteral("\nThis audio image requires ") + required.LengthText() +
                          QStringLiteral(" of Free Space!"),
                      MsgBox::Look::Information);
    return false;
}

void DiscWriting::AudioBurner_WriteProgress(int totalPercent, int track, int trackPercent, DiscStage stage)
{
    const StageDisplay* display = StageDisplay::of(stage);
    if (display == nullptr)
        return;
    parts.progress.setStatus(display->status(track));
    if (display->showsTrackPercent)
        parts.progress.setTrackProgress(trackPercent);
    if (display->showsTotalPercent)
        parts.progress.setTotalProgress(totalPercent);

    if (stage == DiscStage::Completed)
        writeCompleted();
    else if (stage == DiscStage::Cancelled)
        writeCancelled();
    else if (stage == DiscStage::Failed)
        SetControlsIdle(true);
}

void DiscWriting::writeCompleted()
{
    parts.msgBox.show(QStringLiteral("Writing is complete!"), MsgBox::Look::Information);
    if (!parts.state.Project->GetTestMode() && parts.state.Device != nullptr)
        parts.state.Device->ReleaseDisc(false);
    SetControlsIdle(true);
    parts.progress.setTrackProgress(0);
    parts.progress.setTotalProgress(0);
    parts.tracks.clearRows();
    parts.state.Project->ClearTracks();
    parts.progress.setStatus(QStringLiteral("Status : Idle"));
}

// The tracks and the bars stay as they are.
void DiscWriting::writeCancelled()
{
    parts.msgBox.show(QStringLiteral("Write Cancelled!"), MsgBox::Look::Information);
    SetControlsIdle(true);
}

void DiscWriting::AudioBurner_FileWarning(const DiscFileReport& report, bool& goOn)
{
    goOn = true;
    parts.progress.setStatus(QStringLiteral("File Warning:") + report.fileName);
}

void DiscWriting::AudioBurner_WriteError(const DiscWriteError& error)
{
    parts.msgBox.show(FormatWriteError(error), MsgBox::Look::Critical);
}

#include "moc_DiscWriting.cpp"
