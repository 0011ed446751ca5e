#include "support/controls/XP_ProgressBar.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <algorithm>
#include <limits>
#include <vector>

namespace {

constexpr int white = 0xffffff;
constexpr int outline = 0x686868;
constexpr int shadow = 0xbebebe;
constexpr int rim = 0xefefef;

constexpr int grey(int level)
{
    return level << 16 | level << 8 | level;
}

QImage picture(QWidget& bar, double scale = 1.0)
{
    QImage image(bar.size() * scale, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    bar.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

std::vector<int> row(const QImage& image, int y, int first, int last)
{
    std::vector<int> colors;
    for (int x = first; x <= last; ++x)
        colors.push_back(static_cast<int>(image.pixel(x, y) & 0xffffff));
    return colors;
}

std::vector<int> column(const QImage& image, int x, int first, int last)
{
    std::vector<int> colors;
    for (int y = first; y <= last; ++y)
        colors.push_back(static_cast<int>(image.pixel(x, y) & 0xffffff));
    return colors;
}

/// Pixels of one colour after another, for what a row or a column should be.
std::vector<int> runs(std::initializer_list<std::pair<int, int>> lengthsAndColors)
{
    std::vector<int> colors;
    for (const auto& [length, color] : lengthsAndColors)
        colors.insert(colors.end(), static_cast<size_t>(length), color);
    return colors;
}

/// A black bar: the light shade s of black is the grey s, and its gradients are whole numbers.
class AProgressBar : public ::testing::Test
{
protected:
    AProgressBar()
    {
        bar.setColor(QColor(Qt::black));
        bar.resize(105, 24);
    }

    /// How far the bar reaches along a row or a column of the smooth style: the first white pixel.
    int smoothEnd()
    {
        bar.setScrolling(XP_ProgressBar::Smooth);
        const std::vector<int> middle = row(picture(bar), 12, 2, bar.width() - 3);
        return 2 + static_cast<int>(std::find(middle.begin(), middle.end(), white) - middle.begin());
    }

    int smoothTop()
    {
        bar.setScrolling(XP_ProgressBar::Smooth);
        const std::vector<int> middle = column(picture(bar), bar.width() / 2, 3, bar.height() - 3);
        return 3 + static_cast<int>(std::find(middle.begin(), middle.end(), grey(0)) - middle.begin());
    }

    XP_ProgressBar bar;
};

TEST_F(AProgressBar, BeginsEmptyHorizontalAndInChunksWithoutText)
{
    const XP_ProgressBar fresh;
    EXPECT_EQ(fresh.Min(), 0);
    EXPECT_EQ(fresh.Max(), 100);
    EXPECT_EQ(fresh.Value(), 0);
    EXPECT_EQ(fresh.Orientation(), 0);
    EXPECT_EQ(fresh.Scrolling(), 0);
    EXPECT_FALSE(fresh.ShowText());
    EXPECT_EQ(fresh.font().family(), "Tahoma");
    EXPECT_EQ(fresh.font().pointSize(), 8);
    EXPECT_EQ(fresh.Color(), QApplication::palette().color(QPalette::Highlight));
}

TEST_F(AProgressBar, KeepsTheColorOfTheDesktopThatWasWritten)
{
    QPalette palette = bar.palette();
    palette.setColor(QPalette::Highlight, QColor(10, 20, 30));
    bar.setPalette(palette);
    bar.setColor(QPalette::Highlight);
    palette.setColor(QPalette::Highlight, QColor(200, 100, 0));
    bar.setPalette(palette);
    EXPECT_EQ(bar.Color(), QColor(10, 20, 30));
}

TEST_F(AProgressBar, IsMadeOfChunksOfEightWithGapsOfTwo)
{
    bar.setValue(50);
    EXPECT_EQ(row(picture(bar), 12, 0, 104), runs({{1, outline},
                                                   {1, rim},
                                                   {8, grey(0)},
                                                   {2, white},
                                                   {8, grey(0)},
                                                   {2, white},
                                                   {8, grey(0)},
                                                   {2, white},
                                                   {8, grey(0)},
                                                   {2, white},
                                                   {8, grey(0)},
                                                   {53, white},
                                                   {1, rim},
                                                   {1, outline}}));
}

TEST_F(AProgressBar, IsOnePieceInTheSmoothStyle)
{
    bar.setScrolling(XP_ProgressBar::Smooth);
    bar.setValue(50);
    EXPECT_EQ(row(picture(bar), 12, 0, 104),
              runs({{1, outline}, {1, rim}, {48, grey(0)}, {53, white}, {1, rim}, {1, outline}}));
}

TEST_F(AProgressBar, IsLightAtBothSidesAndSolidInTheMiddle)
{
    bar.setValue(50);
    EXPECT_EQ(column(picture(bar), 5, 0, 23), runs({{1, outline},
                                                    {1, shadow},
                                                    {1, rim},
                                                    {1, grey(150)},
                                                    {1, grey(120)},
                                                    {1, grey(90)},
                                                    {1, grey(60)},
                                                    {1, grey(30)},
                                                    {1, grey(0)},
                                                    {9, grey(0)},
                                                    {1, grey(0)},
                                                    {1, grey(30)},
                                                    {1, grey(60)},
                                                    {1, grey(90)},
                                                    {1, rim},
                                                    {1, outline}}));
}

TEST_F(AProgressBar, HasABorderOfThreeColors)
{
    const QImage empty = picture(bar);
    EXPECT_EQ(row(empty, 0, 2, 102), runs({{101, outline}}));
    EXPECT_EQ(row(empty, 1, 0, 104), runs({{1, 0}, {1, outline}, {101, shadow}, {1, outline}, {1, 0}}));
    EXPECT_EQ(row(empty, 2, 0, 104), runs({{1, outline}, {103, rim}, {1, outline}}));
    EXPECT_EQ(row(empty, 3, 0, 104), runs({{1, outline}, {1, rim}, {101, white}, {1, rim}, {1, outline}}));
    EXPECT_EQ(row(empty, 22, 0, 104), runs({{1, 0}, {1, outline}, {101, rim}, {1, outline}, {1, 0}}));
    EXPECT_EQ(row(empty, 23, 2, 102), runs({{101, outline}}));
}

TEST_F(AProgressBar, LeavesOutTwoPixelsAndOneAtEachCorner)
{
    const QImage image = picture(bar);
    int left = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            left += qAlpha(image.pixel(x, y)) == 0 ? 1 : 0;
    }
    EXPECT_EQ(left, 12);
    for (const QPoint& corner :
         {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(103, 0), QPoint(104, 0), QPoint(104, 1), QPoint(0, 22),
          QPoint(0, 23), QPoint(1, 23), QPoint(104, 22), QPoint(103, 23), QPoint(104, 23)})
        EXPECT_EQ(qAlpha(image.pixel(corner)), 0) << corner.x() << ',' << corner.y();
}

TEST_F(AProgressBar, KeepsItsRoundCornersWhenItIsResized)
{
    bar.resize(60, 30);
    const QImage image = picture(bar);
    EXPECT_EQ(qAlpha(image.pixel(58, 29)), 0);
    EXPECT_EQ(qAlpha(image.pixel(57, 29)), 255);
    EXPECT_EQ(qAlpha(image.pixel(59, 28)), 0);
    EXPECT_EQ(qAlpha(image.pixel(59, 27)), 255);
}

struct EndRow
{
    const char* name;
    int width;
    int value;
    int end;
};

class TheEndOfTheBar : public AProgressBar, public ::testing::WithParamInterface<EndRow>
{
};

TEST_P(TheEndOfTheBar, IsTheEndOfAChunk)
{
    bar.resize(GetParam().width, 24);
    bar.setValue(GetParam().value);
    EXPECT_EQ(smoothEnd(), GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(Values, TheEndOfTheBar,
                         ::testing::Values(EndRow{"LessThanAChunk", 200, 4, 2}, EndRow{"OneChunk", 200, 5, 10},
                                           EndRow{"NearlyTwo", 200, 9, 10}, EndRow{"Two", 200, 10, 20},
                                           EndRow{"RoundedUpToAChunk", 197, 15, 30},  // 29.55
                                           EndRow{"RoundedDown", 196, 15, 20},        // 29.4
                                           EndRow{"Full", 200, 100, 198}, EndRow{"FullOfAnOddWidth", 109, 100, 100},
                                           EndRow{"BeyondTheMaximum", 109, 1000, 100},
                                           EndRow{"BelowTheMinimum", 200, -50, 2},
                                           EndRow{"Largest", 109, std::numeric_limits<int>::max(), 100},
                                           EndRow{"Smallest", 109, std::numeric_limits<int>::min(), 2}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AProgressBar, LooksTheSameForValuesOfOneChunk)
{
    bar.resize(200, 24);
    bar.setValue(50);
    const QImage fifty = picture(bar);
    bar.setValue(54);
    EXPECT_EQ(picture(bar), fifty);
    bar.setValue(55);
    EXPECT_NE(picture(bar), fifty);
}

TEST_F(AProgressBar, MeasuresItsValueFromTheMinimum)
{
    bar.resize(200, 24);
    bar.setMin(-100);
    bar.setMax(300);
    bar.setValue(0);
    EXPECT_EQ(smoothEnd(), 50);
}

TEST_F(AProgressBar, SpansTheWholeRangeOfIntegers)
{
    bar.resize(200, 24);
    bar.setMin(std::numeric_limits<int>::min());
    bar.setMax(std::numeric_limits<int>::max());
    bar.setValue(0);
    EXPECT_EQ(smoothEnd(), 100);
}

TEST_F(AProgressBar, StaysWhereItWasWhileTheRangeIsEmpty)
{
    bar.resize(200, 24);
    bar.setValue(50);
    ASSERT_EQ(smoothEnd(), 100);
    bar.setMin(100);
    bar.setValue(70);
    EXPECT_EQ(smoothEnd(), 100);
    bar.setMax(200);
    bar.setValue(120);
    EXPECT_EQ(smoothEnd(), 40);
}

TEST_F(AProgressBar, IsEmptyInAnEmptyRangeFromTheBeginning)
{
    bar.setMax(0);
    bar.setValue(5);
    EXPECT_EQ(smoothEnd(), 2);
}

TEST_F(AProgressBar, GrowsFromTheBottomWhenItIsVertical)
{
    bar.setOrientation(1);
    bar.resize(24, 200);
    bar.setValue(50);
    EXPECT_EQ(smoothTop(), 90);  // 200 * (1 - 0.5 - 0.02) = 96
    bar.setValue(53);
    EXPECT_EQ(smoothTop(), 90);
    bar.setValue(54);
    EXPECT_EQ(smoothTop(), 80);
    bar.setValue(100);
    EXPECT_EQ(smoothTop(), 3);
    bar.setValue(1000);
    EXPECT_EQ(smoothTop(), 3);
    bar.setValue(-5);
    EXPECT_EQ(smoothTop(), 190);  // 196: the last chunk is never taken away
}

TEST_F(AProgressBar, HasItsBandsAtTheSidesWhenItIsVertical)
{
    bar.setOrientation(-1);
    bar.resize(24, 200);
    bar.setScrolling(XP_ProgressBar::Smooth);
    bar.setValue(50);
    EXPECT_EQ(row(picture(bar), 150, 0, 23), runs({{1, outline},
                                                   {1, rim},
                                                   {1, grey(150)},
                                                   {1, grey(120)},
                                                   {1, grey(90)},
                                                   {1, grey(60)},
                                                   {1, grey(30)},
                                                   {1, grey(0)},
                                                   {8, grey(0)},
                                                   {1, grey(0)},
                                                   {1, grey(30)},
                                                   {1, grey(60)},
                                                   {1, grey(90)},
                                                   {1, grey(120)},
                                                   {1, grey(150)},
                                                   {1, rim},
                                                   {1, outline}}));
}

TEST_F(AProgressBar, BeginsWithAWholeChunkWhenItIsVertical)
{
    bar.setOrientation(1);
    bar.resize(24, 200);
    bar.setValue(50);
    EXPECT_EQ(column(picture(bar), 12, 80, 119),
              runs({{10, white}, {8, grey(0)}, {2, white}, {8, grey(0)}, {2, white}, {8, grey(0)}, {2, white}}));
}

TEST_F(AProgressBar, ShowsThreeBlocksThatGetDarkerBehindItsEdgeWhenItSearches)
{
    bar.setScrolling(XP_ProgressBar::Searching);
    bar.resize(200, 24);
    bar.setValue(30);
    const QImage image = picture(bar);
    EXPECT_EQ(
        row(image, 12, 2, 80),
        runs(
            {{24, white}, {10, grey(120)}, {2, white}, {10, grey(160)}, {2, white}, {10, grey(200)}, {21, white}}));
    EXPECT_EQ(column(image, 55, 3, 21), runs({{1, grey(220)},
                                              {1, grey(216)},
                                              {1, grey(212)},
                                              {1, grey(208)},
                                              {1, grey(204)},
                                              {1, grey(200)},
                                              {9, grey(200)},
                                              {1, grey(200)},
                                              {1, grey(204)},
                                              {1, grey(208)},
                                              {1, grey(212)}}));
    EXPECT_EQ(column(image, 45, 3, 3), runs({{1, grey(180)}}));
    EXPECT_EQ(column(image, 30, 3, 3), runs({{1, grey(140)}}));
}

TEST_F(AProgressBar, SearchesUpwardsWhenItIsVertical)
{
    bar.setScrolling(XP_ProgressBar::Searching);
    bar.setOrientation(1);
    bar.resize(24, 200);
    bar.setValue(50);
    EXPECT_EQ(
        column(picture(bar), 12, 80, 130),
        runs({{10, white}, {10, grey(200)}, {2, white}, {10, grey(160)}, {2, white}, {10, grey(120)}, {7, white}}));
}

TEST_F(AProgressBar, ShowsNothingThatSearchesBelowTheMinimum)
{
    bar.setValue(-1);
    const QImage empty = picture(bar);
    bar.setScrolling(XP_ProgressBar::Searching);
    EXPECT_EQ(picture(bar), empty);
}

TEST_F(AProgressBar, IsCrispAtTwiceTheSize)
{
    bar.setValue(50);
    const QImage once = picture(bar).copy(2, 0, 101, 24);
    const QImage twice = picture(bar, 2.0).copy(4, 0, 202, 48);
    EXPECT_EQ(once.scaled(202, 48).convertToFormat(QImage::Format_RGB32),
              twice.convertToFormat(QImage::Format_RGB32));
}

TEST(LightShade, OfZeroIsTheColorAndOf255IsWhite)
{
    const QColor color(255, 0, 51);
    EXPECT_EQ(lightShade(color, 0), color);
    EXPECT_EQ(lightShade(color, 255), QColor(Qt::white));
}

TEST(LightShade, LiesBetweenTheColorAndWhite)
{
    EXPECT_EQ(lightShade(QColor(255, 0, 51), 150), QColor(255, 150, 171));
    EXPECT_EQ(lightShade(QColor(0, 0, 0), 85), QColor(85, 85, 85));
    EXPECT_EQ(lightShade(QColor(153, 102, 204), 50), QColor(173, 132, 214));
}

TEST(LightShade, OfWhiteIsWhite)
{
    for (int shade = 0; shade <= 255; ++shade)
        EXPECT_EQ(lightShade(QColor(Qt::white), shade), QColor(Qt::white)) << shade;
}

struct TextRow
{
    const char* name;
    int maximum;
    int value;
    const char* text;
};

class TheTextOfTheBar : public AProgressBar, public ::testing::WithParamInterface<TextRow>
{
};

TEST_P(TheTextOfTheBar, MultipliesByTheMaximum)
{
    bar.setMax(GetParam().maximum);
    bar.setValue(GetParam().value);
    EXPECT_EQ(bar.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Values, TheTextOfTheBar,
                         ::testing::Values(TextRow{"Percent", 100, 42, "42 %"}, TextRow{"Nothing", 100, 0, "0 %"},
                                           TextRow{"Half", 50, 25, "12.5 %"}, TextRow{"Hundredths", 7, 3, "0.21 %"},
                                           TextRow{"Negative", 100, -3, "-3 %"},
                                           TextRow{"Large", 200, 150, "300 %"},
                                           TextRow{"BeyondIntegers", 2000000000, 2000000000, "4e+16 %"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AProgressBar, SaysThatItSearches)
{
    bar.setScrolling(XP_ProgressBar::Searching);
    bar.setValue(42);
    EXPECT_EQ(bar.text(), "Searching..");
}

TEST_F(AProgressBar, DrawsItsTextBlackInTheMiddle)
{
    bar.setColor(QColor(Qt::white));
    bar.resize(200, 40);
    bar.setValue(100);
    const QImage without = picture(bar);
    bar.setShowText(true);
    const QImage with = picture(bar);

    QRect ink;
    int darkest = 255;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) == without.pixel(x, y))
                continue;
            ink |= QRect(x, y, 1, 1);
            darkest = std::min(darkest, qGray(with.pixel(x, y)));
        }
    }
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_LT(darkest, 64);
    EXPECT_NEAR(ink.center().x(), 100, 3);
    EXPECT_NEAR(ink.center().y(), 20, 3);
    EXPECT_LT(ink.width(), 80);
}

/// A bar on the screen: counts how often it is drawn.
class AVisibleProgressBar : public AProgressBar
{
protected:
    AVisibleProgressBar()
    {
        bar.show();
        QApplication::processEvents();
        bar.installEventFilter(&watcher);
    }

    struct Watcher : QObject
    {
        int draws = 0;

        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                ++draws;
            return false;
        }
    };

    Watcher watcher;
};

TEST_F(AVisibleProgressBar, IsDrawnBeforeAWriteOfItsValueReturns)
{
    bar.setValue(10);
    EXPECT_EQ(watcher.draws, 1);
    bar.setValue(10);
    EXPECT_EQ(watcher.draws, 2);
    for (int i = 1; i <= 100; ++i)
        bar.setValue(i);
    EXPECT_EQ(watcher.draws, 102);
}

TEST_F(AVisibleProgressBar, IsDrawnWhenItsTextIsShownOrHidden)
{
    bar.setShowText(true);
    bar.setShowText(false);
    EXPECT_EQ(watcher.draws, 2);
}

TEST_F(AVisibleProgressBar, IsDrawnWhenItIsResized)
{
    bar.resize(300, 24);
    QApplication::processEvents();
    EXPECT_EQ(watcher.draws, 1);
}

TEST_F(AVisibleProgressBar, KeepsItsOtherPropertiesForTheNextDraw)
{
    bar.setMin(-10);
    bar.setMax(10);
    bar.setScrolling(XP_ProgressBar::Smooth);
    bar.setColor(QColor(Qt::red));
    bar.setColor(QPalette::Highlight);
    bar.setOrientation(1);
    QApplication::processEvents();
    EXPECT_EQ(watcher.draws, 0);
    bar.setValue(0);
    EXPECT_EQ(watcher.draws, 1);
}

TEST_F(AProgressBar, TellsItsValueToAScreenReader)
{
    bar.setMin(-5);
    bar.setMax(50);
    bar.setValue(20);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ProgressBar);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue(), 20);
    EXPECT_EQ(accessible->valueInterface()->minimumValue(), -5);
    EXPECT_EQ(accessible->valueInterface()->maximumValue(), 50);
    accessible->valueInterface()->setCurrentValue(30);
    EXPECT_EQ(bar.Value(), 20);
    EXPECT_TRUE(accessible->state().readOnly);
}

}  // namespace
