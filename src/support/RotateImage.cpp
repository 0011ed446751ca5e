#include "support/RotateImage.h"

#include <QImage>
#include <QRect>
#include <algorithm>
#include <array>
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

/// The four pixels of the picture round a place, in the order of their weights.
struct Neighbours
{
    std::array<QRgb, 4> colours;
    std::array<Decimal4, 4> weights;
};

/// Draws pixel by pixel what the surface shows: the picture over what was there.
class Blend
{
public:
    Blend(QRgb transparent, Decimal4 opacity)
        : transparent(transparent)
        , opacity(std::clamp(opacity, -largestOpacity, largestOpacity))
    {
    }

    QRgb operator()(const Neighbours& near, QRgb background) const
    {
        std::array<Decimal4, 4> alphas;
        for (size_t i = 0; i < alphas.size(); ++i)
            alphas[i] = colourOf(near.colours[i]) != transparent ? opacity : Decimal4();

        const auto channel = [&](int shift) {
            const QRgb behind = background >> shift & 0xFF;
            Decimal4 sum;
            for (size_t i = 0; i < alphas.size(); ++i) {
                const QRgb own = near.colours[i] >> shift & 0xFF;
                sum += near.weights[i] * (times(behind, 1 - alphas[i]) + times(own, alphas[i]));
            }
            return static_cast<int>(std::clamp<qint64>(sum.nearest(), 0, 255));
        };
        return qRgb(channel(16), channel(8), channel(0));
    }

private:
    const QRgb transparent;
    const Decimal4 opacity;
};

const QRgb* rowOf(const QImage& image, int row)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(row));
}

/// The neighbours of a place that has one to its right and one below.
Neighbours neighboursOf(const QImage& picture, Decimal4 x, Decimal4 y)
{
    const auto column = static_cast<int>(x.wholePart());
    const auto row = static_cast<int>(y.wholePart());
    const QRgb* const upper = rowOf(picture, row) + column;
    const QRgb* const lower = rowOf(picture, row + 1) + column;
    const Decimal4 right = x.fraction();
    const Decimal4 down = y.fraction();
    return {{upper[0], upper[1], lower[0], lower[1]},
            {(1 - right) * (1 - down), right * (1 - down), (1 - right) * down, right * down}};
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

    const QImage bitmap = picture.convertToFormat(QImage::Format_RGB32);
    const Blend blend(fromBlueHigh(rotation.transparentColour), rotation.opacity);
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
                pixels[column] = blend(neighboursOf(bitmap, sourceX, sourceY), pixels[column]);
            sourceX += cosine;
            sourceY += sine;
        }
    }

    for (int row = 0; row < result.height(); ++row)
        std::copy_n(rowOf(result, row), result.width(),
                    reinterpret_cast<QRgb*>(surface.scanLine(corner.y() + row)) + corner.x());
}
