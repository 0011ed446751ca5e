#pragma once

#include "recorder/RecorderSurroundings.h"

#include <QWidget>
#include <memory>

class AudioFormatPanel;
class RecorderEngine;
class RecordingNames;
class RecordingSession;
class SilencePanel;
class SoundCardPanel;
namespace Ui {
class frmRecording;
}

/// The sound card recorder: records an input of the system to a file, and replays what it has just recorded.
///
/// It composes: a panel each for the format, the sound card and silence, the names of the files, and the session
/// that runs. It is independent of the player and has an engine of its own.
///
/// The window is made, then Load() runs once while it is still hidden, then it is shown, without blocking. Closing
/// it saves nothing and ends nothing by itself: a recording that runs ends with the engine, and that with the
/// window. Another window begins from the usual settings again; only the output folder and the level of silence are
/// kept.
class frmRecording : public QWidget
{
    Q_OBJECT

public:
    /// The window opens under @p mainWindow, whose place is looked at once, by Load().
    frmRecording(std::unique_ptr<RecorderEngine> recorder, const RecorderSurroundings& surroundings,
                 QWidget& mainWindow);
    ~frmRecording() override;

    void Load();

private:
    void placePanels();
    void connectCommands();
    void orderTabs();
    void placeUnderMainWindow();
    int CreateInputMeter(const QWidget& picture);
    void Recorder_RecordingPeaks(short left, short right);
    void cmdSaveAs_Click();
    void cmdBrowseRecordOutput_Click();
    void cmdExpand_Click();
    void cmdColapse_Click();
    void setHeight(int wanted);

    const std::unique_ptr<RecorderEngine> Recorder;
    const RecorderSurroundings surroundings;
    const QWidget& mainWindow;
    const std::unique_ptr<Ui::frmRecording> ui;

    // Behind the form's own controls, which come first for the Tab key.
    AudioFormatPanel* format = nullptr;
    SoundCardPanel* soundCard = nullptr;
    SilencePanel* silence = nullptr;
    std::unique_ptr<RecordingNames> names;
    RecordingSession* session = nullptr;

    /// Handles of the level bars, none before the load.
    int leftBar = 0;
    int rightBar = 0;
};
