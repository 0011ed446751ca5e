#include "vocalremover/pictures/DisplayPanel.h"

#include "vocalremover/pictures/PictureColours.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int border = 6;
constexpr double roundness = 3;

}  // namespace

DisplayPanel::DisplayPanel(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
}

QSize DisplayPanel::sizeHint() const
{
    return pictureSize().grownBy({border, border, border, border});
}

QSize DisplayPanel::minimumSizeHint() const
{
    return (pictureSize() / 2).grownBy({border, border, border, border});
}

QRect DisplayPanel::room() const
{
    const QRect inside = rect().adjusted(border, border, -border, -border);
    return inside.isEmpty() ? QRect() : inside;
}

void DisplayPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange ||
        event->type() == QEvent::StyleChange) {
        takeColours(PictureColours(palette()));
        update();
    }
}

void DisplayPanel::paintEvent(QPaintEvent*)
{
    const PictureColours colours(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colours.line);
    painter.setBrush(colours.ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), roundness, roundness);
}

void DisplayPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placePicture();
}

#include "moc_DisplayPanel.cpp"
