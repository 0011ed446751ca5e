#include "support/controls/LevelBar.h"

#include "support/controls/AccessibleBar.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr int line = 1;
constexpr double topShare = 0.9;

QColor between(const QColor& ground, const QColor& ink)
{
    const auto mix = [](int one, int other) { return (2 * one + other) / 3; };
    return {mix(ground.red(), ink.red()), mix(ground.green(), ink.green()), mix(ground.blue(), ink.blue())};
}

// Nothing is sent when the value changes: a reader would talk of nothing else while a sound plays.
class AccessibleLevelBar : public AccessibleBar
{
public:
    using AccessibleBar::AccessibleBar;

    QVariant currentValue() const override { return bar().value(); }
    QVariant minimumValue() const override { return bar().minimum(); }
    QVariant maximumValue() const override { return bar().maximum(); }

private:
    const LevelBar& bar() const { return *static_cast<LevelBar*>(widget()); }
};

QAccessibleInterface* makeAccessibleLevelBar(const QString&, QObject* object)
{
    auto* bar = qobject_cast<LevelBar*>(object);
    return bar ? new AccessibleLevelBar(bar) : nullptr;
}

}  // namespace

// A factory that is installed already is not installed again.
LevelBar::LevelBar(QWidget* parent)
    : QWidget(parent)
{
    QAccessible::installFactory(makeAccessibleLevelBar);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void LevelBar::SetBarRange(int minimum, int maximum)
{
    lowest = minimum;
    highest = std::max(minimum, maximum);
    held = std::clamp(held, lowest, highest);
    update();
}

void LevelBar::SetBarValue(int value)
{
    const double before = endOf(share());
    held = std::clamp(value, lowest, highest);
    const double after = endOf(share());
    if (before == after)
        return;
    const QRect inside = room();
    const auto [left, right] = std::minmax(before, after);
    update(QRectF(left, inside.top(), right - left, inside.height()).toAlignedRect());
}

void LevelBar::setColors(const Colors& wanted)
{
    if (inks == wanted)
        return;
    inks = wanted;
    update();
}

QSize LevelBar::sizeHint() const
{
    return {20 * fontMetrics().averageCharWidth(), minimumSizeHint().height()};
}

QSize LevelBar::minimumSizeHint() const
{
    return {6 * fontMetrics().averageCharWidth(), fontMetrics().ascent() + 2 * line};
}

void LevelBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
}

void LevelBar::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect inside = room();
    if (!inside.contains(event->rect()))
        painter.fillRect(rect(), between(palette().color(QPalette::Window), palette().color(QPalette::WindowText)));

    const auto fill = [&](double left, double right, QRgb color) {
        if (left < right)
            painter.fillRect(QRectF(left, inside.top(), right - left, inside.height()), QColor(color));
    };
    const double end = endOf(share());
    const double top = endOf(topShare);
    fill(inside.left(), std::min(end, top), inks.level);
    fill(top, end, inks.top);
    fill(end, inside.left() + inside.width(), inks.empty);
}

QRect LevelBar::room() const
{
    return rect().adjusted(line, line, -line, -line);
}

double LevelBar::endOf(double share) const
{
    const QRect inside = room();
    const double ratio = devicePixelRatioF();
    return inside.left() + std::round(share * std::max(0, inside.width()) * ratio) / ratio;
}

double LevelBar::share() const
{
    const qint64 range = qint64{highest} - lowest;
    return range == 0 ? 0 : static_cast<double>(qint64{held} - lowest) / static_cast<double>(range);
}

#include "moc_LevelBar.cpp"
