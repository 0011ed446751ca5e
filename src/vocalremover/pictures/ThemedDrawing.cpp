#include "vocalremover/pictures/ThemedDrawing.h"

#include "vocalremover/pictures/PictureColours.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

ThemedDrawing::ThemedDrawing(const char* name)
    : file(QStringLiteral(":/larkspin/vocalremover/%1.svg").arg(QLatin1String(name)))
    , renderer(std::make_unique<QSvgRenderer>())
{
    setColours(PictureColours(QGuiApplication::palette()));
}

ThemedDrawing::~ThemedDrawing() = default;

void ThemedDrawing::setColours(const PictureColours& colours)
{
    QFile source(file);
    if (source.open(QIODevice::ReadOnly))
        renderer->load(colours.in(source.readAll()));
}

QSizeF ThemedDrawing::naturalSize() const
{
    return renderer->viewBoxF().size();
}

void ThemedDrawing::draw(QPainter& painter, const QRectF& room) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    renderer->render(&painter, room);
}
