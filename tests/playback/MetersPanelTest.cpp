#include "playback/MetersPanel.h"

#include "playback/PanelTest.h"
#include "support/controls/LevelBar.h"

using ::testing::InSequence;
using ::testing::ReturnRef;
using ::testing::StrictMock;

namespace {

class Meters : public ::testing::Test
{
protected:
    void start()
    {
        EXPECT_CALL(engine, VuMeter).WillRepeatedly(ReturnRef(meter));
        const InSequence order;
        EXPECT_CALL(meter, SetVuMeterMode(0, 0));
        EXPECT_CALL(meter, EnableVuMeter(0, 1));
        panel.startMeters();
    }

    LevelBar& left() const { return *control<QWidget>(panel, "PictureVuMeterLeft").findChild<LevelBar*>(); }
    LevelBar& right() const { return *control<QWidget>(panel, "PictureVuMeterRight").findChild<LevelBar*>(); }

    StrictMock<MockVuMeter> meter;
    StrictMock<MockPlayerEngine> engine;
    MetersPanel panel{engine};
};

TEST_F(Meters, MakeNoEngineCallAndNoBarBeforeTheyAreStarted)
{
    EXPECT_TRUE(panel.findChildren<LevelBar*>().isEmpty());
    emit engine.VuPeaks(0, 1, 2);
}

TEST_F(Meters, SwitchTheReportsOnAndPutABarOfSixteenBitsInEachPlace)
{
    start();
    EXPECT_EQ(panel.findChildren<LevelBar*>(), QList<LevelBar*>({&left(), &right()}));
    for (const LevelBar* bar : {&left(), &right()}) {
        EXPECT_EQ(bar->minimum(), 0);
        EXPECT_EQ(bar->maximum(), 32767);
        EXPECT_EQ(bar->value(), 0);
    }
}

TEST_F(Meters, ForwardThePeaksUnscaledEachToItsSide)
{
    start();
    emit engine.VuPeaks(0, 12345, 32767);
    EXPECT_EQ(left().value(), 12345);
    EXPECT_EQ(right().value(), 32767);
    emit engine.VuPeaks(0, 0, 1);
    EXPECT_EQ(left().value(), 0);
    EXPECT_EQ(right().value(), 1);
}

TEST_F(Meters, FillTheirPlacesOneAboveTheOtherAndGrowWithTheWidth)
{
    start();
    panel.resize(panel.sizeHint() + QSize(200, 40));
    panel.show();
    const QWidget& leftPlace = control<QWidget>(panel, "PictureVuMeterLeft");
    const QWidget& rightPlace = control<QWidget>(panel, "PictureVuMeterRight");
    EXPECT_EQ(left().geometry(), leftPlace.rect());
    EXPECT_EQ(right().geometry(), rightPlace.rect());
    EXPECT_EQ(leftPlace.width(), rightPlace.width());
    EXPECT_EQ(leftPlace.height(), rightPlace.height());
    EXPECT_EQ(leftPlace.x(), rightPlace.x());
    EXPECT_LT(leftPlace.geometry().bottom(), rightPlace.geometry().top());
    const int width = leftPlace.width();
    const int height = leftPlace.height();
    panel.resize(panel.size() + QSize(100, 30));
    EXPECT_EQ(leftPlace.width(), width + 100);
    EXPECT_EQ(leftPlace.height(), height);
}

TEST_F(Meters, AreCaptionedAndNamedForScreenReaders)
{
    start();
    EXPECT_EQ(textOf(panel, "lblVuMeterLeft"), "L");
    EXPECT_EQ(textOf(panel, "lblVuMeterRight"), "R");
    EXPECT_EQ(left().accessibleName(), "Level left");
    EXPECT_EQ(right().accessibleName(), "Level right");
    EXPECT_EQ(control<QWidget>(panel, "PictureVuMeterLeft").accessibleName(), "");
    EXPECT_EQ(control<QWidget>(panel, "PictureVuMeterRight").accessibleName(), "");
}

TEST_F(Meters, TakeNoKeyboardFocus)
{
    start();
    for (const QWidget* widget : panel.findChildren<QWidget*>())
        EXPECT_EQ(widget->focusPolicy(), Qt::NoFocus) << widget->objectName().toStdString();
}

}  // namespace
