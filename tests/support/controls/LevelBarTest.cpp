#include "support/controls/LevelBar.h"

#include <gtest/gtest.h>
#include <QAccessible>
#include <QApplication>
#include <QBackingStore>
#include <QImage>
#include <QPaintEvent>
#include <QPalette>
#include <QPixmap>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <random>

namespace {

// The three colours as they are told: with blue in the high byte.
constexpr QRgb fromBlueHigh(unsigned color)
{
    return qRgb(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

constexpr QRgb lightBlue = fromBlueHigh(0xF0C108);
constexpr QRgb orangeRed = fromBlueHigh(0x0E3EE4);
constexpr QRgb white = fromBlueHigh(0xFFFFFF);

constexpr int full = 32767;
constexpr int units = 400;  // of width within the line

/// What stands along a bar, from left to right, in pixels of the screen.
struct Stretches
{
    int blue = 0;
    int red = 0;
    int empty = 0;
    int other = 0;
    bool inOrder = true;

    bool operator==(const Stretches&) const = default;
};

void PrintTo(const Stretches& is, std::ostream* out)
{
    *out << is.blue << " blue, " << is.red << " red, " << is.empty << " white, " << is.other << " other pixels"
         << (is.inOrder ? "" : " in disorder");
}

Stretches stretchesIn(const QImage& image, int row)
{
    Stretches found;
    for (int x = 0; x < image.width(); ++x) {
        switch (image.pixel(x, row)) {
        case lightBlue:
            ++found.blue;
            found.inOrder = found.inOrder && found.red + found.empty == 0;
            break;
        case orangeRed:
            ++found.red;
            found.inOrder = found.inOrder && found.empty == 0;
            break;
        case white:
            ++found.empty;
            break;
        default:
            ++found.other;
        }
    }
    return found;
}

class ALevelBar : public ::testing::Test
{
protected:
    ALevelBar()
    {
        bar.SetBarRange(0, full);
        bar.resize(units + 2, 12);
    }

    /// A number of units in pixels of the screen.
    int pixels(double ofUnits) const { return static_cast<int>(std::lround(ofUnits * bar.devicePixelRatioF())); }

    QImage image() { return bar.grab().toImage(); }

    Stretches stretches()
    {
        const QImage now = image();
        return stretchesIn(now, now.height() / 2);
    }

    /// What must be seen where this much is filled: the line takes what is left of the width.
    Stretches filled(double ofUnits) const
    {
        constexpr double top = 0.9 * units;
        const int blue = pixels(std::min(ofUnits, top));
        const int red = pixels(ofUnits) - blue;
        const int empty = pixels(units) - blue - red;
        return {blue, red, empty, pixels(units + 2) - blue - red - empty, true};
    }

    LevelBar bar;
};

TEST_F(ALevelBar, IsWhiteAtZero)
{
    bar.SetBarValue(0);
    EXPECT_EQ(stretches(), filled(0));
    EXPECT_EQ(stretches().empty, pixels(units));
}

TEST_F(ALevelBar, IsFilledToItsEndAtTheTopOfItsRangeTheLastTenthInRed)
{
    bar.SetBarValue(full);
    EXPECT_EQ(stretches(), filled(units));
    EXPECT_EQ(stretches().blue, pixels(360));
    EXPECT_EQ(stretches().red, pixels(40));
    EXPECT_EQ(stretches().empty, 0);
}

struct LevelRow
{
    const char* name;
    int value;
    double units;
};

class EachLevel : public ALevelBar, public ::testing::WithParamInterface<LevelRow>
{
};

TEST_P(EachLevel, FillsItsShareOfTheWidth)
{
    bar.SetBarValue(GetParam().value);
    EXPECT_EQ(stretches(), filled(GetParam().units));
}

// 400 units for 32767: 81.92 to a unit, or 40.96 to half of one.
INSTANTIATE_TEST_SUITE_P(Values, EachLevel,
                         ::testing::Values(LevelRow{"OneUnit", 82, 1}, LevelRow{"AQuarter", 8192, 100},
                                           LevelRow{"Half", 16384, 200}, LevelRow{"UnderTheTop", 29409, 359},
                                           LevelRow{"AtTheTop", 29491, 360}, LevelRow{"OverTheTop", 29573, 361},
                                           LevelRow{"AlmostFull", 32686, 399}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ALevelBar, IsTheSameInEachRowBetweenItsLines)
{
    bar.SetBarValue(30000);
    const QImage now = image();
    const Stretches middle = stretchesIn(now, now.height() / 2);
    ASSERT_GT(middle.red, 0);
    for (int row = pixels(1) + 1; row < now.height() - pixels(1) - 1; ++row)
        EXPECT_EQ(stretchesIn(now, row), middle) << row;
}

TEST_F(ALevelBar, KeepsItsColorsAndShowsItsLineInLightAndInDarkWindows)
{
    for (const QColor& ground : {QColor(239, 239, 239), QColor(49, 54, 59)}) {
        bar.setPalette(QPalette(ground, ground));
        bar.SetBarValue(31000);
        EXPECT_EQ(stretches().blue, pixels(360));
        const QColor line = image().pixelColor(0, 0);
        EXPECT_GE(std::abs(line.lightness() - ground.lightness()), 48);
        EXPECT_GE(std::abs(line.lightness() - 255), 48);
    }
}

TEST_F(ALevelBar, TakesOtherColors)
{
    bar.SetBarValue(full / 2);
    bar.setColors({qRgb(1, 2, 3), orangeRed, lightBlue});
    const QImage now = image();
    const int middle = now.height() / 2;
    EXPECT_EQ(now.pixel(pixels(10), middle), qRgb(1, 2, 3));
    EXPECT_EQ(now.pixel(pixels(390), middle), lightBlue);
    EXPECT_EQ(bar.colors(), (LevelBar::Colors{qRgb(1, 2, 3), orangeRed, lightBlue}));
    bar.setColors({});
    EXPECT_EQ(stretches(), filled(units / 2.0));
}

TEST_F(ALevelBar, StaysAtTheLastValueWhateverBecomesOfItsSize)
{
    bar.SetBarValue(16384);
    bar.resize(2 * units + 2, 20);
    EXPECT_EQ(bar.value(), 16384);
    EXPECT_EQ(stretches().blue, pixels(units));
    bar.hide();
    bar.show();
    bar.resize(1, 1);
    EXPECT_EQ(bar.value(), 16384);
}

TEST_F(ALevelBar, CutsAValueToItsRange)
{
    bar.SetBarValue(full + 1);
    EXPECT_EQ(bar.value(), full);
    bar.SetBarValue(std::numeric_limits<int>::max());
    EXPECT_EQ(stretches(), filled(units));
    bar.SetBarValue(-1);
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(stretches(), filled(0));
}

TEST_F(ALevelBar, TakesAnyRange)
{
    bar.SetBarRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    bar.SetBarValue(0);
    EXPECT_EQ(stretches(), filled(units / 2.0));
    bar.SetBarRange(-60, -20);
    EXPECT_EQ(bar.value(), -20);
    bar.SetBarValue(-30);
    EXPECT_EQ(stretches(), filled(300));
}

TEST_F(ALevelBar, IsEmptyWithoutARange)
{
    bar.SetBarRange(5, 5);
    bar.SetBarValue(5);
    EXPECT_EQ(stretches(), filled(0));
    LevelBar fresh;
    fresh.SetBarValue(100);
    EXPECT_EQ(fresh.value(), 0);
}

/// A bar in a window that is shown, and what is painted there.
class ALevelBarInAWindow : public ALevelBar
{
protected:
    ALevelBarInAWindow()
    {
        auto* rows = new QVBoxLayout(&window);
        rows->setContentsMargins(7, 5, 3, 5);
        rows->addWidget(&bar);
        window.resize(units + 12, 40);
        window.show();
        QApplication::processEvents();
        window.installEventFilter(&ofWindow);
        bar.installEventFilter(&ofBar);
    }

    ~ALevelBarInAWindow() override { bar.setParent(nullptr); }

    struct Watcher : QObject
    {
        QRegion painted;
        int times = 0;

        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint) {
                painted += static_cast<QPaintEvent*>(event)->region();
                ++times;
            }
            return false;
        }
    };

    QRect paintedFor(int value)
    {
        ofBar.painted = {};
        bar.SetBarValue(value);
        QApplication::processEvents();
        return ofBar.painted.boundingRect();
    }

    /// A stretch of the bar; where a unit is no whole number of pixels, with the rest of the units it ends in.
    void expectPainted(const QRect& is, int left, int right) const
    {
        const bool uneven = bar.devicePixelRatioF() != std::floor(bar.devicePixelRatioF());
        const int room = uneven ? 1 : 0;
        EXPECT_LE(is.left(), left);
        EXPECT_GE(is.left(), left - room);
        EXPECT_GE(is.right(), right);
        EXPECT_LE(is.right(), right + room);
        EXPECT_EQ(is.top(), 1);
        EXPECT_EQ(is.bottom(), bar.height() - 2);
    }

    QWidget window;
    Watcher ofWindow;
    Watcher ofBar;
};

TEST_F(ALevelBarInAWindow, PaintsOnlyTheStripThatChanges)
{
    ASSERT_EQ(bar.width(), units + 2);
    expectPainted(paintedFor(8192), 1, 100);
    expectPainted(paintedFor(16384), 101, 200);
    expectPainted(paintedFor(12288), 151, 200);
    expectPainted(paintedFor(32767), 151, 400);
    expectPainted(paintedFor(0), 1, 400);
    EXPECT_EQ(ofBar.times, 5);
}

TEST_F(ALevelBarInAWindow, PaintsNothingOfTheWindowRoundIt)
{
    for (const int value : {16384, 4000, 32767, 0})
        paintedFor(value);
    EXPECT_EQ(ofBar.times, 4);
    EXPECT_EQ(ofWindow.times, 0);
}

TEST_F(ALevelBarInAWindow, PaintsNothingForAValueThatEndsAtTheSamePixel)
{
    paintedFor(16384);
    EXPECT_TRUE(paintedFor(16384).isEmpty());
    EXPECT_TRUE(paintedFor(16390).isEmpty());
    EXPECT_EQ(bar.value(), 16390);
    EXPECT_EQ(ofBar.times, 1);
}

TEST_F(ALevelBarInAWindow, PaintsNothingForAValueBeyondTheEndItStandsAt)
{
    paintedFor(full);
    EXPECT_TRUE(paintedFor(full + 1000).isEmpty());
    paintedFor(0);
    EXPECT_TRUE(paintedFor(-1000).isEmpty());
}

TEST_F(ALevelBarInAWindow, ShowsAfterManyValuesWhatAFreshlyPaintedOneShows)
{
    std::mt19937 generator(5);
    std::uniform_int_distribution<int> level(0, full);
    for (int i = 0; i < 300; ++i) {
        paintedFor(level(generator));
        const QImage* shown = dynamic_cast<QImage*>(window.backingStore()->paintDevice());
        ASSERT_NE(shown, nullptr);
        const QImage fresh = window.grab().toImage();
        ASSERT_EQ(shown->size(), fresh.size());
        ASSERT_EQ(shown->convertToFormat(fresh.format()), fresh) << i << ": " << bar.value();
    }
    EXPECT_GT(ofBar.times, 290);
}

class ALevelBarToAScreenReader : public ALevelBar
{
protected:
    ALevelBarToAScreenReader() { bar.setAccessibleName("Level left"); }

    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&bar);
};

TEST_F(ALevelBarToAScreenReader, TellsItsNameItsKindAndItsValueWhenAsked)
{
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->text(QAccessible::Name), QString("Level left"));
    EXPECT_EQ(reader->role(), QAccessible::ProgressBar);
    EXPECT_TRUE(reader->state().readOnly);
    QAccessibleValueInterface* value = reader->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->minimumValue().toInt(), 0);
    EXPECT_EQ(value->maximumValue().toInt(), full);
    bar.SetBarValue(12345);
    EXPECT_EQ(value->currentValue().toInt(), 12345);
}

TEST_F(ALevelBarToAScreenReader, IsNotSetByIt)
{
    bar.SetBarValue(12345);
    reader->valueInterface()->setCurrentValue(1);
    EXPECT_EQ(bar.value(), 12345);
}

}  // namespace
