#include "vocalremover/pictures/PanDial.h"

#include "support/RotateImage.h"
#include "vocalremover/pictures/PictureColours.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <algorithm>
#include <cmath>

namespace {

// The surface in units of its own, of which two are a pixel of the window at the natural size. Its centre is given
// in them and goes to a pixel of the screen by the size of the surface alone, so that it is the same at every
// position of the knob.
constexpr int surfaceWidth = 336;
constexpr int surfaceHeight = 300;
constexpr int centreX = 168;
constexpr int centreY = 178;
constexpr int knobSide = 233;
constexpr double naturalScale = 0.5;

constexpr int white = 0xFFFFFF;
constexpr QRgb nearlyWhite = qRgb(0xFE, 0xFE, 0xFE);

constexpr Decimal4 radiansPerStep = Decimal4::ofTenThousandths(175);

/// Sides of which half, rounded, is the pixel in the very middle: about another one the knob would reel.
int sideWithMiddle(double wanted)
{
    return std::max(1, 4 * static_cast<int>(wanted / 4) + 1);
}

/// Pixels of which nothing is drawn are white, and no others. Those along edges are mixed with the ground already,
/// for the transparent colour knows no more or less.
QImage onTransparentWhite(const QImage& drawn, const QColor& ground)
{
    QImage flat(drawn.size(), QImage::Format_RGB32);
    flat.fill(ground);
    QPainter(&flat).drawImage(0, 0, drawn);
    for (int y = 0; y < flat.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
        auto* to = reinterpret_cast<QRgb*>(flat.scanLine(y));
        for (int x = 0; x < flat.width(); ++x) {
            if (qAlpha(from[x]) == 0)
                to[x] = qRgb(0xFF, 0xFF, 0xFF);
            else if (to[x] == qRgb(0xFF, 0xFF, 0xFF))
                to[x] = nearlyWhite;
        }
    }
    return flat;
}

}  // namespace

/// Shows an image pixel by pixel.
class PanDial::Surface : public QWidget
{
public:
    explicit Surface(PanDial& dial)
        : QWidget(&dial)
        , dial(dial)
    {
        setObjectName(QStringLiteral("Picture2"));
    }

    QImage image;

    QSize sizeInPixels() const
    {
        const auto pixels = [this](int length) {
            return static_cast<int>(std::ceil(length * devicePixelRatioF()));
        };
        return {pixels(width()), pixels(height())};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (image.size() != sizeInPixels())  // the scale of the screen may change without a word
            dial.draw();
        image.setDevicePixelRatio(devicePixelRatioF());
        QPainter(this).drawImage(0, 0, image);
    }

private:
    PanDial& dial;
};

PanDial::PanDial(QWidget* parent)
    : DisplayPanel(parent)
    , scale("pan-scale")
    , knob("pan-knob")
    , Picture2(new Surface(*this))
    , S(new QLabel(this))
{
    S->setObjectName(QStringLiteral("S"));
    S->hide();
    PanDial::takeColours(PictureColours(palette()));
}

void PanDial::showAngleOf(int pan)
{
    this->pan = pan;
    if (!handlingEvents) {
        const QPointer<PanDial> self(this);
        handlingEvents = true;
        QCoreApplication::processEvents();
        if (!self)
            return;
        handlingEvents = false;
    }
    draw();
    Picture2->update();
}

QSize PanDial::pictureSize() const
{
    return QSize(surfaceWidth, surfaceHeight) * naturalScale;
}

void PanDial::placePicture()
{
    QRect place({}, pictureSize().scaled(room().size(), Qt::KeepAspectRatio));
    place.moveCenter(room().center());
    Picture2->setGeometry(place);
    Picture2->update();
}

void PanDial::takeColours(const PictureColours& colours)
{
    scale.setColours(colours);
    knob.setColours(colours);
    ground = colours.ground;
    clearSurface = QImage();
    Picture2->image = QImage();
    Picture2->update();
}

double PanDial::unit() const
{
    return static_cast<double>(clearSurface.width()) / surfaceWidth;
}

void PanDial::renderDrawings()
{
    const QSize size = Picture2->sizeInPixels();
    clearSurface = QImage(size, QImage::Format_RGB32);
    clearSurface.fill(ground);
    QPainter painter(&clearSurface);
    scale.draw(painter, clearSurface.rect());
    painter.end();

    const int side = sideWithMiddle(knobSide * unit());
    QImage drawn(side, side, QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    QPainter knobPainter(&drawn);
    knob.draw(knobPainter, drawn.rect());
    knobPainter.end();
    S->setPixmap(QPixmap::fromImage(onTransparentWhite(drawn, ground)));
}

void PanDial::draw()
{
    if (Picture2->size().isEmpty())
        return;
    if (clearSurface.size() != Picture2->sizeInPixels())
        renderDrawings();
    Picture2->image = clearSurface;
    ImageRotation rotation{
        .angle = times(-qint64{pan}, radiansPerStep),
        .centreX = qRound(centreX * unit()),
        .centreY = qRound(centreY * unit()),
        .transparentColour = white,
    };
    RotateImage(Picture2->image, S->pixmap(Qt::ReturnByValue).toImage(), rotation);
}

#include "moc_PanDial.cpp"
