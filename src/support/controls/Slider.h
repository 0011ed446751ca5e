#pragma once

#include <QSlider>

/// A slider whose value is the only store of a setting.
///
/// Whoever changes a setting (the mouse, a button, a key, another window) puts a value here and lets Change() tell
/// the one routine that acts on it. A put outside the range is cut to it.
///
/// A slider with 0 inside its range is neutral there: its groove is filled from 0 to the handle instead of from the
/// minimum.
///
/// The handle goes to where the left button is pressed and follows it; a notch of the wheel is one single step,
/// with Ctrl or Shift held one page step. The Tab key reaches it.
///
/// A slider that has a value tip shows it over the handle while the handle is dragged, when the wheel is turned,
/// and when the pointer rests on the slider.
class Slider : public QSlider
{
    Q_OBJECT

public:
    explicit Slider(QWidget* parent = nullptr);

    /// Adds @p step to the value, or leaves it alone where the result would pass the minimum or the maximum.
    void stepOrRefuse(int step);

    /// The value as the value tip shows it; empty for a slider without one.
    virtual QString valueTip() const;

signals:
    /// Sent once, before the put returns, for each put that changed the value; never for a put of the value held.
    void Change();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void initStyleOption(QStyleOptionSlider* option) const override;

    /// Moves the value by what the wheel was turned, in units of the value.
    virtual void turnWheel(int units);

    /// Where along the slider the middle of the handle stands for a value.
    int placeOf(int value) const;

private:
    QRect handleRect() const;
    void showValueTip();
    int valueAt(int place) const;
    int along(const QPoint& point) const;

    int grabOffset = 0;
    int wheelRest = 0;
};
