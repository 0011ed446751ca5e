#include "recorder/WindowBarMeters.h"

#include "QtPrinters.h"
#include "support/controls/LevelBar.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QVBoxLayout>

namespace {

class BarsInAWindow : public ::testing::Test
{
protected:
    BarsInAWindow() { window.resize(400, 200); }

    int create(const QRect& place)
    {
        return meters.CreateBar(static_cast<int>(window.winId()), place.x(), place.y(), place.width(),
                                place.height());
    }

    QList<LevelBar*> barsThere() const { return window.findChildren<LevelBar*>(); }

    static QRect placeIn(const QWidget& window, const QWidget& control)
    {
        return {control.mapTo(&window, QPoint(0, 0)), control.size()};
    }

    QWidget window;
    WindowBarMeters meters;
};

TEST_F(BarsInAWindow, AreLevelBarsAtTheirPlacesWithHandlesOfTheirOwn)
{
    const int first = create({10, 20, 300, 16});
    const int second = create({10, 50, 300, 16});
    EXPECT_GT(first, 0);
    EXPECT_GT(second, 0);
    EXPECT_NE(first, second);
    ASSERT_EQ(barsThere().size(), 2);
    EXPECT_EQ(barsThere()[0]->geometry(), QRect(10, 20, 300, 16));
    EXPECT_EQ(barsThere()[1]->geometry(), QRect(10, 50, 300, 16));
    window.show();
    EXPECT_TRUE(barsThere()[0]->isVisible());
}

TEST_F(BarsInAWindow, AreNoneWhereThereIsNoWindow)
{
    EXPECT_EQ(meters.CreateBar(0, 0, 0, 100, 10), 0);
    EXPECT_EQ(meters.CreateBar(-1, 0, 0, 100, 10), 0);
}

TEST_F(BarsInAWindow, ShowTheirOwnValuesInTheirRanges)
{
    const int first = create({10, 20, 300, 16});
    const int second = create({10, 50, 300, 16});
    meters.SetBarRange(first, 0, 32767);
    meters.SetBarRange(second, 0, 100);
    meters.SetBarValue(first, 1234);
    meters.SetBarValue(second, 200);
    EXPECT_EQ(barsThere()[0]->value(), 1234);
    EXPECT_EQ(barsThere()[0]->maximum(), 32767);
    EXPECT_EQ(barsThere()[1]->value(), 100);
}

TEST_F(BarsInAWindow, BeginWithTheColorsOfALevelBar)
{
    const int bar = create({10, 20, 300, 16});
    RecorderBarMeters::BarSettings settings{};
    meters.GetBarSettings(bar, &settings);
    EXPECT_EQ(settings[0], 1U);
    EXPECT_EQ(settings[3], 0xF0C108U);
    EXPECT_EQ(settings[4], 0x0E3EE4U);
    EXPECT_EQ(settings[5], 0xFFFFFFU);
}

TEST_F(BarsInAWindow, TakeColorsWithBlueInTheHighByte)
{
    const int bar = create({10, 20, 300, 16});
    const RecorderBarMeters::BarSettings wanted{1, 2, 3, 0x0000FF, 0x00FF00, 0xFF0000, 4};
    meters.SetBarSettings(bar, &wanted);
    EXPECT_EQ(barsThere()[0]->colors(), (LevelBar::Colors{qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));
    RecorderBarMeters::BarSettings read{};
    meters.GetBarSettings(bar, &read);
    EXPECT_EQ(read, wanted);
}

TEST_F(BarsInAWindow, GoWithTheirWindow)
{
    auto passing = std::make_unique<QWidget>();
    const int bar = meters.CreateBar(static_cast<int>(passing->winId()), 0, 0, 100, 10);
    ASSERT_GT(bar, 0);
    passing.reset();
    meters.SetBarValue(bar, 5);
    EXPECT_NE(create({0, 0, 100, 10}), bar);
}

TEST_F(BarsInAWindow, ThatAreNoneTakeAnything)
{
    RecorderBarMeters::BarSettings settings{9, 9, 9, 9, 9, 9, 9};
    for (const int none : {0, -1, 7}) {
        meters.SetBarRange(none, 0, 1);
        meters.SetBarValue(none, 1);
        meters.GetBarSettings(none, &settings);
        meters.SetBarSettings(none, &settings);
    }
    EXPECT_EQ(settings[3], 9U);
}

/// A control in a layout, with another above it, that marks the place of a bar.
class ABarOnAControl : public BarsInAWindow
{
protected:
    ABarOnAControl()
    {
        auto* rows = new QVBoxLayout(&window);
        rows->addWidget(above);
        above->setFixedHeight(30);
        rows->addWidget(frame);
        auto* inner = new QVBoxLayout(frame);
        inner->addWidget(place);
        place->setAccessibleName("Input level left");
        place->setMinimumSize(100, 14);
        window.show();
        QApplication::processEvents();
        handle = create(placeIn(window, *place));
    }

    QWidget* above = new QWidget;
    QWidget* frame = new QWidget;
    QWidget* place = new QWidget;
    int handle = 0;
};

TEST_F(ABarOnAControl, GoesWhereTheLayoutMovesTheControl)
{
    ASSERT_EQ(barsThere().size(), 1);
    const LevelBar& bar = *barsThere().first();
    EXPECT_EQ(placeIn(window, bar), placeIn(window, *place));
    const QRect before = placeIn(window, bar);
    window.resize(700, 300);
    above->setFixedHeight(70);
    QApplication::processEvents();
    EXPECT_EQ(placeIn(window, bar), placeIn(window, *place));
    EXPECT_GT(placeIn(window, bar).width(), before.width());
    EXPECT_GT(placeIn(window, bar).top(), before.top());
}

TEST_F(ABarOnAControl, HasItsNameForScreenReaders)
{
    EXPECT_EQ(barsThere().first()->accessibleName(), "Input level left");
    EXPECT_EQ(place->accessibleName(), "");
}

}  // namespace
