#include "app/OpenWindows.h"

#include <gtest/gtest.h>
#include <QApplication>
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

}  // namespace

#include "OpenWindowsTest.moc"
