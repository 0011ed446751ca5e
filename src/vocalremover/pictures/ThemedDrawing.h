#pragma once

#include <QSizeF>
#include <QString>
#include <memory>

class QPainter;
class QRectF;
class QSvgRenderer;
struct PictureColours;

/// One of the program's drawings that take their colours from the window.
class ThemedDrawing
{
public:
    /// Of the drawings in this folder, by its name without an ending.
    explicit ThemedDrawing(const char* name);
    ~ThemedDrawing();

    void setColours(const PictureColours& colours);

    /// The size that the drawing itself names.
    QSizeF naturalSize() const;

    /// Fills @p room with the whole drawing.
    void draw(QPainter& painter, const QRectF& room) const;

private:
    const QString file;
    const std::unique_ptr<QSvgRenderer> renderer;
};
