#include "playback/GainSlider.h"

#include <QPainter>

QString GainSlider::valueTip() const
{
    const QString sign = value() > 0 ? QStringLiteral("+") : QString();
    return sign + QString::number(value() / 100.0) + QStringLiteral(" dB");
}

void GainSlider::paintEvent(QPaintEvent* event)
{
    constexpr int length = 5;
    constexpr double faintness = 0.35;
    QPainter painter(this);
    QColor ink = palette().color(QPalette::WindowText);
    ink.setAlphaF(faintness);
    painter.setPen(ink);
    for (const int value : {maximum(), 0, minimum()}) {
        const int place = placeOf(value);
        painter.drawLine(0, place, length - 1, place);
        painter.drawLine(width() - length, place, width() - 1, place);
    }
    painter.end();
    Slider::paintEvent(event);
}

#include "moc_GainSlider.cpp"
