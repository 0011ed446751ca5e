#pragma once

#include <QWidget>
#include <memory>

class LevelBar;
class PlayerEngine;
namespace Ui {
class MetersPanel;
}

/// The levels of what is heard, left above right.
///
/// The player measures; the bars show what it reports as it reports it, and stay at the last report while it is
/// stopped.
class MetersPanel : public QWidget
{
    Q_OBJECT

public:
    explicit MetersPanel(PlayerEngine& SoundTouch, QWidget* parent = nullptr);
    ~MetersPanel() override;

    /// Switches the player's reports on and makes the bars. Once, when the players are there.
    void startMeters();

private:
    LevelBar* CreateVuBar(QWidget& picture);
    void VuPeaks(short player, short left, short right);

    PlayerEngine& SoundTouch;
    std::unique_ptr<Ui::MetersPanel> ui;
    LevelBar* VuBarLeft = nullptr;
    LevelBar* VuBarRight = nullptr;
};
