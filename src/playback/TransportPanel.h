#pragma once

#include <QWidget>
#include <memory>

class PlayerEngine;
class PositionPanel;
struct PlaybackState;
namespace Ui {
class TransportPanel;
}

/// Play, loop, pause, stop and wind.
///
/// The buttons are always enabled: with no sound loaded a command ends in the engine. Menu, toolbar and keys call
/// the same handlers.
class TransportPanel : public QWidget
{
    Q_OBJECT

public:
    TransportPanel(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                   QWidget* parent = nullptr);
    ~TransportPanel() override;

public slots:
    /// Plays on from where the sound is, out of a loop as well, and gives the window the keys.
    void cmdPlay_Click();

    void cmdPlayLoop_Click();

    /// Pauses what plays and resumes what is paused, a loop as a loop.
    void cmdPause_Click();

    /// Stops; a loop then stands at its begin and stays one.
    void cmdStop_Click();

    /// Five seconds back or on, within the sound or the loop window; refused where the jump would leave it.
    void cmdRewind_Click();
    void cmdFForward_Click();

private:
    PlayerEngine& SoundTouch;
    PlaybackState& state;
    PositionPanel& position;
    std::unique_ptr<Ui::TransportPanel> ui;
};
