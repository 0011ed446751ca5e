#pragma once

#include <QWidget>
#include <memory>

class PlayerEngine;
class Slider;
namespace Ui {
class TempoPitchPanel;
}

/// The sliders that change how the loaded sound plays: tempo, pitch by semitones, pitch by hundredths, and both
/// together.
///
/// The sliders are the only store: a button, a key, a calculator or a track load puts a value into one of them, and
/// its change reaches the engine from here and from nowhere else, sound loaded or not.
class TempoPitchPanel : public QWidget
{
    Q_OBJECT

public:
    explicit TempoPitchPanel(PlayerEngine& SoundTouch, QWidget* parent = nullptr);
    ~TempoPitchPanel() override;

    /// Whether the sliders survive a change of track: chkApplySettings.
    bool appliesToAllTracks() const;

    /// Brings the four sliders back to 0, for a new track.
    void resetForTrack();

    /// For the calculators, which read and put two of them, and for the save-as command, which reads all.
    Slider& sldTempo();
    Slider& sldPitchSemi();
    Slider& sldPitchGrad();
    Slider& sldSpeed();

signals:
    /// A button or a caption of the panel that opens a calculator was clicked.
    void bpmCalculatorWanted();
    void keyCalculatorWanted();

private:
    void sldTempo_Change();
    void sldSpeed_Change();
    void sldPitchSemi_Change();
    void sldPitchGrad_Change();
    void cmdResetAll_Click();

    PlayerEngine& SoundTouch;
    std::unique_ptr<Ui::TempoPitchPanel> ui;
};
