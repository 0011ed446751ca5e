#include "calculators/frmBPMCalculator.h"

#include "calculators/CalculatorTest.h"
#include "support/MockDialogs.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTest>

using ::testing::StrictMock;

namespace {

const QString idleCaption = "Beats per minute calculator";

class BPMCalculator : public ::testing::Test
{
protected:
    BPMCalculator()
    {
        window.show();
        window.activateWindow();
        QApplication::processEvents();
    }

    QTimer& timer(const char* name) { return control<QTimer>(window, name); }

    /// One tick. A timer that does not run does not tick.
    void fire(const char* name)
    {
        ASSERT_TRUE(timer(name).isActive()) << name;
        QMetaObject::invokeMethod(&timer(name), "timeout");
    }

    void clickTimes(int times)
    {
        for (int i = 0; i < times; ++i)
            click(window, "cmdDetermineBpm");
    }

    void passFiveSeconds()
    {
        for (int i = 0; i < 5; ++i)
            fire("tmrBpm");
    }

    /// Clicks so often in five seconds.
    void measure(int clicks)
    {
        clickTimes(clicks);
        passFiveSeconds();
    }

    void prefer(int bpm)
    {
        auto& list = control<ComboBox>(window, "cboBpm");
        list.setListIndex(list.findText(QString::number(bpm)));
    }

    void hold(Qt::Key key, int repeats)
    {
        QTest::keyPress(&window, key);
        for (int i = 0; i < repeats; ++i) {
            QKeyEvent again(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(&window, &again);
        }
        QTest::keyRelease(&window, key);
    }

    RangedSlider sldTempo{-60, 60};
    StrictMock<MockMsgBox> msgBox;
    frmBPMCalculator window{sldTempo, msgBox};
};

TEST_F(BPMCalculator, BeginsIdle)
{
    EXPECT_EQ(window.windowTitle(), idleCaption);
    EXPECT_EQ(textOf(window, "lblBpm"), "0 Bpm");
    EXPECT_EQ(timer("tmrBpm").interval(), 1000);
    EXPECT_EQ(timer("tmrStop").interval(), 4000);
    EXPECT_FALSE(timer("tmrBpm").isActive());
    EXPECT_FALSE(timer("tmrStop").isActive());
    EXPECT_EQ(control<ComboBox>(window, "cboBpm").listIndex(), -1);
}

TEST_F(BPMCalculator, IsCaptioned)
{
    EXPECT_EQ(control<QPushButton>(window, "cmdDetermineBpm").text(), "Determine tempo");
    EXPECT_EQ(control<QPushButton>(window, "cmdApplyBpm").text(), "Apply new tempo");
    EXPECT_EQ(textOf(window, "Label1"), "Current beats per minute value :");
    EXPECT_EQ(textOf(window, "Label2"), "Preferred beats per minute value :");
}

TEST_F(BPMCalculator, NamesItsControlsForScreenReaders)
{
    for (const char* name : {"cmdDetermineBpm", "cboBpm", "cmdApplyBpm"})
        EXPECT_NE(control<QWidget>(window, name).accessibleName(), "") << name;
}

TEST_F(BPMCalculator, OffersTheMarksOfAMetronome)
{
    QStringList marks;
    // Steps of 2, 3, 4, 6 and 8, as they are engraved on a metronome.
    int bpm = 40;
    const auto until = [&](int last, int step) {
        for (; bpm < last; bpm += step)
            marks << QString::number(bpm);
    };
    until(60, 2);
    until(72, 3);
    until(120, 4);
    until(144, 6);
    until(209, 8);
    ASSERT_EQ(marks.size(), 39);
    ASSERT_EQ(marks.last(), "208");
    EXPECT_EQ(itemsOf(window, "cboBpm"), marks);
    EXPECT_FALSE(control<ComboBox>(window, "cboBpm").isEditable());
}

TEST_F(BPMCalculator, StartsItsSecondsWithTheFirstClick)
{
    click(window, "cmdDetermineBpm");
    EXPECT_TRUE(timer("tmrBpm").isActive());
    EXPECT_EQ(window.windowTitle(), "Determining Bpm...");
    EXPECT_EQ(textOf(window, "lblBpm"), "0 Bpm");
}

TEST_F(BPMCalculator, CountsFiveSecondsFromTheFirstClickNotTheLast)
{
    click(window, "cmdDetermineBpm");
    const int first = timer("tmrBpm").timerId();
    click(window, "cmdDetermineBpm");
    EXPECT_EQ(timer("tmrBpm").timerId(), first);
}

TEST_F(BPMCalculator, ShowsNothingBeforeTheFifthSecond)
{
    clickTimes(3);
    for (int i = 0; i < 4; ++i) {
        fire("tmrBpm");
        EXPECT_EQ(textOf(window, "lblBpm"), "0 Bpm");
        EXPECT_EQ(window.windowTitle(), "Determining Bpm...");
        EXPECT_TRUE(control<QPushButton>(window, "cmdDetermineBpm").isEnabled());
    }
    fire("tmrBpm");
    EXPECT_EQ(textOf(window, "lblBpm"), "36 Bpm");
}

TEST_F(BPMCalculator, FindsTwelveTimesTheClicksOfFiveSeconds)
{
    measure(8);
    EXPECT_EQ(textOf(window, "lblBpm"), "96 Bpm");
    EXPECT_EQ(window.windowTitle(), idleCaption);
    EXPECT_FALSE(timer("tmrBpm").isActive());
}

TEST_F(BPMCalculator, LocksItsButtonForFourSecondsAfterAResult)
{
    measure(2);
    EXPECT_FALSE(control<QPushButton>(window, "cmdDetermineBpm").isEnabled());
    EXPECT_TRUE(timer("tmrStop").isActive());
    clickTimes(5);
    EXPECT_FALSE(timer("tmrBpm").isActive());

    fire("tmrStop");
    EXPECT_TRUE(control<QPushButton>(window, "cmdDetermineBpm").isEnabled());
    EXPECT_FALSE(timer("tmrStop").isActive());
}

TEST_F(BPMCalculator, MeasuresAfresh)
{
    measure(8);
    fire("tmrStop");
    measure(10);
    EXPECT_EQ(textOf(window, "lblBpm"), "120 Bpm");
}

TEST_F(BPMCalculator, GivesNoControlTheFocusWhenItOpens)
{
    EXPECT_EQ(window.focusWidget(), &window);
    EXPECT_EQ(QApplication::focusWidget(), &window);
}

TEST_F(BPMCalculator, CountsKeysAndShowsTheirNumber)
{
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_A, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Left, Qt::Key_F5})
        QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_EQ(window.windowTitle(), "6");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(timer("tmrBpm").isActive());
}

TEST_F(BPMCalculator, CountsKeysTogetherWithClicks)
{
    click(window, "cmdDetermineBpm");
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(window.windowTitle(), "2");
    click(window, "cmdDetermineBpm");
    EXPECT_EQ(window.windowTitle(), "Determining Bpm...");
    passFiveSeconds();
    EXPECT_EQ(textOf(window, "lblBpm"), "36 Bpm");
}

TEST_F(BPMCalculator, KeepsKeysFromBeforeTheFirstClickForTheNextResult)
{
    QTest::keyClick(&window, Qt::Key_Space);
    QTest::keyClick(&window, Qt::Key_Space);
    measure(1);
    EXPECT_EQ(textOf(window, "lblBpm"), "36 Bpm");
}

TEST_F(BPMCalculator, CountsKeysDuringTheLockForTheNextResult)
{
    measure(8);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(window.windowTitle(), "1");
    EXPECT_EQ(textOf(window, "lblBpm"), "96 Bpm");
    fire("tmrStop");
    measure(1);
    EXPECT_EQ(textOf(window, "lblBpm"), "24 Bpm");
}

TEST_F(BPMCalculator, TakesAKeyThatIsHeldDownForOneTap)
{
    hold(Qt::Key_B, 20);
    EXPECT_EQ(window.windowTitle(), "1");
}

TEST_F(BPMCalculator, LeavesKeysToTheControlThatHoldsTheFocus)
{
    for (const char* name : {"cmdDetermineBpm", "cboBpm", "cmdApplyBpm"}) {
        auto& holder = control<QWidget>(window, name);
        holder.setFocus();
        QTest::keyClick(&holder, Qt::Key_A);
        EXPECT_EQ(window.windowTitle(), idleCaption) << name;
    }
}

TEST_F(BPMCalculator, TakesSpaceOnItsButtonForAClick)
{
    auto& button = control<QPushButton>(window, "cmdDetermineBpm");
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(window.windowTitle(), "Determining Bpm...");
    passFiveSeconds();
    EXPECT_EQ(textOf(window, "lblBpm"), "12 Bpm");
}

TEST_F(BPMCalculator, LosesTapsThatComeTooLateToAFocusedButton)
{
    auto& button = control<QPushButton>(window, "cmdDetermineBpm");
    button.setFocus();
    for (int i = 0; i < 8; ++i)
        QTest::keyClick(&button, Qt::Key_Space);
    passFiveSeconds();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(window.windowTitle(), idleCaption);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

    fire("tmrStop");
    EXPECT_EQ(window.focusWidget(), &button);
    QTest::keyClick(&button, Qt::Key_Space);
    passFiveSeconds();
    EXPECT_EQ(textOf(window, "lblBpm"), "12 Bpm");
}

TEST_F(BPMCalculator, LeavesTheFocusWhereTheUserPutItDuringTheLock)
{
    control<QPushButton>(window, "cmdDetermineBpm").setFocus();
    measure(8);
    control<ComboBox>(window, "cboBpm").setFocus();
    fire("tmrStop");
    EXPECT_EQ(window.focusWidget(), &control<ComboBox>(window, "cboBpm"));
}

TEST_F(BPMCalculator, IsWalkedThroughWithTab)
{
    for (const char* name : {"cmdDetermineBpm", "cboBpm", "cmdApplyBpm", "cmdDetermineBpm"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), &control<QWidget>(window, name)) << name;
    }
    EXPECT_EQ(window.windowTitle(), idleCaption);
}

TEST_F(BPMCalculator, TakesTheFocusBackWithAClickOnItsGround)
{
    control<ComboBox>(window, "cboBpm").setFocus();
    QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(window.focusWidget(), &window);
}

TEST_F(BPMCalculator, StopsCountingAtTheLargestNumberOfTaps)
{
    for (int i = 0; i < 32770; ++i) {
        QKeyEvent tap(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
        QApplication::sendEvent(&window, &tap);
    }
    EXPECT_EQ(window.windowTitle(), "32767");
}

TEST_F(BPMCalculator, AppliesNothingBeforeAMeasurement)
{
    prefer(120);
    click(window, "cmdApplyBpm");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(sldTempo.value(), 0);
}

TEST_F(BPMCalculator, AppliesNothingWithoutAPreferredValue)
{
    measure(8);
    click(window, "cmdApplyBpm");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(sldTempo.value(), 0);
}

struct TempoRow
{
    const char* name;
    int before;
    int clicks;
    int preferred;
    int after;
};

class EachTempo : public BPMCalculator, public ::testing::WithParamInterface<TempoRow>
{
};

TEST_P(EachTempo, IsPutIntoTheSliderAndClosesTheWindow)
{
    sldTempo.setValue(GetParam().before);
    measure(GetParam().clicks);
    prefer(GetParam().preferred);
    click(window, "cmdApplyBpm");
    EXPECT_EQ(sldTempo.value(), GetParam().after);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(Tempos, EachTempo,
                         ::testing::Values(TempoRow{"Faster", 0, 8, 120, 25}, TempoRow{"Same", 7, 8, 96, 7},
                                           TempoRow{"FromASlowerOne", -10, 8, 96, -10},
                                           TempoRow{"MeasuredSlow", -10, 8, 108, 1},     // 1.25
                                           TempoRow{"HalfToEvenDown", 0, 8, 60, -38},    // -37.5
                                           TempoRow{"HalfToEvenUp", 0, 8, 132, 38},      // 37.5
                                           TempoRow{"HalfToEvenBelow", 0, 8, 108, 12},   // 12.5
                                           TempoRow{"NearestUp", 0, 9, 60, -44},         // -44.44
                                           TempoRow{"ToTheMaximum", 0, 10, 192, 60},     // 60
                                           TempoRow{"ToTheMinimum", -60, 10, 120, -60},  // -60
                                           TempoRow{"FromTheMinimum", -60, 5, 60, -60}),
                         [](const auto& info) { return std::string(info.param.name); });

class EachTempoOutOfRange : public BPMCalculator, public ::testing::WithParamInterface<TempoRow>
{
};

TEST_P(EachTempoOutOfRange, IsRefusedWithAWarningAndClosesTheWindow)
{
    sldTempo.setValue(GetParam().before);
    measure(GetParam().clicks);
    prefer(GetParam().preferred);
    EXPECT_CALL(msgBox,
                show(QString("Tempo change is out of slider range."), MsgBox::Look::Exclamation, QString()));
    click(window, "cmdApplyBpm");
    EXPECT_EQ(sldTempo.value(), GetParam().before);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(Tempos, EachTempoOutOfRange,
                         ::testing::Values(TempoRow{"TwiceAsFast", 0, 5, 120, 0}, TempoRow{"AThird", 0, 10, 40, 0},
                                           TempoRow{"WouldRoundToTheMaximum", 54, 8, 100, 54},  // 60.42
                                           TempoRow{"WouldRoundToTheMinimum", -5, 8, 40, -5},   // -60.42

                                           TempoRow{"FastFromFast", 60, 8, 100, 60},
                                           TempoRow{"SlowFromSlow", -60, 8, 92, -60}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BPMCalculator, AppliesWhatIsShownWhileItMeasuresAgain)
{
    measure(8);
    fire("tmrStop");
    clickTimes(3);
    prefer(120);
    click(window, "cmdApplyBpm");
    EXPECT_EQ(sldTempo.value(), 25);
}

TEST_F(BPMCalculator, TakesTheSliderAsItStandsWhenTheTempoIsApplied)
{
    measure(8);
    sldTempo.setValue(-20);
    prefer(120);
    click(window, "cmdApplyBpm");
    EXPECT_EQ(sldTempo.value(), 0);
}

TEST(BPMCalculatorOnItsOwn, MayBeDeletedAsSoonAsItCloses)
{
    RangedSlider sldTempo{-60, 60};
    StrictMock<MockMsgBox> msgBox;
    QPointer<frmBPMCalculator> window = new frmBPMCalculator(sldTempo, msgBox);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    for (int i = 0; i < 5; ++i)
        click(*window, "cmdDetermineBpm");
    for (int i = 0; i < 5; ++i)
        QMetaObject::invokeMethod(&control<QTimer>(*window, "tmrBpm"), "timeout");
    control<ComboBox>(*window, "cboBpm").setListIndex(10);  // 60
    click(*window, "cmdApplyBpm");
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

}  // namespace
