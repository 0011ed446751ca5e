#pragma once

#include <QWidget>
#include <memory>

class PlayerEngine;
class QLineEdit;
class QTimer;
class TimeSlider;
struct PlaybackState;
namespace Ui {
class PositionPanel;
}

/// The position display and the loop window.
///
/// A timer of 30 ms asks the engine where it is while a sound is loaded, moves the slider and the time read-out,
/// and brings a sound that came to its end back to its beginning. The loop window is two sliders of whole seconds
/// and two texts of thousandths; the engine repeats it by itself. Begin and end are independent of each other.
class PositionPanel : public QWidget
{
    Q_OBJECT

public:
    PositionPanel(PlayerEngine& SoundTouch, PlaybackState& state, QWidget* parent = nullptr);
    ~PositionPanel() override;

    /// Spans the sliders over the sound that was just loaded and starts the timer. The thousandths stay.
    void prepareForSound();

    /// Stops the timer and centres the three sliders: there is no sound to show.
    void resetDisplay();

    /// Has the engine repeat the loop window from its begin.
    void playLoopWindow();

    /// The loop window in milliseconds, without its thousandths: where a stopped loop stands, and what winding
    /// stays within.
    int loopBegin() const;
    int loopEnd() const;

    /// Gives @p widget the room beside the time read-out.
    void placeBesideTime(QWidget* widget);

    /// What the time read-out shows: lblTime.
    QString timeText() const;

    /// Moves the position slider, and not the sound, to the begin of the loop window.
    void showLoopBegin();

public slots:
    /// Move the loop window by one second and keep its length; refused where it would leave the sound.
    void cmdLoopWindowBack_Click();
    void cmdLoopWindowForward_Click();

private:
    void showPosition();
    void tmrPosition_Timer();
    void sldAudioPosition_MouseDown();
    void sldAudioPosition_MouseUp();
    void sldBeginLoop_Change();
    void sldEndLoop_Change();
    void cmdBeginLoopDown_Click();
    void cmdBeginLoopUp_Click();
    void cmdEndLoopDown_Click();
    void cmdEndLoopUp_Click();

    PlayerEngine& SoundTouch;
    PlaybackState& state;
    std::unique_ptr<Ui::PositionPanel> ui;
    QTimer* tmrPosition;
};
