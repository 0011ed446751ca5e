#include "support/controls/TimeSlider.h"

#include <QEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

namespace {

bool movesHandle(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return false;
    }
}

}  // namespace

TimeSlider::TimeSlider(QWidget* parent)
    : Slider(parent)
{
}

QString TimeSlider::valueTip() const
{
    return QStringLiteral("%1:%2").arg(value() / 60).arg(value() % 60, 2, 10, QLatin1Char('0'));
}

bool TimeSlider::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        showValueTip();
        return true;
    }
    return Slider::event(event);
}

void TimeSlider::mousePressEvent(QMouseEvent* event)
{
    const bool taken = event->button() == Qt::LeftButton;
    if (taken)
        emit MouseDown();
    Slider::mousePressEvent(event);
    if (taken)
        showValueTip();
}

void TimeSlider::mouseMoveEvent(QMouseEvent* event)
{
    Slider::mouseMoveEvent(event);
    if (isSliderDown())
        showValueTip();
}

void TimeSlider::mouseReleaseEvent(QMouseEvent* event)
{
    const bool held = isSliderDown();
    Slider::mouseReleaseEvent(event);
    if (held && !isSliderDown()) {
        QToolTip::hideText();
        emit MouseUp();
    }
}

// A key's move is one by hand as well, or a position that follows a sound would go back at once. Under a pointer
// that holds the handle the keys do nothing.
void TimeSlider::keyPressEvent(QKeyEvent* event)
{
    if (!movesHandle(event->key())) {
        Slider::keyPressEvent(event);
        return;
    }
    if (isSliderDown())
        return;
    emit MouseDown();
    Slider::keyPressEvent(event);
    emit MouseUp();
}

// A turn of the wheel is a move by hand like any other: taken, moved, let go. Under a hand that holds the handle
// the wheel does nothing.
void TimeSlider::turnWheel(int units)
{
    if (isSliderDown())
        return;
    emit MouseDown();
    Slider::turnWheel(units);
    emit MouseUp();
}

// Tool tips come up below and right of the point that they are asked for: this one is to stand clear above the
// handle.
void TimeSlider::showValueTip()
{
    constexpr QPoint tipOffset(2, 16);
    constexpr int gap = 12;
    const QFontMetrics metrics(QToolTip::font());
    const QRect handle = handleRect();
    const QPoint corner(handle.center().x() - metrics.horizontalAdvance(valueTip()) / 2,
                        handle.top() - metrics.height() - gap);
    QToolTip::showText(mapToGlobal(corner - tipOffset), valueTip(), this);
}
