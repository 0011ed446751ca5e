#include "support/controls/ReadOut.h"

#include <gtest/gtest.h>
#include <QImage>

namespace {

/// The height of what is painted darker than the ground.
int inkHeight(ReadOut& readOut, const QSize& size)
{
    readOut.resize(size);
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    readOut.render(&image, {}, {}, QWidget::DrawChildren);
    int first = image.height();
    int last = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128) {
                first = std::min(first, y);
                last = std::max(last, y);
            }
        }
    }
    return last < 0 ? 0 : last - first + 1;
}

class AReadOut : public ::testing::Test
{
protected:
    AReadOut()
    {
        readOut.setText("00:43:50");
        readOut.setAlignment(Qt::AlignCenter);
    }

    ReadOut readOut;
};

TEST_F(AReadOut, GrowsWithTheRoomItIsGiven)
{
    const QSize natural = readOut.sizeHint();
    const int small = inkHeight(readOut, natural);
    ASSERT_GT(small, 0);
    EXPECT_NEAR(inkHeight(readOut, natural * 4), 4 * 0.6 * small, 0.15 * 4 * small);
}

TEST_F(AReadOut, IsBoundByTheNarrowerOfWidthAndHeight)
{
    const QSize natural = readOut.sizeHint();
    const int small = inkHeight(readOut, natural);
    EXPECT_EQ(inkHeight(readOut, {natural.width(), natural.height() * 5}), small);
    EXPECT_EQ(inkHeight(readOut, {natural.width() * 5, natural.height()}), small);
}

TEST_F(AReadOut, AsksForNoMoreRoomWhenItHasGrown)
{
    const QSize natural = readOut.sizeHint();
    readOut.resize(natural * 4);
    EXPECT_EQ(readOut.sizeHint(), natural);
    EXPECT_EQ(readOut.minimumSizeHint(), natural);
}

}  // namespace
