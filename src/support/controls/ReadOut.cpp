#include "support/controls/ReadOut.h"

#include <QPainter>
#include <algorithm>

namespace {

// How much of the room a grown text takes: air round it reads better than more size.
constexpr double widthShare = 0.6;
constexpr double heightShare = 0.8;

}  // namespace

ReadOut::ReadOut(QWidget* parent)
    : QLabel(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize ReadOut::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text());
}

QSize ReadOut::minimumSizeHint() const
{
    return sizeHint();
}

// Digits of one font are equally wide, so that the text keeps its size while it counts.
void ReadOut::paintEvent(QPaintEvent*)
{
    const QSizeF natural = sizeHint();
    if (natural.isEmpty())
        return;
    const QRect room = contentsRect();
    const double growth = std::max(
        1.0, std::min(widthShare * room.width() / natural.width(), heightShare * room.height() / natural.height()));
    QFont grown = font();
    grown.setPointSizeF(grown.pointSizeF() * growth);

    QPainter painter(this);
    painter.setFont(grown);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, static_cast<int>(alignment()) | Qt::TextSingleLine, text());
}
