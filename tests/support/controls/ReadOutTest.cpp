#include "support/controls/ReadOut.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QVBoxLayout>

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
    AReadOut() { readOut.setText("00:43:50"); }

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

/// A read-out in a window with a layout: counts the layouts that it causes and keeps what is painted of it.
class AReadOutInAWindow : public AReadOut
{
protected:
    AReadOutInAWindow()
    {
        (new QVBoxLayout(&window))->addWidget(&readOut);
        window.resize(600, 200);
        window.show();
        QApplication::processEvents();
        window.installEventFilter(&watcher);
        readOut.installEventFilter(&watcher);
    }

    ~AReadOutInAWindow() override { readOut.setParent(nullptr); }

    struct Watcher : QObject
    {
        int layouts = 0;
        QRegion painted;

        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::LayoutRequest)
                ++layouts;
            if (event->type() == QEvent::Paint)
                painted += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    };

    void show(const QString& text)
    {
        watcher.painted = {};
        readOut.setText(text);
        QApplication::processEvents();
    }

    QWidget window;
    Watcher watcher;
};

TEST_F(AReadOutInAWindow, PaintsOnlyTheCharactersThatDiffer)
{
    show("00:43:51");
    const QRect lastDigit = watcher.painted.boundingRect();
    EXPECT_GT(lastDigit.left(), readOut.width() / 2);
    EXPECT_LT(lastDigit.width(), readOut.width() / 8);
    show("00:43:51");
    EXPECT_TRUE(watcher.painted.isEmpty());
    show("10:43:52");
    EXPECT_EQ(watcher.painted.rectCount(), 2);
    EXPECT_EQ(watcher.layouts, 0);
}

TEST_F(AReadOutInAWindow, CausesALayoutOnlyWhenItsTextTakesOtherRoom)
{
    for (const char* text : {"11:11:11", "48:20:97", "99:59:99"})
        show(text);
    EXPECT_EQ(watcher.layouts, 0);
    const QSize before = readOut.sizeHint();
    show("100:00:00");
    EXPECT_EQ(watcher.layouts, 1);
    EXPECT_GT(readOut.sizeHint().width(), before.width());
}

TEST_F(AReadOutInAWindow, LeavesNothingOfEarlierTextsBehind)
{
    QImage screen(readOut.size(), QImage::Format_RGB32);
    readOut.render(&screen);
    for (const char* text : {"00:00:00", "100:00:00", "01:11:99", "27:14:35", "48:14:36"}) {
        show(text);
        readOut.render(&screen, watcher.painted.boundingRect().topLeft(), watcher.painted);
    }
    QImage fresh(readOut.size(), QImage::Format_RGB32);
    readOut.render(&fresh);
    EXPECT_EQ(screen, fresh);
}

TEST_F(AReadOut, KeepsItsCharactersInTheirPlacesWhileItCounts)
{
    const QSize natural = readOut.sizeHint();
    readOut.setText("11:11:11");
    EXPECT_EQ(readOut.sizeHint(), natural);
}

TEST_F(AReadOut, IsALabelToAScreenReader)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&readOut);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::StaticText);
    EXPECT_EQ(accessible->text(QAccessible::Name), "00:43:50");
    readOut.setText("00:43:51");
    EXPECT_EQ(accessible->text(QAccessible::Name), "00:43:51");
}

}  // namespace
