#include "Controls.h"
#include "vocalremover/pictures/GainPicture.h"
#include "vocalremover/pictures/HighCutPicture.h"
#include "vocalremover/pictures/LowCutPicture.h"

#include <gtest/gtest.h>
#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <ostream>

QT_BEGIN_NAMESPACE
void PrintTo(const QRect& rect, std::ostream* out)
{
    *out << rect.width() << " by " << rect.height() << " at " << rect.x() << ' ' << rect.y();
}
QT_END_NAMESPACE

namespace {

QPalette paletteOf(const QColor& base, const QColor& text)
{
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, QColor(0, 90, 255));
    return palette;
}

const QColor darkGround(20, 20, 20);

QPalette lightPalette()
{
    return paletteOf(Qt::white, Qt::black);
}

QPalette darkPalette()
{
    return paletteOf(darkGround, QColor(240, 240, 240));
}

/// A picture of its natural size, and its two drawings.
template <typename Picture>
struct Shown
{
    Shown(const char* activeName, const char* inactiveName)
        : active(control<QWidget>(picture, activeName))
        , inactive(control<QWidget>(picture, inactiveName))
    {
        picture.setPalette(lightPalette());
        picture.resize(picture.sizeHint());
        picture.showValue(0, 0, 1);
    }

    QImage drawn() { return picture.grab().toImage(); }

    /// How many pixels of a part of the picture are bluish.
    int blueIn(const QRect& part)
    {
        const QImage image = drawn();
        const double scale = image.devicePixelRatio();
        int count = 0;
        for (int y = qRound(part.top() * scale); y < qRound((part.bottom() + 1) * scale); ++y) {
            for (int x = qRound(part.left() * scale); x < qRound((part.right() + 1) * scale); ++x) {
                const QRgb pixel = image.pixel(x, y);
                count += qBlue(pixel) > qRed(pixel) + 20 ? 1 : 0;
            }
        }
        return count;
    }

    Picture picture;
    QWidget& active;
    QWidget& inactive;
};

struct LowCut : Shown<LowCutPicture>
{
    LowCut()
        : Shown("picFilterLowActive", "picFilterLowInactive")
    {
    }
};

struct HighCut : Shown<HighCutPicture>
{
    HighCut()
        : Shown("picFilterHighActive", "picFilterHighInactive")
    {
    }
};

struct Gain : Shown<GainPicture>
{
    Gain()
        : Shown("picGainActive", "picGainInactive")
    {
    }
};

QRect rowsOf(const QRect& whole, int first, int count)
{
    return {whole.left(), whole.top() + first, whole.width(), count};
}

QRect columnsOf(const QRect& whole, int first, int count)
{
    return {whole.left() + first, whole.top(), count, whole.height()};
}

TEST(TheLowPicture, ShortensItsActiveDrawingFromBelow)
{
    LowCut low;
    const int height = low.inactive.height();
    ASSERT_EQ(height % 8, 0);
    low.picture.showValue(200, 50, 400);
    EXPECT_EQ(low.active.geometry(), rowsOf(low.inactive.geometry(), 0, height / 2));
    low.picture.showValue(50, 50, 400);
    EXPECT_EQ(low.active.geometry(), rowsOf(low.inactive.geometry(), 0, height / 8 * 7));
    low.picture.showValue(400, 50, 400);
    EXPECT_EQ(low.active.height(), 0);
}

TEST(TheLowPicture, IsInColourAboveTheCutOff)
{
    LowCut low;
    low.picture.showValue(200, 50, 400);
    const QRect whole = low.inactive.geometry();
    EXPECT_GT(low.blueIn(rowsOf(whole, 0, whole.height() / 2)), 100);
    EXPECT_EQ(low.blueIn(rowsOf(whole, whole.height() / 2, whole.height() / 2)), 0);
}

TEST(TheHighPicture, LengthensItsActiveDrawingFromItsFoot)
{
    HighCut high;
    const int height = high.inactive.height();
    ASSERT_EQ(height % 8, 0);
    high.picture.showValue(6000, 6000, 16000);
    EXPECT_EQ(high.active.height(), 0);
    high.picture.showValue(8000, 6000, 16000);
    EXPECT_EQ(high.active.geometry(), rowsOf(high.inactive.geometry(), height / 4 * 3, height / 4));
    high.picture.showValue(16000, 6000, 16000);
    EXPECT_EQ(high.active.geometry(), rowsOf(high.inactive.geometry(), height / 8 * 3, height / 8 * 5));
}

TEST(TheHighPicture, IsInColourBelowTheCutOff)
{
    HighCut high;
    high.picture.showValue(12000, 6000, 16000);
    const QRect whole = high.inactive.geometry();
    EXPECT_EQ(high.blueIn(rowsOf(whole, 0, whole.height() / 2)), 0);
    EXPECT_GT(high.blueIn(rowsOf(whole, whole.height() / 2, whole.height() / 2)), 100);
}

// Two thirds of a pixel to the right are one on whole pixels.
TEST(TheGainPicture, ShortensItsActiveDrawingFromTheLeft)
{
    Gain gain;
    const int width = gain.inactive.width();
    ASSERT_EQ(width % 4, 0);
    gain.picture.showValue(100, 0, 200);
    EXPECT_EQ(gain.active.geometry(), columnsOf(gain.inactive.geometry(), width / 2 + 1, width / 2));
    gain.picture.showValue(50, 0, 200);
    EXPECT_EQ(gain.active.geometry(), columnsOf(gain.inactive.geometry(), width / 4 + 1, width / 4 * 3));
    gain.picture.showValue(0, 0, 200);
    EXPECT_EQ(gain.active.geometry(), columnsOf(gain.inactive.geometry(), 1, width));
    gain.picture.showValue(200, 0, 200);
    EXPECT_EQ(gain.active.width(), 0);
}

TEST(TheGainPicture, IsInColourUpToTheGain)
{
    Gain gain;
    const QRect whole = gain.inactive.geometry();
    const int middle = whole.width() / 2;
    gain.picture.showValue(100, 0, 200);
    EXPECT_GT(gain.blueIn(columnsOf(whole, 0, middle)), 100);
    EXPECT_EQ(gain.blueIn(columnsOf(whole, middle + 1, middle - 1)), 0);
    gain.picture.showValue(0, 0, 200);
    EXPECT_EQ(gain.blueIn(columnsOf(whole, 1, whole.width() - 1)), 0);
    gain.picture.showValue(200, 0, 200);
    EXPECT_GT(gain.blueIn(columnsOf(whole, middle, middle)), 100);
}

TEST(ThePictures, MarkTheirCutOffsByALine)
{
    LowCut low;
    low.picture.showValue(200, 50, 400);
    const QRect lowest = rowsOf(low.inactive.geometry(), low.inactive.height() / 2 - 1, 1);
    const double scale = low.drawn().devicePixelRatio();
    EXPECT_GE(low.blueIn(lowest), static_cast<int>(lowest.width() * scale) - 1);

    HighCut high;
    high.picture.showValue(12000, 6000, 16000);
    const QRect uppermost = rowsOf(high.inactive.geometry(), high.inactive.height() / 2, 1);
    EXPECT_GE(high.blueIn(uppermost), static_cast<int>(uppermost.width() * scale) - 1);
}

// At a value at which the active drawing is whole, or all but, nothing of its place must betray it.
TEST(ThePictures, ShowTheTwoDrawingsInTheSamePlace)
{
    LowCut low;
    low.picture.showValue(0, 0, 400);
    const QImage whole = low.drawn();
    low.picture.showValue(200, 0, 400);
    const QImage half = low.drawn();
    const double scale = whole.devicePixelRatio();
    const QRect upper = rowsOf(low.inactive.geometry(), 0, low.inactive.height() / 2 - 2);
    const QRect pixels = QRectF(upper.topLeft() * scale, upper.size() * scale).toRect();
    EXPECT_EQ(half.copy(pixels), whole.copy(pixels));
}

template <typename Picture>
class EachPicture : public ::testing::Test
{
protected:
    Picture shown;
};

using Pictures = ::testing::Types<LowCut, HighCut, Gain>;
TYPED_TEST_SUITE(EachPicture, Pictures);

TYPED_TEST(EachPicture, FillsItsPanel)
{
    auto& shown = this->shown;
    const QSize border = shown.picture.size() - shown.inactive.size();
    shown.picture.show();
    shown.picture.resize(300, 70);
    EXPECT_EQ(shown.inactive.size(), QSize(300, 70) - border);
    EXPECT_EQ(shown.inactive.geometry().center(), shown.picture.rect().center());
}

TYPED_TEST(EachPicture, FollowsItsSizeAndIsHarmlessWithoutRoom)
{
    auto& shown = this->shown;
    shown.picture.showValue(100, 50, 200);
    shown.picture.show();
    const QSize before = shown.active.size();
    shown.picture.resize(shown.picture.size() * 2);
    EXPECT_GE(shown.active.width() * shown.active.height(), 3 * before.width() * before.height());
    shown.picture.setMinimumSize(1, 1);
    shown.picture.resize(1, 1);
    shown.drawn();
}

TYPED_TEST(EachPicture, HasTheGroundOfTextFieldsAlsoWhenThatChanges)
{
    auto& shown = this->shown;
    const auto ground = [&] {
        const QImage image = shown.drawn();
        return image.pixelColor(QPoint(4, 4) * image.devicePixelRatio());
    };
    EXPECT_EQ(ground(), QColor(Qt::white));
    shown.picture.setPalette(darkPalette());
    EXPECT_EQ(ground(), darkGround);
    const QRect whole = shown.inactive.geometry();
    const QImage image = shown.drawn();
    const double scale = image.devicePixelRatio();
    for (int x = whole.left(); x <= whole.right(); ++x)
        EXPECT_NE(image.pixelColor(qRound(x * scale), qRound(whole.center().y() * scale)), QColor(Qt::white)) << x;
}

TYPED_TEST(EachPicture, TakesNoKeyboard)
{
    EXPECT_EQ(this->shown.picture.focusPolicy(), Qt::NoFocus);
    for (const QWidget* child : this->shown.picture.template findChildren<QWidget*>())
        EXPECT_EQ(child->focusPolicy(), Qt::NoFocus);
}

}  // namespace
