#include "support/controls/TimeSlider.h"

#include <QKeyEvent>
#include <QMouseEvent>

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

void TimeSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit MouseDown();
    Slider::mousePressEvent(event);
}

void TimeSlider::mouseReleaseEvent(QMouseEvent* event)
{
    const bool held = isSliderDown();
    Slider::mouseReleaseEvent(event);
    if (held && !isSliderDown())
        emit MouseUp();
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

#include "moc_TimeSlider.cpp"
