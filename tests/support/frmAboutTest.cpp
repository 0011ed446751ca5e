#include "support/frmAbout.h"

#include "Controls.h"
#include "QtPrinters.h"
#include "support/MockDialogs.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using ::testing::StrictMock;

namespace {

class About : public ::testing::Test
{
protected:
    About() { window.show(); }

    StrictMock<MockMsgBox> msgBox;
    frmAbout window{msgBox};
};

TEST_F(About, NamesTheProgramAndTheVersionOfItsBuild)
{
    EXPECT_EQ(window.windowTitle(), "About LarkspinTest");
    EXPECT_EQ(control<QLabel>(window, "lblTitle").text(), "LarkspinTest");
    EXPECT_EQ(control<QLabel>(window, "lblVersion").text(), "Version " BUILD_VERSION);
}

TEST_F(About, SaysThatThereIsNoSystemInformationAndStaysOpen)
{
    EXPECT_EQ(control<QPushButton>(window, "cmdSysInfo").text(), "&System Info...");
    EXPECT_CALL(msgBox,
                show(QString("System Information Is Unavailable At This Time"), MsgBox::Look::Plain, QString()));
    control<QPushButton>(window, "cmdSysInfo").click();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(About, IsClosedByItsButton)
{
    control<QPushButton>(window, "cmdOK").click();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(About, IsClosedByEscapeAndByEnter)
{
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(About, HasTheIconOfTheProgram)
{
    EXPECT_FALSE(window.windowIcon().pixmap(64, 64).isNull());
}

}  // namespace
