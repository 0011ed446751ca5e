#include "support/controls/Slider.h"

#include "support/controls/TimeSlider.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleFactory>
#include <QTest>
#include <QToolTip>
#include <QTransform>
#include <QWheelEvent>
#include <memory>

namespace {

void turnWheel(QWidget& widget, int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPointF point = widget.rect().center();
    QWheelEvent event(point, widget.mapToGlobal(point), {}, {0, angle}, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&widget, &event);
}

void moveMouse(QWidget& widget, const QPoint& point)
{
    QMouseEvent event(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

class ASlider : public ::testing::Test
{
protected:
    ASlider()
    {
        slider.setRange(-60, 60);
        slider.resize(300, 24);
        slider.show();
    }

    QPoint at(double share) const { return {static_cast<int>(share * (slider.width() - 1)), slider.height() / 2}; }

    const std::unique_ptr<QStyle> fusion{QStyleFactory::create("Fusion")};
    Slider slider;
    QSignalSpy changes{&slider, &Slider::Change};
};

TEST_F(ASlider, RunsItsChangeBeforeAPutOfAnotherValueReturns)
{
    slider.setValue(10);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ASlider, RunsNothingForAPutOfTheValueHeld)
{
    slider.setValue(10);
    slider.setValue(10);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ASlider, CutsAPutToItsRange)
{
    slider.setValue(61);
    EXPECT_EQ(slider.value(), 60);
    slider.setValue(-1000);
    EXPECT_EQ(slider.value(), -60);
    EXPECT_EQ(changes.count(), 2);
    slider.setValue(-61);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(ASlider, TellsTheNewValueInsideItsChange)
{
    int seen = 0;
    QObject::connect(&slider, &Slider::Change, [&] { seen = slider.value(); });
    slider.setValue(7);
    EXPECT_EQ(seen, 7);
}

TEST_F(ASlider, TakesAStepThatStaysInsideAndRefusesOneThatPassesTheEnd)
{
    slider.setValue(55);
    slider.stepOrRefuse(10);
    EXPECT_EQ(slider.value(), 55);
    slider.stepOrRefuse(5);
    EXPECT_EQ(slider.value(), 60);
    slider.stepOrRefuse(1);
    EXPECT_EQ(slider.value(), 60);
    slider.stepOrRefuse(-120);
    EXPECT_EQ(slider.value(), -60);
    slider.stepOrRefuse(-1);
    EXPECT_EQ(slider.value(), -60);
}

TEST_F(ASlider, GoesToWhereItIsClicked)
{
    QTest::mouseClick(&slider, Qt::LeftButton, {}, at(1.0));
    EXPECT_EQ(slider.value(), 60);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, at(0.0));
    EXPECT_EQ(slider.value(), -60);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, at(0.25));
    EXPECT_NEAR(slider.value(), -30, 4);
}

TEST_F(ASlider, FollowsThePointerAndStaysAtItsEnds)
{
    QTest::mousePress(&slider, Qt::LeftButton, {}, at(0.25));
    EXPECT_TRUE(slider.isSliderDown());
    moveMouse(slider, at(0.75));
    EXPECT_NEAR(slider.value(), 30, 4);
    moveMouse(slider, at(3.0));
    EXPECT_EQ(slider.value(), 60);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, at(3.0));
    EXPECT_FALSE(slider.isSliderDown());
    moveMouse(slider, at(0.1));
    EXPECT_EQ(slider.value(), 60);
}

TEST_F(ASlider, DoesNotJumpWhenItsHandleIsTakenBesideItsMiddle)
{
    QTest::mousePress(&slider, Qt::LeftButton, {}, at(0.5) + QPoint(3, 0));
    EXPECT_EQ(slider.value(), 0);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, at(0.5) + QPoint(3, 0));
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ASlider, LeavesTheOtherMouseButtonsAlone)
{
    QTest::mouseClick(&slider, Qt::RightButton, {}, at(1.0));
    QTest::mouseClick(&slider, Qt::MiddleButton, {}, at(1.0));
    EXPECT_EQ(slider.value(), 0);
}

TEST_F(ASlider, TakesOneStepForANotchOfTheWheel)
{
    turnWheel(slider, 120);
    EXPECT_EQ(slider.value(), 1);
    turnWheel(slider, -240);
    EXPECT_EQ(slider.value(), -1);
    turnWheel(slider, 120, Qt::ControlModifier);
    EXPECT_EQ(slider.value(), -1 + slider.pageStep());
}

TEST_F(ASlider, AddsUpFractionsOfANotch)
{
    for (int i = 0; i < 7; ++i)
        turnWheel(slider, 30);
    EXPECT_EQ(slider.value(), 1);
    turnWheel(slider, 30);
    EXPECT_EQ(slider.value(), 2);
}

TEST_F(ASlider, IsReachedByTabAndMovedByTheArrowKeys)
{
    EXPECT_TRUE(slider.focusPolicy() & Qt::TabFocus);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(slider.value(), 1);
    QTest::keyClick(&slider, Qt::Key_Left);
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(slider.value(), -1);
}

TEST_F(ASlider, StandsUprightAsWell)
{
    slider.setOrientation(Qt::Vertical);
    slider.resize(24, 300);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, {12, 0});
    EXPECT_EQ(slider.value(), 60);
    QTest::mouseClick(&slider, Qt::LeftButton, {}, {12, 299});
    EXPECT_EQ(slider.value(), -60);
}

/// Counts, in each half of the slider's groove, what is painted in the highlight's hue.
struct Fill
{
    int left = 0;
    int right = 0;
};

Fill fillOf(const QImage& image)
{
    Fill fill;
    const int y = image.height() / 2;
    for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        if (color.saturation() > 100)
            ++(x < image.width() / 2 ? fill.left : fill.right);
    }
    return fill;
}

Fill fillOf(Slider& slider)
{
    QImage image(slider.size(), QImage::Format_RGB32);
    slider.render(&image);
    return fillOf(image);
}

TEST_F(ASlider, IsFilledBetweenNeutralAndItsHandle)
{
    slider.setStyle(fusion.get());
    slider.setValue(0);
    EXPECT_LE(fillOf(slider).left + fillOf(slider).right, 2);
    slider.setValue(60);
    EXPECT_LE(fillOf(slider).left, 2);
    EXPECT_GT(fillOf(slider).right, 120);
    slider.setValue(-60);
    EXPECT_GT(fillOf(slider).left, 120);
    EXPECT_LE(fillOf(slider).right, 2);
}

TEST_F(ASlider, WithoutNeutralInsideIsFilledFromItsMinimum)
{
    slider.setStyle(fusion.get());
    slider.setRange(0, 100);
    slider.setValue(100);
    EXPECT_GT(fillOf(slider).left, 120);
    EXPECT_GT(fillOf(slider).right, 120);
}

TEST_F(ASlider, UprightIsFilledBetweenNeutralAndItsHandle)
{
    slider.setStyle(fusion.get());
    slider.setOrientation(Qt::Vertical);
    slider.resize(24, 300);
    const auto fill = [this] {
        QImage image(slider.size(), QImage::Format_RGB32);
        slider.render(&image);
        // On its side, low values left, it is a slider like any other.
        return fillOf(image.transformed(QTransform().rotate(90)));
    };
    slider.setValue(0);
    EXPECT_LE(fill().left + fill().right, 2);
    slider.setValue(60);
    EXPECT_LE(fill().left, 2);
    EXPECT_GT(fill().right, 120);
    slider.setValue(-60);
    EXPECT_GT(fill().left, 120);
    EXPECT_LE(fill().right, 2);
}

TEST_F(ASlider, WithoutAValueTipShowsItsToolTipWhenThePointerRestsOnIt)
{
    slider.setToolTip("Loudness");
    QHelpEvent rest(QEvent::ToolTip, {10, 10}, slider.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&slider, &rest);
    EXPECT_EQ(QToolTip::text(), "Loudness");
    QToolTip::hideText();
}

class ATimeSlider : public ::testing::Test
{
protected:
    ATimeSlider()
    {
        slider.setRange(0, 4000);
        slider.resize(300, 24);
        slider.show();
        QObject::connect(&slider, &TimeSlider::MouseDown, [this] { order << "down"; });
        QObject::connect(&slider, &TimeSlider::MouseUp, [this] { order << "up"; });
        QObject::connect(&slider, &Slider::Change, [this] { order << "change"; });
    }

    TimeSlider slider;
    QStringList order;
};

TEST_F(ATimeSlider, TellsWhenItIsTakenBeforeItMovesAndWhenItIsLetGo)
{
    QTest::mousePress(&slider, Qt::LeftButton, {}, {250, 12});
    EXPECT_EQ(order, QStringList({"down", "change"}));
    moveMouse(slider, {100, 12});
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {100, 12});
    EXPECT_EQ(order, QStringList({"down", "change", "change", "up"}));
}

TEST_F(ATimeSlider, TellsNothingOfTheOtherMouseButtons)
{
    QTest::mouseClick(&slider, Qt::RightButton, {}, {250, 12});
    EXPECT_EQ(order, QStringList());
}

TEST_F(ATimeSlider, IsTakenMovedAndLetGoByANotchOfTheWheel)
{
    turnWheel(slider, 120);
    EXPECT_EQ(order, QStringList({"down", "change", "up"}));
    EXPECT_EQ(slider.value(), 1);
    turnWheel(slider, 30);
    EXPECT_EQ(order.size(), 3);
}

TEST_F(ATimeSlider, IsTakenMovedAndLetGoByAKeyThatMovesIt)
{
    slider.setPageStep(5);
    for (const Qt::Key key :
         {Qt::Key_Right, Qt::Key_PageUp, Qt::Key_Left, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home}) {
        order.clear();
        QTest::keyClick(&slider, key);
        EXPECT_EQ(order, QStringList({"down", "change", "up"})) << key;
    }
    order.clear();
    QTest::keyClick(&slider, Qt::Key_Space);
    EXPECT_EQ(order, QStringList());
}

TEST_F(ATimeSlider, HeldByThePointerPassesOverTheWheelAndTheKeys)
{
    QTest::mousePress(&slider, Qt::LeftButton, {}, {150, 12});
    const int held = slider.value();
    order.clear();
    turnWheel(slider, 120);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(slider.value(), held);
    EXPECT_EQ(order, QStringList());
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {150, 12});
}

TEST_F(ATimeSlider, ShowsItsValueAsATime)
{
    slider.setValue(0);
    EXPECT_EQ(slider.valueTip(), "0:00");
    slider.setValue(65);
    EXPECT_EQ(slider.valueTip(), "1:05");
    slider.setValue(3700);
    EXPECT_EQ(slider.valueTip(), "61:40");
}

TEST_F(ATimeSlider, ShowsTheTimeWhileItIsDraggedAndWhenThePointerRestsOnIt)
{
    QTest::mousePress(&slider, Qt::LeftButton, {}, {250, 12});
    EXPECT_EQ(QToolTip::text(), slider.valueTip());
    moveMouse(slider, {100, 12});
    EXPECT_EQ(QToolTip::text(), slider.valueTip());
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {100, 12});

    QHelpEvent rest(QEvent::ToolTip, {10, 10}, slider.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(&slider, &rest);
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), slider.valueTip());
}

}  // namespace
