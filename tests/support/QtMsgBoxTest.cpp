#include "support/dialogs/QtMsgBox.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace {

struct LookRow
{
    const char* name;
    MsgBox::Look look;
    QMessageBox::Icon icon;
};

class AMessageBox : public ::testing::TestWithParam<LookRow>
{
};

TEST_P(AMessageBox, ShowsItsTextAsItStandsWithItsLookAndAnOkButton)
{
    bool shown = false;
    QTimer::singleShot(0, [&shown] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown = true;
        EXPECT_EQ(box->text(), "Cannot load file <b>x</b>\nNo such file");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->icon(), GetParam().icon);
        EXPECT_EQ(box->windowTitle(), "Error");
        EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
        box->button(QMessageBox::Ok)->click();
    });
    QtMsgBox().show("Cannot load file <b>x</b>\nNo such file", GetParam().look, "Error");
    EXPECT_TRUE(shown);
}

INSTANTIATE_TEST_SUITE_P(Looks, AMessageBox,
                         ::testing::Values(LookRow{"Plain", MsgBox::Look::Plain, QMessageBox::NoIcon},
                                           LookRow{"Critical", MsgBox::Look::Critical, QMessageBox::Critical},
                                           LookRow{"Exclamation", MsgBox::Look::Exclamation, QMessageBox::Warning},
                                           LookRow{"Information", MsgBox::Look::Information,
                                                   QMessageBox::Information}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(AMessageBoxWithoutATitle, IsTitledAsTheProgram)
{
    QTimer::singleShot(0, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), QApplication::applicationDisplayName());
        box->accept();
    });
    QtMsgBox().show("text", MsgBox::Look::Plain);
}

}  // namespace
