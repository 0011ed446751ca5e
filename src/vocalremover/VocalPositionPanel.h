#pragma once

#include <QWidget>
#include <memory>

class PanDial;
class WindowLife;
namespace Ui {
class VocalPositionPanel;
}

/// Where in the stereo image the vocals are that a run removes, with a dial that points there.
class VocalPositionPanel : public QWidget
{
    Q_OBJECT

public:
    /// The window's life outlives the panel.
    explicit VocalPositionPanel(WindowLife& life, QWidget* parent = nullptr);
    ~VocalPositionPanel() override;

    /// -100 is the very left, 0 the centre, 100 the very right.
    int pan() const;

    /// Turns the event loop once, then the dial: a dial is slow to draw, and the slider is to follow the hand.
    void sldVocalPan_Change();

private:
    void cmdResetPan_Click();

    WindowLife& life;
    const std::unique_ptr<Ui::VocalPositionPanel> ui;
    PanDial* const dial;
};
