#include "app/OpenWindows.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QCloseEvent>
#include <QStringList>
#include <QTimer>
#include <algorithm>

namespace {

/// Writes its name when it is closed.
class NamedWindow : public QDialog
{
    Q_OBJECT

public:
    NamedWindow(const QString& name, QStringList& closed)
        : closed(closed)
    {
        setObjectName(name);
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        closed << objectName();
        QDialog::closeEvent(event);
    }

private:
    QStringList& closed;
};

class AnotherWindow : public NamedWindow
{
    Q_OBJECT

public:
    using NamedWindow::NamedWindow;
};

/// Refuses to be closed until it may be.
class StubbornWindow : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;
    bool mayClose = false;

protected:
    void closeEvent(QCloseEvent* event) override { event->setAccepted(mayClose); }
};

class TheWindowsThatStandOpen : public ::testing::Test
{
protected:
    QStringList closed;
    OpenWindows windows;
    int made = 0;

    void show()
    {
        windows.show<NamedWindow>([this] {
            ++made;
            return new NamedWindow("modeless", closed);
        });
    }

    static int visibleOnes()
    {
        return static_cast<int>(std::ranges::count_if(QApplication::topLevelWidgets(), &QWidget::isVisible));
    }
};

TEST_F(TheWindowsThatStandOpen, ComeToTheFrontWhenTheyAreOpenedAgain)
{
    show();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    show();
    EXPECT_EQ(made, 1);
    EXPECT_EQ(visibleOnes(), 1);
    windows.closeAll();
}

TEST_F(TheWindowsThatStandOpen, StartAfreshWhenTheyWereClosed)
{
    show();
    QApplication::closeAllWindows();
    EXPECT_EQ(closed.size(), 1);
    show();  // the closed one is deleted only when the event loop comes to it
    EXPECT_EQ(made, 2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(visibleOnes(), 1);
    show();
    EXPECT_EQ(made, 2);
    windows.closeAll();
}

TEST_F(TheWindowsThatStandOpen, CloseFromTheLastToTheFirst)
{
    show();
    windows.show<AnotherWindow>([&] { return new AnotherWindow("another", closed); });
    NamedWindow modal("modal", closed);
    QTimer::singleShot(0, [&] { windows.closeAll(); });
    windows.exec(modal);
    EXPECT_EQ(closed.join(' ').toStdString(), "modal another modeless");
}

TEST_F(TheWindowsThatStandOpen, AreKnownByTheirKind)
{
    EXPECT_FALSE(windows.isOpen<NamedWindow>());
    windows.show<AnotherWindow>([&] { return new AnotherWindow("another", closed); });
    EXPECT_TRUE(windows.isOpen<AnotherWindow>());
    EXPECT_TRUE(windows.isOpen<NamedWindow>());  // of which it is one
    windows.closeAll();
    EXPECT_FALSE(windows.isOpen<AnotherWindow>());
}

TEST_F(TheWindowsThatStandOpen, BlockUntilTheyAreClosed)
{
    NamedWindow modal("modal", closed);
    bool wasModal = false;
    QTimer::singleShot(0, [&] {
        wasModal = QApplication::activeModalWidget() == &modal;
        modal.close();
    });
    windows.exec(modal);
    EXPECT_TRUE(wasModal);
    windows.closeAll();
    EXPECT_EQ(closed.size(), 1);
}

TEST_F(TheWindowsThatStandOpen, OpenNoMoreOnceTheyWereClosed)
{
    EXPECT_FALSE(windows.areClosed());
    EXPECT_TRUE(windows.closeAll());
    EXPECT_TRUE(windows.areClosed());
    show();
    EXPECT_EQ(made, 0);
    NamedWindow modal("modal", closed);
    windows.exec(modal);
    EXPECT_EQ(visibleOnes(), 0);
}

/// A window that refuses to be closed, over a main window.
class TheWindowThatRefuses : public TheWindowsThatStandOpen
{
protected:
    void SetUp() override
    {
        show();
        windows.show<StubbornWindow>([this] { return stubborn = new StubbornWindow(&mainWindow, Qt::Window); });
        windows.show<AnotherWindow>([this] { return new AnotherWindow("another", closed); });
        mainWindow.show();
        QApplication::setQuitOnLastWindowClosed(true);
    }

    void TearDown() override { QApplication::setQuitOnLastWindowClosed(false); }

    /// Runs as the program does, with all windows closed at its beginning and @p later some turns of the event loop
    /// on; whether that was still part of the run.
    template <typename Later>
    bool runBehindTheEnd(Later later)
    {
        constexpr int someTurns = 20;
        int turns = 0;
        QTimer::singleShot(0, &mainWindow, [this] {
            windows.closeAll();
            mainWindow.close();
        });
        QTimer turn;
        QObject::connect(&turn, &QTimer::timeout, [&] {
            if (++turns == someTurns)
                later();
        });
        turn.start(0);
        QTimer::singleShot(20000, &turn, [] { QCoreApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0);
        return turns >= someTurns;
    }

    QWidget mainWindow;
    QPointer<StubbornWindow> stubborn;
};

TEST_F(TheWindowThatRefuses, StaysAloneWhenAllAreClosed)
{
    EXPECT_FALSE(windows.closeAll());
    EXPECT_EQ(closed.join(' ').toStdString(), "another modeless");
    EXPECT_TRUE(stubborn->isVisible());
}

TEST_F(TheWindowThatRefuses, KeepsTheProgramRunningUntilItIsClosed)
{
    EXPECT_TRUE(runBehindTheEnd([this] {
        EXPECT_FALSE(mainWindow.isVisible());
        ASSERT_FALSE(stubborn.isNull());
        EXPECT_TRUE(stubborn->isVisible());
        stubborn->close();
        EXPECT_TRUE(stubborn->isVisible());
        stubborn->mayClose = true;
        stubborn->close();
    }));
    EXPECT_TRUE(stubborn.isNull());
}

TEST_F(TheWindowThatRefuses, DoesNotKeepTheProgramRunningOnceItMayBeClosed)
{
    stubborn->mayClose = true;
    EXPECT_FALSE(runBehindTheEnd([] {}));
}

}  // namespace

#include "OpenWindowsTest.moc"
