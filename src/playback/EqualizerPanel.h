#pragma once

#include <QWidget>
#include <array>
#include <memory>

class CommonDialog;
class GainSlider;
class MsgBox;
class PlayerEngine;
namespace Ui {
class EqualizerPanel;
}

/// The ten bands of the equalizer, its presets and its files.
///
/// The engine holds the truth: it knows the presets and reads and writes the files, and the sliders follow it. A
/// slider's value is the gain of its band in hundredths of a decibel. A slider that follows the engine sends what
/// it was given back, cut to its own range; that is harmless, and the same road as a hand on it takes.
///
/// Until EnableEqualizerPanel() runs, once, at the start of the program, nothing here can be used.
class EqualizerPanel : public QWidget
{
    Q_OBJECT

public:
    EqualizerPanel(PlayerEngine& SoundTouch, CommonDialog& dlgEQ, MsgBox& msgBox, QWidget* parent = nullptr);
    ~EqualizerPanel() override;

    /// Lets the user in, and gives the engine its bands.
    void EnableEqualizerPanel();

    /// Copies the gains of the engine's bands to the sliders. A band that has no slider is passed over.
    void ReadEqualizerBands();

private:
    struct Band
    {
        GainSlider* slider;
        float frequency;  // hertz
    };
    static constexpr std::size_t bandCount = 10;

    void sliderChanged(const Band& band);
    void cmbEQPresets_Click();
    void cmdResetEQ_Click();
    void cmdLoadEQPreset_Click();
    void cmdSaveEQPreset_Click();

    PlayerEngine& SoundTouch;
    CommonDialog& dlgEQ;
    MsgBox& msgBox;
    std::unique_ptr<Ui::EqualizerPanel> ui;
    std::array<Band, bandCount> bands;  // lowest first, as the engine numbers them
};
