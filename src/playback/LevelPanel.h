#pragma once

#include <QWidget>
#include <memory>

class PlayerEngine;
class QTimer;
class Slider;
namespace Ui {
class LevelPanel;
}

/// How loud the player plays and on which side: gain, which the user knows as volume, balance, and fades of the
/// gain.
///
/// A fade is a timer that walks the gain slider by one unit a tick, so that the user sees the slider move and its
/// change does what is heard. It goes on from wherever the slider stands, playing or not, and ends at the slider's
/// end and nowhere else. While both fades are wanted the fade-in has its way.
class LevelPanel : public QWidget
{
    Q_OBJECT

public:
    explicit LevelPanel(PlayerEngine& SoundTouch, QWidget* parent = nullptr);
    ~LevelPanel() override;

    /// Shows the controls of the fades, which are hidden at first.
    void FadingVisible();

    /// The system's volume, 0 to 65535, never shown. A put is remembered and shown in the slider's tool tip; the
    /// sound does not follow it, nor does the system.
    Slider& sldVolume();

    /// The last value put into sldVolume, 0 before the first.
    int masterVolume() const;

private:
    void sldGain_Change();
    void sldBalance_Change();
    void sldVolume_Change();
    void cmdBalanceLeft_Click();
    void cmdBalanceRight_Click();
    void cmdFadeIntUp_Click();
    void cmdFadeIntDown_Click();
    void cmdFadeIn_Click();
    void cmdFadeOut_Click();
    void tmrFade_Timer();

    /// The time of a fade over the whole range, in seconds.
    int fadingInterval() const;
    void startFade(bool& wanted);

    PlayerEngine& SoundTouch;
    std::unique_ptr<Ui::LevelPanel> ui;
    QTimer* tmrFade;

    int MasterVolume = 0;
    bool FadeInActive = false;
    bool FadeOutActive = false;
};
