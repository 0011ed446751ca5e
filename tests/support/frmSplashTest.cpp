#include "support/frmSplash.h"

#include "Controls.h"
#include "QtPrinters.h"
#include "support/controls/VectorPicture.h"
#include "support/controls/XP_ProgressBar.h"

#include <gtest/gtest.h>
#include <QEvent>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace {

/// Keeps the value that the bar had at each draw.
struct DrawnValues : QObject
{
    std::vector<int> values;

    bool eventFilter(QObject* bar, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            values.push_back(static_cast<XP_ProgressBar*>(bar)->Value());
        return false;
    }
};

class Splash : public ::testing::Test
{
protected:
    Splash() { bar.installEventFilter(&drawn); }

    void fire() { QMetaObject::invokeMethod(&Timer1, "timeout"); }

    frmSplash window;
    XP_ProgressBar& bar = control<XP_ProgressBar>(window, "ProgressBar");
    QTimer& Timer1 = control<QTimer>(window, "Timer1");
    DrawnValues drawn;
};

TEST_F(Splash, TellsWhatTheUserWaitsFor)
{
    EXPECT_EQ(window.windowTitle(), "Larkspin");
    EXPECT_EQ(control<QLabel>(window, "Label1").text(), "Loading components, please wait ...");
    EXPECT_FALSE(control<VectorPicture>(window, "picture").sizeHint().isEmpty());
    EXPECT_NE(bar.accessibleName(), "");
}

TEST_F(Splash, StandsInTheMiddleOfTheScreenAndBlocksNothing)
{
    window.show();
    EXPECT_FALSE(window.isModal());
    const QPoint off = window.geometry().center() - window.screen()->geometry().center();
    EXPECT_LE(std::abs(off.x()), 1);
    EXPECT_LE(std::abs(off.y()), 1);
}

TEST_F(Splash, StaysOnTopOfItsHiddenOwner)
{
    QWidget owner;
    frmSplash owned(&owner);
    owned.show();
    EXPECT_TRUE(owned.isVisible());
    EXPECT_FALSE(owner.isVisible());
    ASSERT_NE(owner.windowHandle(), nullptr);
    EXPECT_EQ(owned.windowHandle()->transientParent(), owner.windowHandle());
}

// A window on top of all others would hide the message boxes of the load, and each of them waits for an answer.
TEST_F(Splash, IsOnTopOfNothingElse)
{
    EXPECT_FALSE(window.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(Splash, RunsItsSearchingBlocksOnceAcrossWhenItIsShown)
{
    window.show();
    EXPECT_EQ(bar.Scrolling(), XP_ProgressBar::Searching);
    std::vector<int> run(100);
    std::iota(run.begin(), run.end(), 1);
    std::erase(drawn.values, 0);  // as the window appears
    EXPECT_EQ(drawn.values, run);
}

TEST_F(Splash, TicksEveryTenMilliseconds)
{
    window.show();
    EXPECT_TRUE(Timer1.isActive());
    EXPECT_EQ(Timer1.interval(), 10);
}

TEST_F(Splash, DrawsItsBarAtTenWithEachTick)
{
    window.show();
    drawn.values.clear();
    fire();
    fire();
    EXPECT_EQ(drawn.values, (std::vector{10, 10}));
}

TEST_F(Splash, FallsBackToTheMinimumOfABarThatEndsBeforeTen)
{
    window.show();
    bar.setMin(3);
    bar.setMax(9);
    fire();
    EXPECT_EQ(bar.Value(), 3);
    bar.setMax(10);
    fire();
    EXPECT_EQ(bar.Value(), 10);
}

TEST_F(Splash, EndsHiddenAndSilent)
{
    window.show();
    window.end();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(Timer1.isActive());
}

}  // namespace
