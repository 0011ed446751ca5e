#include "recorder/SilencePanel.h"

#include "engines/RecorderEngine.h"
#include "recorder/RecordingNames.h"
#include "recorder/RecordingSession.h"
#include "support/Numbers.h"
#include "support/SettingsStore.h"
#include "ui_SilencePanel.h"

#include <QFile>
#include <QSignalBlocker>
#include <utility>

namespace {

constexpr int shortestPause = 1;
constexpr int longestPause = 9;

/// No pause is waited for: what is silent is left out at once.
constexpr int noPause = 0;

}  // namespace

SilencePanel::SilencePanel(RecorderEngine& Recorder, RecordingSession& session, const RecordingNames& names,
                           SettingsStore& settings, QWidget* parent)
    : QWidget(parent)
    , Recorder(Recorder)
    , session(session)
    , names(names)
    , settings(settings)
    , ui(std::make_unique<Ui::SilencePanel>())
{
    ui->setupUi(this);
    connect(ui->chkSilenceActions, &QCheckBox::toggled, this, &SilencePanel::chkSilenceActions_Click);
    connectOption(*ui->optRemoveSilence, &SilencePanel::optRemoveSilence_Click);
    connectOption(*ui->optSplitOnSilence, &SilencePanel::optSplitOnSilence_Click);
    connect(ui->cmdSilenceTimeUp, &QToolButton::clicked, this, &SilencePanel::cmdSilenceTimeUp_Click);
    connect(ui->cmdSilenceTimeDown, &QToolButton::clicked, this, &SilencePanel::cmdSilenceTimeDown_Click);
    connect(ui->sldDetectionLevel, &Slider::Change, this, &SilencePanel::sldDetectionLevel_Change);
    connect(ui->cmdDetect, &QToolButton::toggled, this, &SilencePanel::cmdDetect_Click);
    connect(&Recorder, &RecorderEngine::SilenceDetected, this, &SilencePanel::Recorder_SilenceDetected);
    connect(&Recorder, &RecorderEngine::SoundDetected, this, &SilencePanel::Recorder_SoundDetected);
}

SilencePanel::~SilencePanel() = default;

// An option is selected again by a click on it, which toggles nothing: that is how the user takes back what the
// buttons of the pause wrote. A screen reader toggles without a click.
void SilencePanel::connectOption(QRadioButton& option, void (SilencePanel::*select)())
{
    connect(&option, &QRadioButton::toggled, this, [this, select](bool selected) {
        if (selected)
            (this->*select)();
    });
    connect(&option, &QRadioButton::pressed, this, [this, &option] { pressedAgain = option.isChecked(); });
    connect(&option, &QRadioButton::clicked, this, [this, select] {
        if (std::exchange(pressedAgain, false))
            (this->*select)();
    });
}

void SilencePanel::readDetectionValue()
{
    ui->sldDetectionLevel->setValue(leadingNumber(settings.GetSetting("Options", "DetectionValue", "3000")));
}

void SilencePanel::chkSilenceActions_Click()
{
    const bool used = ui->chkSilenceActions->isChecked();
    for (QWidget* control :
         std::initializer_list<QWidget*>{ui->cmdSilenceTimeUp, ui->cmdSilenceTimeDown, ui->optRemoveSilence,
                                         ui->optSplitOnSilence, ui->lblSilenceActions})
        control->setEnabled(used);
    ui->cmdDetect->setEnabled(!used);
    if (!used) {
        Recorder.EnableSilenceDetection(false);
        Recorder.SilenceMinimumDuration(noPause);
    } else if (ui->optSplitOnSilence->isChecked()) {
        optSplitOnSilence_Click();
    } else if (ui->optRemoveSilence->isChecked()) {
        optRemoveSilence_Click();
    }
}

void SilencePanel::optRemoveSilence_Click()
{
    watch(noPause);
}

void SilencePanel::optSplitOnSilence_Click()
{
    watch(pauseSeconds() * 1000);
}

void SilencePanel::watch(int silenceMilliseconds)
{
    Recorder.EnableSilenceDetection(true);
    Recorder.SilenceThreshold(ui->sldDetectionLevel->value());
    Recorder.SilenceMinimumDuration(silenceMilliseconds);
}

// Written also where silence is removed, for which the engine needs 0: it then holds the pause until an option is
// selected again.
void SilencePanel::cmdSilenceTimeUp_Click()
{
    const int seconds = pauseSeconds();
    putPauseSeconds(seconds < longestPause ? seconds + 1 : seconds);
}

void SilencePanel::cmdSilenceTimeDown_Click()
{
    const int seconds = pauseSeconds();
    putPauseSeconds(seconds > shortestPause ? seconds - 1 : seconds);
}

int SilencePanel::pauseSeconds() const
{
    return leadingNumber(ui->lblSilenceActions->text());
}

void SilencePanel::putPauseSeconds(int seconds)
{
    ui->lblSilenceActions->setText(QStringLiteral("%1 sec.").arg(seconds));
    Recorder.SilenceMinimumDuration(seconds * 1000);
}

void SilencePanel::sldDetectionLevel_Change()
{
    Recorder.SilenceThreshold(ui->sldDetectionLevel->value());
    settings.SaveSetting("Options", "DetectionValue", QString::number(ui->sldDetectionLevel->value()));
}

void SilencePanel::cmdDetect_Click()
{
    if (ui->cmdDetect->isChecked())
        startWaiting();
    else
        stopWaiting();
}

// The engine watches what it captures, so the wait is recorded as well. It is no recording of the user's: the clock
// stands, and the stop command does not end it.
void SilencePanel::startWaiting()
{
    ui->chkSilenceActions->setEnabled(false);
    watch(noPause);
    detectionFile = names.ComposeRecordingName();
    Recorder.StartRecordingToFile(detectionFile);
}

void SilencePanel::stopWaiting()
{
    ui->chkSilenceActions->setEnabled(true);
    Recorder.EnableSilenceDetection(false);
    Recorder.StopRecording();
    QFile::remove(detectionFile);
}

void SilencePanel::Recorder_SilenceDetected()
{
    if (splitsOnSilence())
        session.startNextPart();
    if (removesSilence())
        session.stopClock();
}

// The file of the wait stays: where its name is that of the recording, the recording has taken it over.
void SilencePanel::Recorder_SoundDetected()
{
    if (ui->cmdDetect->isChecked()) {
        Recorder.EnableSilenceDetection(false);
        const QSignalBlocker isNotTheUsersRelease(ui->cmdDetect);
        ui->cmdDetect->setChecked(false);
        ui->chkSilenceActions->setEnabled(true);
        session.cmdRecord_Click();
    }
    if (removesSilence())
        session.runClock();
}

bool SilencePanel::removesSilence() const
{
    return ui->chkSilenceActions->isChecked() && ui->optRemoveSilence->isChecked();
}

bool SilencePanel::splitsOnSilence() const
{
    return ui->chkSilenceActions->isChecked() && ui->optSplitOnSilence->isChecked();
}

#include "moc_SilencePanel.cpp"
