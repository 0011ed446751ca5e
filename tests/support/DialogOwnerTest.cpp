#include "support/dialogs/DialogOwner.h"

#include "support/dialogs/QtMsgBox.h"
#include "support/frmSplash.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>

namespace {

class TheOwnerOfADialog : public ::testing::Test
{
protected:
    QWidget main;

    /// As where the user is in another program.
    static void show(QWidget& window)
    {
        window.show();
        QApplication::processEvents();
        QApplication::setActiveWindow(nullptr);
    }
};

TEST_F(TheOwnerOfADialog, IsTheWindowThatIsActive)
{
    show(main);
    QDialog tool(&main);
    show(tool);
    QApplication::setActiveWindow(&tool);
    EXPECT_EQ(dialogOwner(), &tool);
}

TEST_F(TheOwnerOfADialog, IsTheMainWindowWhereNoneIsActive)
{
    show(main);
    QDialog tool(&main);
    show(tool);
    EXPECT_EQ(dialogOwner(), &main);
}

TEST_F(TheOwnerOfADialog, IsTheWindowThatBlocksTheOthersWhereNoneIsActive)
{
    show(main);
    QDialog blocking(&main);
    blocking.setModal(true);
    show(blocking);
    EXPECT_EQ(dialogOwner(), &blocking);
}

TEST_F(TheOwnerOfADialog, IsNoToolTipAndNoMenu)
{
    QWidget tip(nullptr, Qt::ToolTip);
    show(tip);
    EXPECT_EQ(dialogOwner(), nullptr);
    show(main);
    EXPECT_EQ(dialogOwner(), &main);
}

TEST_F(TheOwnerOfADialog, IsNothingWhereNothingIsSeen)
{
    EXPECT_EQ(dialogOwner(), nullptr);
}

TEST_F(TheOwnerOfADialog, IsTheSplashWhileTheMainWindowIsHiddenUnderIt)
{
    frmSplash splash(&main);
    show(splash);
    const QWidget* owner = nullptr;
    QTimer::singleShot(0, [&owner] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        owner = box->parentWidget();
        box->accept();
    });
    QtMsgBox().show("No such file or directory", MsgBox::Look::Exclamation, "Error");
    EXPECT_EQ(owner, &splash);
}

}  // namespace
