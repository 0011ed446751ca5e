#pragma once

#include <QWidget>
#include <memory>

class QRadioButton;
class RecorderEngine;
class RecordingNames;
class RecordingSession;
class SettingsStore;
namespace Ui {
class SilencePanel;
}

/// What is done about silence: leave it out of a recording, begin a new file behind each long pause, or wait with
/// the recording for the first sound.
///
/// Each control writes to the engine when it is changed, before a recording or during it. The length of a pause is
/// kept in its label and nowhere else; the level is kept in the settings, "DetectionValue". Waiting and the other
/// two exclude each other.
class SilencePanel : public QWidget
{
    Q_OBJECT

public:
    SilencePanel(RecorderEngine& Recorder, RecordingSession& session, const RecordingNames& names,
                 SettingsStore& settings, QWidget* parent = nullptr);
    ~SilencePanel() override;

    /// Puts the stored level into its slider.
    void readDetectionValue();

private:
    void chkSilenceActions_Click();
    void optRemoveSilence_Click();
    void optSplitOnSilence_Click();
    void cmdSilenceTimeUp_Click();
    void cmdSilenceTimeDown_Click();
    void sldDetectionLevel_Change();
    void cmdDetect_Click();
    void Recorder_SilenceDetected();
    void Recorder_SoundDetected();

    void connectOption(QRadioButton& option, void (SilencePanel::*select)());
    bool removesSilence() const;
    bool splitsOnSilence() const;
    void startWaiting();
    void stopWaiting();
    void watch(int silenceMilliseconds);
    int pauseSeconds() const;
    void putPauseSeconds(int seconds);

    RecorderEngine& Recorder;
    RecordingSession& session;
    const RecordingNames& names;
    SettingsStore& settings;
    const std::unique_ptr<Ui::SilencePanel> ui;

    bool pressedAgain = false;

    /// What the last wait for a signal was recorded to.
    QString detectionFile;
};
