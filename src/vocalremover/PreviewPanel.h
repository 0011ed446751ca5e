#pragma once

#include <QWidget>
#include <memory>

class PlayerEngine;
namespace Ui {
class PreviewPanel;
}

/// Which stretch of the source is played, and the commands that play it. Disabled until there is a source.
class PreviewPanel : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewPanel(QWidget* parent = nullptr);
    ~PreviewPanel() override;

    /// For good.
    void enableControls();

    /// Takes the range of the position from the sound that the player has as its source. A source that is not
    /// longer than the longest preview leaves the range as it was.
    void setUpPosition(const PlayerEngine& Player);

    /// Milliseconds of the source.
    struct Stretch
    {
        int begin = 0;
        int end = 0;
    };

    Stretch stretch() const;

signals:
    void playResultWanted();
    void stopWanted();
    void playSourceWanted();

private:
    void cmdPreviewDurationUp_Click();
    void cmdPreviewDurationDown_Click();

    /// Seconds. The label's text is where they are kept.
    int duration() const;
    void putDuration(int seconds);

    const std::unique_ptr<Ui::PreviewPanel> ui;
};
