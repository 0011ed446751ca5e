#pragma once

#include "support/controls/Slider.h"

/// A slider over a sound: its value is whole seconds, and its value tip shows them as a time (7:05, 61:40).
class TimeSlider : public Slider
{
    Q_OBJECT

public:
    explicit TimeSlider(QWidget* parent = nullptr);

    QString valueTip() const override;

signals:
    /// The user takes hold of the slider: the left button goes down, the wheel begins to turn, or a key is about to
    /// move it. Sent before the value moves.
    void MouseDown();

    /// The user lets go: the left button goes up, or the wheel or the key has done its move. Sent after the value
    /// has moved.
    void MouseUp();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void turnWheel(int units) override;
};
