#include "support/controls/Slider.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QStyleOptionSlider>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

Slider::Slider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QSlider::valueChanged, this, &Slider::Change);
}

void Slider::stepOrRefuse(int step)
{
    const int wanted = value() + step;
    if (wanted >= minimum() && wanted <= maximum())
        setValue(wanted);
}

QString Slider::valueTip() const
{
    return {};
}

bool Slider::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && !valueTip().isEmpty()) {
        showValueTip();
        return true;
    }
    return QSlider::event(event);
}

// Styles fill the groove from the minimum. What lies between neutral and the handle is cut out of a groove that the
// style fills whole, and painted over one that it leaves empty.
void Slider::paintEvent(QPaintEvent* event)
{
    if (minimum() >= 0 || maximum() <= 0) {
        QSlider::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);

    QStyleOptionSlider groove = option;
    groove.subControls = QStyle::SC_SliderGroove;
    groove.activeSubControls = QStyle::SC_None;
    groove.sliderPosition = minimum();
    painter.drawComplexControl(QStyle::CC_Slider, groove);

    const auto [first, last] = std::minmax({placeOf(0), placeOf(option.sliderPosition)});
    painter.save();
    painter.setClipRect(orientation() == Qt::Horizontal ? QRect(first, 0, last - first, height())
                                                        : QRect(0, first, width(), last - first));
    groove.sliderPosition = maximum();
    painter.drawComplexControl(QStyle::CC_Slider, groove);
    painter.restore();

    option.subControls = QStyle::SC_SliderHandle;
    painter.drawComplexControl(QStyle::CC_Slider, option);
}

void Slider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    event->accept();
    const QPoint point = event->position().toPoint();
    const QRect handle = handleRect();
    const bool onHandle = handle.contains(point);
    grabOffset = onHandle ? along(point) - along(handle.center()) : 0;
    setSliderDown(true);
    if (!onHandle)
        setValue(valueAt(along(point)));
    update();
    showValueTip();
}

void Slider::mouseMoveEvent(QMouseEvent* event)
{
    if (!isSliderDown()) {
        event->ignore();
        return;
    }
    event->accept();
    setValue(valueAt(along(event->position().toPoint()) - grabOffset));
    showValueTip();
}

void Slider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isSliderDown()) {
        event->ignore();
        return;
    }
    event->accept();
    setSliderDown(false);
    update();
    if (!valueTip().isEmpty())
        QToolTip::hideText();
}

// Touch pads turn the wheel by fractions of a notch: they add up.
void Slider::wheelEvent(QWheelEvent* event)
{
    constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
    const QPoint turn = event->angleDelta();
    wheelRest += turn.y() != 0 ? turn.y() : -turn.x();
    const int notches = wheelRest / notch;
    wheelRest -= notches * notch;
    const bool pages = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (notches != 0) {
        turnWheel(notches * (pages ? pageStep() : singleStep()));
        showValueTip();
    }
    event->accept();
}

void Slider::turnWheel(int units)
{
    setValue(value() + units);
}

void Slider::initStyleOption(QStyleOptionSlider* option) const
{
    QSlider::initStyleOption(option);
    if (isSliderDown()) {
        option->activeSubControls = QStyle::SC_SliderHandle;
        option->state |= QStyle::State_Sunken;
    }
}

QRect Slider::handleRect() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

// Tool tips come up below and right of the point that they are asked for: this one is to stand clear above the
// handle.
void Slider::showValueTip()
{
    const QString tip = valueTip();
    if (tip.isEmpty())
        return;
    constexpr QPoint tipOffset(2, 16);
    constexpr int gap = 12;
    const QFontMetrics metrics(QToolTip::font());
    const QRect handle = handleRect();
    const QPoint corner(handle.center().x() - metrics.horizontalAdvance(tip) / 2,
                        handle.top() - metrics.height() - gap);
    QToolTip::showText(mapToGlobal(corner - tipOffset), tip, this);
}

int Slider::along(const QPoint& point) const
{
    return orientation() == Qt::Horizontal ? point.x() : point.y();
}

int Slider::placeOf(int value) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.sliderPosition = value;
    return along(style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).center());
}

int Slider::valueAt(int place) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    const bool level = orientation() == Qt::Horizontal;
    const int length = level ? handle.width() : handle.height();
    const int first = level ? groove.left() : groove.top();
    const int span = (level ? groove.width() : groove.height()) - length;
    return QStyle::sliderValueFromPosition(minimum(), maximum(), place - first - length / 2, span,
                                           option.upsideDown);
}

#include "moc_Slider.cpp"
