#pragma once

#include <QWidget>
#include <memory>

class MsgBox;
class RecorderEngine;
namespace Ui {
class SoundCardPanel;
}

/// What a recording is taken from: the device, its input line, and how sensitive that is.
///
/// A device and a line are known by their place in their lists, and nothing is kept between windows: lines and
/// levels are the system's own. The devices are those that are there when the list is filled.
class SoundCardPanel : public QWidget
{
    Q_OBJECT

public:
    SoundCardPanel(RecorderEngine& Recorder, MsgBox& msgBox, QWidget* parent = nullptr);
    ~SoundCardPanel() override;

    /// Binds the engine to the window that the panel stands in, and offers its devices. The first is selected,
    /// where there is one.
    void FillSoundCardCombos();

    /// Tells the engine whether the user wants its protection against clipping.
    void passAntiClipping();

    /// Lowers the input by one step for peaks of a recording of which one is full scale, where the user wants that.
    /// It stays lowered until the user raises it.
    void lowerInputIfClipped(short left, short right);

private:
    void ComboRecordingDevices_Click();
    void ComboRecordingInput_Click();
    void SliderRecordingInputVolume_Change();
    void readInputVolume();
    short device() const;
    short input() const;

    RecorderEngine& Recorder;
    MsgBox& msgBox;
    const std::unique_ptr<Ui::SoundCardPanel> ui;
};
