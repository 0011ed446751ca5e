#include "Controls.h"
#include "support/RotateImage.h"
#include "vocalremover/pictures/PanDial.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>

namespace {

constexpr QRgb white = qRgb(0xFF, 0xFF, 0xFF);
constexpr QRgb ink = qRgb(0x40, 0, 0);

/// A dial of its natural size, in a light window.
class APanDial : public ::testing::Test
{
protected:
    APanDial()
    {
        QPalette light;
        light.setColor(QPalette::Base, QColor(250, 240, 230));
        light.setColor(QPalette::Text, Qt::black);
        dial->setPalette(light);
        dial->resize(dial->sizeHint());
        dial->show();
        drawn();  // its own knob is in place
    }

    /// What is on the surface, in pixels of the screen.
    QImage drawn()
    {
        QImage image = surface.grab().toImage().convertToFormat(QImage::Format_RGB32);
        image.setDevicePixelRatio(1);
        return image;
    }

    /// What is on it at this position of another knob.
    QImage drawnWith(const QImage& knob, int pan)
    {
        source.setPixmap(QPixmap::fromImage(knob));
        dial->showAngleOf(pan);
        return drawn();
    }

    static QImage blank(int side)
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(white);
        return image;
    }

    /// With something of its own in each quarter.
    static QImage knobWithoutSymmetry()
    {
        QImage image = blank(61);
        for (int y = 10; y < 50; ++y) {
            for (int x = 8; x < 55; ++x)
                image.setPixel(x, y, qRgb(3 * x, 4 * y, x * y % 251));
        }
        return image;
    }

    /// The surface at this angle, drawn once more beside it.
    QImage turnedBy(qint64 tenThousandths, const QImage& knob)
    {
        QImage wanted = drawnWith(blank(1), 0);
        const double unit = wanted.width() / 336.0;
        ImageRotation rotation{.angle = Decimal4::ofTenThousandths(tenThousandths),
                               .centreX = qRound(168 * unit),
                               .centreY = qRound(178 * unit)};
        RotateImage(wanted, knob, rotation);
        return wanted;
    }

    std::unique_ptr<PanDial> dial = std::make_unique<PanDial>();
    QWidget& surface = control<QWidget>(*dial, "Picture2");
    QLabel& source = control<QLabel>(*dial, "S");
};

struct PositionRow
{
    int pan;
    qint64 angle;
};

TEST_F(APanDial, TurnsTheKnobByMinus175TenThousandthsAStep)
{
    const QImage knob = knobWithoutSymmetry();
    for (const auto& [pan, angle] :
         {PositionRow{0, 0}, PositionRow{1, -175}, PositionRow{-1, 175}, PositionRow{37, -6'475},
          PositionRow{-90, 15'750}, PositionRow{100, -17'500}, PositionRow{-100, 17'500}}) {
        const QImage wanted = turnedBy(angle, knob);
        EXPECT_EQ(drawnWith(knob, pan), wanted) << pan;
    }
}

TEST_F(APanDial, PointsUpInTheMiddleAndToTheRightForPositionsOnTheRight)
{
    QImage knob = blank(61);
    for (int y = 2; y < 12; ++y) {
        for (int x = 28; x < 33; ++x)
            knob.setPixel(x, y, ink);
    }
    const auto pointer = [&](int pan) {
        const QImage image = drawnWith(knob, pan);
        QPointF sum;
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == ink) {
                    sum += QPointF(x, y);
                    ++count;
                }
            }
        }
        return sum / count - QPointF(168, 178) * image.width() / 336.0;
    };
    EXPECT_LT(pointer(0).y(), -20);
    EXPECT_LT(std::abs(pointer(0).x()), 2);
    EXPECT_GT(pointer(60).x(), 15);
    EXPECT_LT(pointer(-60).x(), -15);
    EXPECT_GT(pointer(100).y(), 0);
    EXPECT_GT(pointer(-100).y(), 0);
}

TEST_F(APanDial, KeepsItsCentreAtEveryPosition)
{
    QImage knob = blank(61);
    for (int y = 29; y < 32; ++y) {
        for (int x = 29; x < 32; ++x)
            knob.setPixel(x, y, ink);
    }
    const QImage empty = drawnWith(blank(1), 0);
    std::optional<QPoint> centre;
    for (int pan = -100; pan <= 100; pan += 5) {
        const QImage image = drawnWith(knob, pan);
        QRect changed;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != empty.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
            }
        }
        const QPoint found = changed.center();
        if (!centre)
            centre = found;
        EXPECT_EQ(found, *centre) << pan;
    }
    const double unit = empty.width() / 336.0;
    EXPECT_NEAR(centre->x() + 0.5, 168 * unit, 1);
    EXPECT_NEAR(centre->y() + 0.5, 178 * unit, 1);
}

TEST_F(APanDial, ClearsItsSurfaceBeforeItDraws)
{
    const QImage first = drawnWith(knobWithoutSymmetry(), 20);
    drawnWith(knobWithoutSymmetry(), -70);
    EXPECT_EQ(drawnWith(knobWithoutSymmetry(), 20), first);
}

TEST_F(APanDial, HasAKnobOfItsOwnWithATransparentRimAndAMiddle)
{
    const QImage knob = source.pixmap(Qt::ReturnByValue).toImage();
    EXPECT_TRUE(source.isHidden());
    EXPECT_EQ(knob.width(), knob.height());
    EXPECT_EQ(knob.width() % 4, 1);
    EXPECT_EQ(knob.pixel(0, 0), white);
    EXPECT_NE(knob.pixel(knob.width() / 2, knob.height() / 2), white);
    for (int i = 0; i < knob.width(); ++i) {  // these two are never drawn
        EXPECT_EQ(knob.pixel(i, knob.height() - 1), white);
        EXPECT_EQ(knob.pixel(knob.width() - 1, i), white);
    }
}

TEST_F(APanDial, TakesTheColoursOfTheWindowAlsoWhenTheyChange)
{
    dial->showAngleOf(30);
    EXPECT_EQ(drawn().pixelColor(0, 0), QColor(250, 240, 230));
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(20, 30, 40));
    dark.setColor(QPalette::Text, Qt::white);
    dial->setPalette(dark);
    const QImage now = drawn();
    EXPECT_EQ(now.pixelColor(0, 0), QColor(20, 30, 40));
    dial->showAngleOf(30);
    EXPECT_EQ(drawn(), now);
}

TEST_F(APanDial, IsDrawnAnewForEachSize)
{
    dial->showAngleOf(30);
    const QSize before = drawn().size();
    const int knob = source.pixmap(Qt::ReturnByValue).width();
    dial->resize(dial->size() * 2);
    const QSize after = drawn().size();
    EXPECT_GE(after.width(), 2 * before.width());
    EXPECT_GE(source.pixmap(Qt::ReturnByValue).width(), 2 * knob - 8);  // it grows by fours
    EXPECT_NEAR(after.width() * 300.0 / 336.0, after.height(), 3);
}

TEST_F(APanDial, IsHarmlessWithoutRoom)
{
    dial->setMinimumSize(1, 1);
    dial->resize(1, 1);
    dial->showAngleOf(30);
    dial->grab();
}

TEST_F(APanDial, HandlesWaitingEventsBeforeItDraws)
{
    source.setPixmap(QPixmap::fromImage(knobWithoutSymmetry()));
    dial->showAngleOf(-40);
    const QImage before = drawn();
    QImage meanwhile;
    QTimer::singleShot(0, dial.get(), [&] { meanwhile = drawn(); });
    dial->showAngleOf(40);
    EXPECT_EQ(meanwhile, before);
    EXPECT_NE(drawn(), before);
}

TEST_F(APanDial, ShowsThePositionThatWasAskedForLast)
{
    const QImage wanted = drawnWith(knobWithoutSymmetry(), 55);
    QImage meanwhile;
    QTimer::singleShot(0, dial.get(), [&] {
        dial->showAngleOf(55);
        meanwhile = drawn();
    });
    dial->showAngleOf(-20);
    EXPECT_EQ(meanwhile, wanted);
    EXPECT_EQ(drawn(), wanted);
}

// As of a mouse that goes on while a move is still at work.
TEST_F(APanDial, DoesNotSinkDeeperWithEachWaitingMove)
{
    int depth = 0;
    int deepest = 0;
    int moves = 0;
    const std::function<void()> move = [&] {
        deepest = std::max(deepest, ++depth);
        if (++moves < 50)
            QMetaObject::invokeMethod(dial.get(), move, Qt::QueuedConnection);
        dial->showAngleOf(moves % 100);
        --depth;
    };
    QMetaObject::invokeMethod(dial.get(), move, Qt::QueuedConnection);
    while (moves < 50)
        dial->showAngleOf(0);
    EXPECT_EQ(deepest, 1);
    const QImage last = drawn();
    dial->showAngleOf(50);
    EXPECT_EQ(drawn(), last);
}

TEST(ADialInAWindow, MayComeToItsEndWhileItHandlesEvents)
{
    auto window = std::make_unique<QWidget>();
    const QPointer<PanDial> dial = new PanDial(window.get());
    window->show();
    QTimer::singleShot(0, qApp, [&] { window.reset(); });
    dial->showAngleOf(10);
    EXPECT_TRUE(dial.isNull());
}

TEST(ADialInAWindow, MayBeCalledAgainAndThenComeToItsEnd)
{
    auto window = std::make_unique<QWidget>();
    const QPointer<PanDial> dial = new PanDial(window.get());
    window->show();
    QTimer::singleShot(0, qApp, [&] {
        dial->showAngleOf(20);
        window.reset();
    });
    dial->showAngleOf(10);
    EXPECT_TRUE(dial.isNull());
}

}  // namespace
