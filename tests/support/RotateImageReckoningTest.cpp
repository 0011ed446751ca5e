#include "support/RotateImage.h"

#include <gtest/gtest.h>
#include <QImage>
#include <cmath>
#include <random>

namespace {

// The same once more, slowly: sums of whole numbers of 1 / 10 000 or 1 / 100 000 000, and every quotient sought
// among its two neighbours. All arrays are whole, and the loops run as one would write them down.

qint64 quotient(qint64 number, qint64 divisor)
{
    qint64 lower = number / divisor;
    while (lower * divisor > number)
        --lower;
    const qint64 toLower = number - lower * divisor;
    const qint64 toUpper = divisor - toLower;
    if (toLower != toUpper)
        return toLower < toUpper ? lower : lower + 1;
    return lower % 2 == 0 ? lower : lower + 1;
}

/// The sine by its series, of an angle up to a few turns.
long double series(long double angle, int begin)
{
    long double term = begin == 0 ? 1.0L : angle;
    long double sum = 0.0L;
    for (int n = begin; n < begin + 120; n += 2) {
        sum += term;
        term *= -angle * angle / static_cast<long double>((n + 1) * (n + 2));
    }
    return sum;
}

qint64 inTenThousandths(long double number)
{
    const long double scaled = number * 10'000.0L;
    auto nearest = static_cast<qint64>(scaled);
    for (const qint64 candidate : {nearest - 1, nearest + 1}) {
        if (std::abs(static_cast<long double>(candidate) - scaled) <
            std::abs(static_cast<long double>(nearest) - scaled))
            nearest = candidate;
    }
    return nearest;
}

struct Turn
{
    qint64 angle = 0;
    int centreX = 0;
    int centreY = 0;
    QRgb transparent = qRgb(255, 255, 255);
    qint64 opacity = 10'000;
    qint64 scale = 10'000;
    int sourceCentreX = 0;
    int sourceCentreY = 0;
};

QImage turned(const QImage& surface, const QImage& picture, const Turn& turn)
{
    const int width = picture.width();
    const int height = picture.height();
    qint64 diagonal = 0;
    while ((diagonal + 1) * (diagonal + 1) <= qint64{width} * width + qint64{height} * height)
        ++diagonal;
    const auto side = static_cast<int>(quotient(diagonal * turn.scale, 10'000));
    const auto left = static_cast<int>(quotient(2 * qint64{turn.centreX} - side, 2));
    const auto top = static_cast<int>(quotient(2 * qint64{turn.centreY} - side, 2));
    const int offsetX = (side - width) / 2;
    const int offsetY = (side - height) / 2;
    const long double angle = static_cast<long double>(turn.angle) / 10'000.0L;
    const long double scale = static_cast<long double>(turn.scale) / 10'000.0L;
    const qint64 cosine = inTenThousandths(series(angle, 0) / scale);
    const qint64 sine = inTenThousandths(series(angle, 1) / scale);

    QImage result = surface;
    for (int i = -offsetX; i < side - offsetX; ++i) {
        for (int j = -offsetY; j < side - offsetY; ++j) {
            const QPoint place(left + offsetX + i, top + offsetY + j);
            if (!surface.rect().contains(place))
                continue;
            const QRgb background = surface.pixel(place);
            const qint64 x =
                (i - turn.sourceCentreX) * cosine - (j - turn.sourceCentreY) * sine + turn.sourceCentreX * 10'000;
            const qint64 y =
                (i - turn.sourceCentreX) * sine + (j - turn.sourceCentreY) * cosine + turn.sourceCentreY * 10'000;
            if (x < 0 || y < 0)
                continue;
            const auto column = static_cast<int>(x / 10'000);
            const auto row = static_cast<int>(y / 10'000);
            if (column + 1 >= width || row + 1 >= height)
                continue;
            const qint64 right = x - column * 10'000;
            const qint64 down = y - row * 10'000;
            qint64 red = 0;
            qint64 green = 0;
            qint64 blue = 0;
            const auto add = [&](int atX, int atY, qint64 across, qint64 along) {
                const QRgb neighbour = picture.pixel(atX, atY);
                const qint64 alpha = neighbour == turn.transparent ? 0 : turn.opacity;
                const qint64 weight = quotient(across * along, 10'000);
                red += quotient(weight * (qRed(background) * (10'000 - alpha) + qRed(neighbour) * alpha), 10'000);
                green +=
                    quotient(weight * (qGreen(background) * (10'000 - alpha) + qGreen(neighbour) * alpha), 10'000);
                blue +=
                    quotient(weight * (qBlue(background) * (10'000 - alpha) + qBlue(neighbour) * alpha), 10'000);
            };
            add(column, row, 10'000 - right, 10'000 - down);
            add(column + 1, row, right, 10'000 - down);
            add(column, row + 1, 10'000 - right, down);
            add(column + 1, row + 1, right, down);
            result.setPixel(place,
                            qRgb(static_cast<int>(quotient(red, 10'000)), static_cast<int>(quotient(green, 10'000)),
                                 static_cast<int>(quotient(blue, 10'000))));
        }
    }
    return result;
}

QImage noise(const QSize& size, unsigned seed, QRgb oftenToo)
{
    std::mt19937 random(seed);
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const auto colour = static_cast<QRgb>(random());
            picture.setPixel(x, y,
                             random() % 3 == 0 ? oftenToo : qRgb(qRed(colour), qGreen(colour), qBlue(colour)));
        }
    }
    return picture;
}

class TurningAnyPicture : public ::testing::TestWithParam<QSize>
{
protected:
    void expectTheSame(const Turn& turn, bool ownCentre)
    {
        const QImage picture = noise(GetParam(), 1, turn.transparent);
        const QImage background = noise({48, 44}, 2, qRgb(77, 77, 77));
        ImageRotation rotation{
            .angle = Decimal4::ofTenThousandths(turn.angle),
            .centreX = turn.centreX,
            .centreY = turn.centreY,
            .transparentColour =
                qBlue(turn.transparent) << 16 | qGreen(turn.transparent) << 8 | qRed(turn.transparent),
            .opacity = Decimal4::ofTenThousandths(turn.opacity),
            .scale = Decimal4::ofTenThousandths(turn.scale),
        };
        Turn asked = turn;
        if (ownCentre) {
            rotation.sourceCentreX = static_cast<short>(turn.sourceCentreX);
            rotation.sourceCentreY = static_cast<short>(turn.sourceCentreY);
        } else {
            asked.sourceCentreX = static_cast<int>(quotient(picture.width(), 2));
            asked.sourceCentreY = static_cast<int>(quotient(picture.height(), 2));
        }
        QImage surface = background.copy();
        RotateImage(surface, picture, rotation);
        EXPECT_EQ(surface, turned(background, picture, asked))
            << turn.angle << ' ' << turn.scale << ' ' << turn.opacity << ' ' << turn.sourceCentreX;
    }
};

TEST_P(TurningAnyPicture, IsReckonedInFourDecimalPlacesAtEveryAngle)
{
    for (const qint64 angle : {-31'416, -17'500, -17'325, -7'854, -1'750, -175, 0, 175, 1'750, 5'236, 7'854, 15'708,
                               17'500, 20'000, 31'416, 47'124, 62'832, 100'000})
        expectTheSame({.angle = angle, .centreX = 24, .centreY = 21}, false);
}

TEST_P(TurningAnyPicture, IsReckonedInFourDecimalPlacesAtEveryScaleAndOpacity)
{
    for (const qint64 scale : {1'234, 5'000, 9'999, 10'001, 15'000, 27'183}) {
        for (const qint64 opacity : {0, 1, 3'333, 5'000, 9'999, 10'000})
            expectTheSame({.angle = 6'100, .centreX = 23, .centreY = 22, .opacity = opacity, .scale = scale},
                          false);
    }
}

TEST_P(TurningAnyPicture, IsReckonedInFourDecimalPlacesAboutEveryCentre)
{
    for (const int sourceCentreX : {-9, 0, 1, 7, 40}) {
        for (const int sourceCentreY : {-3, 0, 12})
            expectTheSame({.angle = -9'000,
                           .centreX = 25,
                           .centreY = 20,
                           .transparent = qRgb(1, 2, 3),
                           .sourceCentreX = sourceCentreX,
                           .sourceCentreY = sourceCentreY},
                          true);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, TurningAnyPicture,
                         ::testing::Values(QSize(1, 1), QSize(2, 2), QSize(5, 5), QSize(8, 8), QSize(9, 4),
                                           QSize(3, 12), QSize(25, 25), QSize(30, 23), QSize(64, 50)),
                         [](const auto& info) {
                             return std::to_string(info.param.width()) + "By" + std::to_string(info.param.height());
                         });

}  // namespace
