#include "vocalremover/pictures/LayeredPicture.h"

#include "vocalremover/pictures/PictureColours.h"
#include "vocalremover/pictures/ThemedDrawing.h"

#include <QPainter>
#include <optional>

/// A part of the drawing, on ground that hides what is below it.
class LayeredPicture::Layer : public QWidget
{
public:
    Layer(const char* name, const char* drawing, QWidget* parent)
        : QWidget(parent)
        , drawing(drawing)
    {
        setObjectName(QLatin1String(name));
        setBackgroundRole(QPalette::Base);
        setAutoFillBackground(true);
    }

    QSize naturalSize() const { return drawing.naturalSize().toSize(); }

    void setColours(const PictureColours& colours)
    {
        drawing.setColours(colours);
        lineColour = colours.accent;
        update();
    }

    /// A line along one edge of the part.
    void setLineAt(Qt::Edge edge) { lineEdge = edge; }

    /// Shows what is in @p part of the drawing that fills @p whole.
    void show(const QRect& whole, const QRect& part)
    {
        room = whole.translated(-part.topLeft());
        setGeometry(part);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        drawing.draw(painter, room);
        if (lineEdge)
            painter.fillRect(0, lineEdge == Qt::TopEdge ? 0 : height() - 1, width(), 1, lineColour);
    }

private:
    ThemedDrawing drawing;
    QRect room;
    QColor lineColour;
    std::optional<Qt::Edge> lineEdge;
};

LayeredPicture::LayeredPicture(const Looks& looks, QWidget* parent)
    : DisplayPanel(parent)
    , coloured(looks.coloured)
    , inactive(new Layer(looks.inactiveName, looks.drawing, this))
    , active(new Layer(looks.activeName, looks.drawing, this))
{
    if (looks.cutOff)
        active->setLineAt(*looks.cutOff);
    LayeredPicture::takeColours(PictureColours(palette()));
}

void LayeredPicture::showValue(int value, int minimum, int maximum)
{
    slider = {value, minimum, maximum};
    placePicture();
}

QSize LayeredPicture::pictureSize() const
{
    return inactive->naturalSize();
}

void LayeredPicture::placePicture()
{
    const QRect whole = room();
    inactive->show(whole, whole);
    active->show(whole, activePart(whole, slider));
}

void LayeredPicture::takeColours(const PictureColours& colours)
{
    PictureColours grey = colours;
    grey.level = colours.muted;
    active->setColours(coloured == Coloured::Active ? colours : grey);
    inactive->setColours(coloured == Coloured::Active ? grey : colours);
}

#include "moc_LayeredPicture.cpp"
