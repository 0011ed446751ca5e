#include "support/RotateImage.h"

#include <QImage>
#include <QRect>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int largestInt = std::numeric_limits<int>::max();
constexpr Decimal4 half = Decimal4::ofTenThousandths(5000);

/// Far beyond what makes every colour black or white; keeps products within their range.
constexpr Decimal4 largestOpacity = 1'000'000;

constexpr QRgb colourOf(QRgb pixel)
{
    return pixel & 0xFFFFFF;
}

/// A colour as an image holds it, of one with blue in the high byte.
constexpr QRgb fromBlueHigh(int colour)
{
    return colourOf(qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF));
}

/// The side of the square in which every angle finds room; 0 where there is nothing to draw.
int sideOf(const QSize& picture, Decimal4 scale)
{
    const qint64 squares = qint64{picture.width()} * picture.width() + qint64{picture.height()} * picture.height();
    if (picture.isEmpty() || squares > largestInt || scale <= 0)
        return 0;
    const auto diagonal = static_cast<int>(std::sqrt(static_cast<double>(squares)));
    if (scale > largestInt / diagonal)
        return 0;
    return static_cast<int>(times(diagonal, scale).nearest());
}

/// The left or the top edge of a square round a centre.
qint64 edgeOf(int centre, int side)
{
    return (centre - times(side, half)).nearest();
}

/// The stretch of a square of this side that is on a surface of this length, where the square begins at @p edge.
struct Stretch
{
    int first = 0;
    int end = 0;

    Stretch(qint64 edge, int side, int surface)
        : first(static_cast<int>(std::clamp<qint64>(-edge, 0, side)))
        , end(static_cast<int>(std::clamp<qint64>(surface - edge, first, side)))
    {
    }

    int length() const { return end - first; }
};

const QRgb* rowOf(const QImage& image, int row)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(row));
}

/// What the surface shows of one of its pixels: the sum of what four of the picture lend it.
class Blend
{
public:
    Blend(QRgb background, QRgb transparent, Decimal4 opacity)
        : background(background)
        , transparent(transparent)
        , opacity(opacity)
    {
    }

    void add(QRgb neighbour, Decimal4 weight)
    {
        const Decimal4 alpha = colourOf(neighbour) != transparent ? opacity : Decimal4();
        const Decimal4 through = 1 - alpha;
        red += weight * (times(qRed(background), through) + times(qRed(neighbour), alpha));
        green += weight * (times(qGreen(background), through) + times(qGreen(neighbour), alpha));
        blue += weight * (times(qBlue(background), through) + times(qBlue(neighbour), alpha));
    }

    QRgb sum() const
    {
        const auto byte = [](Decimal4 channel) {
            return static_cast<int>(std::clamp<qint64>(channel.nearest(), 0, 255));
        };
        return qRgb(byte(red), byte(green), byte(blue));
    }

private:
    const QRgb background;
    const QRgb transparent;
    const Decimal4 opacity;
    Decimal4 red;
    Decimal4 green;
    Decimal4 blue;
};

/// What is seen of a place in the picture that has a pixel to its right and one below.
QRgb blendedAt(const QImage& picture, Decimal4 x, Decimal4 y, Blend blend)
{
    const auto row = static_cast<int>(y.wholePart());
    const QRgb* const upper = rowOf(picture, row) + x.wholePart();
    const QRgb* const lower = rowOf(picture, row + 1) + x.wholePart();
    const Decimal4 right = x.fraction();
    const Decimal4 down = y.fraction();
    blend.add(upper[0], (1 - right) * (1 - down));
    blend.add(upper[1], right * (1 - down));
    blend.add(lower[0], (1 - right) * down);
    blend.add(lower[1], right * down);
    return blend.sum();
}

void replaceMiddle(ImageRotation& rotation, const QSize& picture)
{
    const auto middleOf = [](int length) { return static_cast<short>(times(length, half).nearest()); };
    if (rotation.sourceCentreX == ImageRotation::middle)
        rotation.sourceCentreX = middleOf(picture.width());
    if (rotation.sourceCentreY == ImageRotation::middle)
        rotation.sourceCentreY = middleOf(picture.height());
}

}  // namespace

void RotateImage(QImage& surface, const QImage& picture, ImageRotation& rotation)
{
    const int side = sideOf(picture.size(), rotation.scale);
    if (side <= 0 || surface.format() != QImage::Format_RGB32)
        return;
    replaceMiddle(rotation, picture.size());

    const qint64 left = edgeOf(rotation.centreX, side);
    const qint64 top = edgeOf(rotation.centreY, side);
    const Stretch across(left, side, surface.width());
    const Stretch down(top, side, surface.height());
    if (across.length() == 0 || down.length() == 0)
        return;
    const QPoint corner(static_cast<int>(left + across.first), static_cast<int>(top + down.first));
    QImage result = surface.copy(QRect(corner, QSize(across.length(), down.length())));

    // Whole parts go towards 0, also those of the offsets where the square is smaller than the picture.
    const QImage bitmap = picture.convertToFormat(QImage::Format_RGB32);
    const QRgb transparent = fromBlueHigh(rotation.transparentColour);
    const Decimal4 opacity = std::clamp(rotation.opacity, -largestOpacity, largestOpacity);
    const int offsetX = (side - bitmap.width()) / 2;
    const int offsetY = (side - bitmap.height()) / 2;
    const Decimal4 lastX = bitmap.width() - 1;
    const Decimal4 lastY = bitmap.height() - 1;
    const Decimal4 cosine = Decimal4::rounded(std::cos(rotation.angle.toDouble()) / rotation.scale.toDouble());
    const Decimal4 sine = Decimal4::rounded(std::sin(rotation.angle.toDouble()) / rotation.scale.toDouble());
    const qint64 firstX = qint64{across.first} - offsetX - rotation.sourceCentreX;
    for (int row = 0; row < result.height(); ++row) {
        const qint64 y = qint64{down.first} + row - offsetY - rotation.sourceCentreY;
        Decimal4 sourceX = times(firstX, cosine) - times(y, sine) + rotation.sourceCentreX;
        Decimal4 sourceY = times(firstX, sine) + times(y, cosine) + rotation.sourceCentreY;
        auto* const pixels = reinterpret_cast<QRgb*>(result.scanLine(row));
        for (int column = 0; column < result.width(); ++column) {
            if (sourceX >= 0 && sourceX < lastX && sourceY >= 0 && sourceY < lastY)
                pixels[column] = blendedAt(bitmap, sourceX, sourceY, Blend(pixels[column], transparent, opacity));
            sourceX += cosine;
            sourceY += sine;
        }
    }

    for (int row = 0; row < result.height(); ++row)
        std::copy_n(rowOf(result, row), result.width(),
                    reinterpret_cast<QRgb*>(surface.scanLine(corner.y() + row)) + corner.x());
}
