#include "support/RotateImage.h"

#include <gtest/gtest.h>
#include <QImage>
#include <functional>
#include <limits>

namespace {

/// A quarter turn: its cosine is 0.0000, its sine 1.0000.
constexpr Decimal4 quarter = Decimal4::ofTenThousandths(15'708);

Decimal4 decimal(qint64 tenThousandths)
{
    return Decimal4::ofTenThousandths(tenThousandths);
}

/// A picture of which no two pixels are alike and none is white or grey 77.
QImage numbered(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgb(10 + x, 100 + y, 200));
    }
    return picture;
}

constexpr QRgb ground = qRgb(77, 77, 77);

QImage surfaceOf(int width, int height)
{
    QImage surface(width, height, QImage::Format_RGB32);
    surface.fill(ground);
    return surface;
}

/// All pixels of one grey, but for some.
QImage greyPicture(
    const QSize& size, int grey, const std::function<void(QImage&)>& paint = [](QImage&) {})
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(qRgb(grey, grey, grey));
    paint(picture);
    return picture;
}

int grey(const QImage& image, int x, int y)
{
    const QRgb pixel = image.pixel(x, y);
    EXPECT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel));
    return qRed(pixel);
}

// A picture of 5 by 5 has a diagonal of 7.07: the square has a side of 7, the picture in it an offset of 1. Round
// (10, 10) the square begins at 10 - 3.5, which goes to the even 6, and the picture at 7. Its middle, 2.5, goes to
// the even 2.

TEST(TurningAPicture, ByNothingReproducesItLessItsLastRowAndColumn)
{
    QImage surface = surfaceOf(20, 20);
    const QImage picture = numbered(5, 5);
    ImageRotation rotation{.centreX = 10, .centreY = 10};
    RotateImage(surface, picture, rotation);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            const bool drawn = x >= 7 && x < 11 && y >= 7 && y < 11;
            EXPECT_EQ(surface.pixel(x, y), drawn ? picture.pixel(x - 7, y - 7) : ground) << x << ' ' << y;
        }
    }
}

// With the cosine 0 and the sine 1 the place (i, j) takes the pixel (4 - j, i).
TEST(TurningAPicture, ByAQuarterLaysItsColumnsAcross)
{
    QImage surface = surfaceOf(20, 20);
    const QImage picture = numbered(5, 5);
    ImageRotation rotation{.angle = quarter, .centreX = 10, .centreY = 10};
    RotateImage(surface, picture, rotation);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            const int i = x - 7;
            const int j = y - 7;
            const bool drawn = j >= 1 && j <= 4 && i >= 0 && i <= 3;
            EXPECT_EQ(surface.pixel(x, y), drawn ? picture.pixel(4 - j, i) : ground) << x << ' ' << y;
        }
    }
}

TEST(TurningAPicture, GoesAgainstTheClock)
{
    QImage surface = surfaceOf(20, 20);
    const QImage picture = greyPicture({9, 9}, 255, [](QImage& image) { image.setPixel(4, 0, 0); });  // at twelve
    ImageRotation rotation{.angle = quarter, .centreX = 10, .centreY = 10};
    RotateImage(surface, picture, rotation);
    const int left = 6;  // a side of 12, an offset of 1: the picture begins at 5, and its row and column 4 at 9
    const int begin = left - 1;
    EXPECT_EQ(surface.pixel(begin, begin + 4), qRgb(0, 0, 0));  // at nine
}

TEST(TurningAPicture, TakesPlaceInTheSquareOfItsDiagonal)
{
    QImage surface = surfaceOf(60, 60);
    const QImage picture = numbered(40, 9);  // 41 across
    ImageRotation rotation{.angle = quarter, .centreX = 30, .centreY = 30};
    RotateImage(surface, picture, rotation);
    // The square begins at 30 - 20.5, which goes to the even 10; the picture at an offset of 0 and 16 in it. The
    // place (i, j) takes (24 - j, i - 16) of its own pixels: 20 + 4 - j and i - 20 + 4.
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x) {
            const int column = 20 + 4 - (y - 10 - 16);
            const int row = x - 10 - 20 + 4;
            const bool inSquare = x >= 10 && x < 51 && y >= 10 && y < 51;
            const bool drawn = inSquare && column >= 0 && column < 39 && row >= 0 && row < 8;
            EXPECT_EQ(surface.pixel(x, y), drawn ? picture.pixel(column, row) : ground) << x << ' ' << y;
        }
    }
}

TEST(TurningAPicture, PutsItsMiddleInPlaceOfTheDefaultCentre)
{
    struct Row
    {
        int length;
        int middle;
    };
    for (const auto& [length, middle] : {Row{4, 2}, Row{5, 2}, Row{7, 4}, Row{9, 4}, Row{11, 6}}) {
        QImage surface = surfaceOf(20, 20);
        ImageRotation rotation{.sourceCentreY = 3};
        RotateImage(surface, numbered(length, 6), rotation);
        EXPECT_EQ(rotation.sourceCentreX, middle) << length;
        EXPECT_EQ(rotation.sourceCentreY, 3);
    }
}

// Twice as large: a diagonal of 4, a square of 8, an offset of 2 (2.5 without its fraction), a middle of 2. The
// place i takes i / 2 + 1: at -1 that is 0.5, at -2 exactly 0. The square begins at 10 - 4.
class APictureOfThreeTwiceAsLarge : public ::testing::Test
{
protected:
    int drawn(const QImage& picture, int x, int y)
    {
        QImage surface = surfaceOf(20, 20);
        surface.fill(qRgb(background, background, background));
        RotateImage(surface, picture, rotation);
        return grey(surface, 6 + 2 + x, 6 + 2 + y);
    }

    static QImage columns(int left, int right)
    {
        return greyPicture({3, 3}, right, [left](QImage& image) {
            for (int y = 0; y < 3; ++y)
                image.setPixel(0, y, qRgb(left, left, left));
        });
    }

    int background = 100;
    ImageRotation rotation{.centreX = 10, .centreY = 10, .scale = 2};
};

TEST_F(APictureOfThreeTwiceAsLarge, HasMeansBetweenItsPixels)
{
    EXPECT_EQ(drawn(columns(10, 20), -2, -2), 10);
    EXPECT_EQ(drawn(columns(10, 20), -1, -2), 15);
    EXPECT_EQ(drawn(columns(10, 20), 0, -2), 20);
}

TEST_F(APictureOfThreeTwiceAsLarge, RoundsAHalfToTheEvenColour)
{
    EXPECT_EQ(drawn(columns(10, 11), -1, -2), 10);
    EXPECT_EQ(drawn(columns(11, 12), -1, -2), 12);
}

TEST_F(APictureOfThreeTwiceAsLarge, WeighsFourNeighboursAlikeInTheirMidst)
{
    const QImage picture = greyPicture({3, 3}, 40, [](QImage& image) { image.setPixel(1, 1, qRgb(80, 80, 80)); });
    EXPECT_EQ(drawn(picture, -1, -1), 50);
}

TEST_F(APictureOfThreeTwiceAsLarge, LetsTheBackgroundThroughWhereANeighbourIsTransparent)
{
    EXPECT_EQ(drawn(columns(200, 255), -1, -2), 150);
    EXPECT_EQ(drawn(columns(200, 255), 0, -2), 100);
    EXPECT_EQ(drawn(columns(255, 255), -1, -2), 100);
    EXPECT_EQ(drawn(columns(200, 254), -1, -2), 227);  // nearly white is drawn
}

TEST_F(APictureOfThreeTwiceAsLarge, IsMixedWithTheBackgroundByItsOpacity)
{
    rotation.opacity = decimal(2'500);
    EXPECT_EQ(drawn(columns(200, 200), -2, -2), 125);
    EXPECT_EQ(drawn(columns(200, 255), -1, -2), 112);  // half of 125 and half of 100: 112.5
    rotation.opacity = 0;
    EXPECT_EQ(drawn(columns(200, 0), -1, -2), 100);
}

TEST_F(APictureOfThreeTwiceAsLarge, HasColoursInTheirRangeAtAnyOpacity)
{
    rotation.opacity = decimal(12'000);
    EXPECT_EQ(drawn(columns(120, 120), -2, -2), 124);
    EXPECT_EQ(drawn(columns(250, 250), -2, -2), 255);  // 280
    rotation.opacity = -2;
    EXPECT_EQ(drawn(columns(120, 120), -2, -2), 60);
    EXPECT_EQ(drawn(columns(180, 180), -2, -2), 0);  // -60
    for (const qint64 extreme : {std::numeric_limits<qint64>::max(), -std::numeric_limits<qint64>::max()}) {
        rotation.opacity = decimal(extreme);
        EXPECT_EQ(drawn(columns(100, 100), -1, -2), 100);
        EXPECT_EQ(drawn(columns(101, 101), -1, -2), extreme > 0 ? 255 : 0);
    }
}

TEST(TurningAPicture, LeavesOutExactlyTheTransparentColourWhichHasBlueInItsHighByte)
{
    QImage surface = surfaceOf(20, 20);
    const QImage picture = greyPicture({5, 5}, 0, [](QImage& image) {
        image.fill(qRgb(0x12, 0x34, 0x56));
        image.setPixel(1, 1, qRgb(0x56, 0x34, 0x12));
    });
    ImageRotation rotation{.centreX = 10, .centreY = 10, .transparentColour = 0x563412};
    RotateImage(surface, picture, rotation);
    QImage wanted = surfaceOf(20, 20);
    wanted.setPixel(8, 8, qRgb(0x56, 0x34, 0x12));
    EXPECT_EQ(surface, wanted);
}

TEST(TurningAPicture, CutsOffWhatIsBeyondTheSurface)
{
    const QImage picture = numbered(9, 6);
    QImage large = surfaceOf(60, 60);
    ImageRotation whole{.angle = decimal(5'000), .centreX = 30, .centreY = 30};
    RotateImage(large, picture, whole);
    for (const QPoint shift : {QPoint(26, 30), QPoint(34, 34), QPoint(30, 24), QPoint(20, 20), QPoint(50, 30)}) {
        QImage small = surfaceOf(8, 8);
        ImageRotation rotation{.angle = decimal(5'000), .centreX = 30 - shift.x(), .centreY = 30 - shift.y()};
        RotateImage(small, picture, rotation);
        // A shift by an even number leaves all halves as they were.
        EXPECT_EQ(small, large.copy(QRect(shift, small.size()))) << shift.x() << ' ' << shift.y();
    }
}

TEST(TurningAPicture, FarFromTheSurfaceDrawsNothing)
{
    constexpr int farthest = std::numeric_limits<int>::max();
    for (const int centreX : {-farthest - 1, -40, 60, farthest}) {
        for (const int centreY : {-farthest - 1, -40, 60, farthest}) {
            QImage surface = surfaceOf(20, 20);
            ImageRotation rotation{.centreX = centreX, .centreY = centreY};
            RotateImage(surface, numbered(9, 9), rotation);
            EXPECT_EQ(surface, surfaceOf(20, 20)) << centreX << ' ' << centreY;
        }
    }
}

TEST(TurningAPicture, AtAScaleOfNothingLessOrFarTooMuchDrawsNothing)
{
    for (const qint64 scale : {qint64{0}, qint64{-10'000}, qint64{1}, std::numeric_limits<qint64>::max(),
                               -std::numeric_limits<qint64>::max()}) {
        QImage surface = surfaceOf(20, 20);
        ImageRotation rotation{.angle = 1, .centreX = 10, .centreY = 10, .scale = decimal(scale)};
        RotateImage(surface, numbered(9, 9), rotation);
        EXPECT_EQ(surface, surfaceOf(20, 20)) << scale;
    }
}

TEST(TurningAPicture, AtAnEnormousScaleDrawsOnlyWhatTheSurfaceShows)
{
    QImage surface = surfaceOf(20, 20);
    ImageRotation rotation{.centreX = 10, .centreY = 10, .scale = 10'000'000};
    RotateImage(surface, greyPicture({9, 9}, 50), rotation);
    EXPECT_EQ(surface, greyPicture({20, 20}, 50));
}

// 46340 squared leaves 88047 of what 31 bits hold: between 296 and 297 squared.
TEST(TurningAPicture, DrawsNoneWhoseSquaresAreBeyond31Bits)
{
    struct Row
    {
        QSize size;
        bool drawn;
    };
    for (const auto& [size, drawn] : {Row{{46340, 2}, true}, Row{{46341, 2}, false}, Row{{2, 46341}, false},
                                      Row{{46340, 296}, true}, Row{{46340, 297}, false}}) {
        QImage picture(size, QImage::Format_Mono);
        picture.fill(0);
        QImage surface = surfaceOf(20, 20);
        ImageRotation rotation{.centreX = 10, .centreY = 10};
        RotateImage(surface, picture, rotation);
        EXPECT_EQ(surface != surfaceOf(20, 20), drawn) << size.width() << " by " << size.height();
    }
}

TEST(TurningAPicture, LeavesAloneWhatIsNoSurfaceAndDrawsNoPictureThatIsNone)
{
    ImageRotation rotation{.centreX = 10, .centreY = 10};
    QImage none;
    RotateImage(none, numbered(9, 9), rotation);
    EXPECT_TRUE(none.isNull());

    QImage grey(20, 20, QImage::Format_Grayscale8);
    grey.fill(9);
    const QImage before = grey.copy();
    RotateImage(grey, numbered(9, 9), rotation);
    EXPECT_EQ(grey, before);

    QImage surface = surfaceOf(20, 20);
    RotateImage(surface, QImage(), rotation);
    EXPECT_EQ(surface, surfaceOf(20, 20));
}

TEST(TurningAPicture, CountsPixelsWhateverTheirDensity)
{
    QImage wanted = surfaceOf(20, 20);
    ImageRotation rotation{.angle = decimal(5'000), .centreX = 10, .centreY = 10};
    RotateImage(wanted, numbered(9, 9), rotation);

    QImage dense = surfaceOf(20, 20);
    dense.setDevicePixelRatio(2);
    QImage picture = numbered(9, 9);
    picture.setDevicePixelRatio(1.5);
    RotateImage(dense, picture, rotation);
    dense.setDevicePixelRatio(1);
    EXPECT_EQ(dense, wanted);
}

}  // namespace
