#include "app/KeypadAccelerators.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>

namespace {

class TheKeypad : public ::testing::Test
{
protected:
    QWidget window;
    QLineEdit text{&window};
    QWidget other{&window};
    KeypadAccelerators keypad{window};
    QAction zero;
    QAction one;
    int zeros = 0;
    int ones = 0;

    void SetUp() override
    {
        other.setFocusPolicy(Qt::StrongFocus);
        keypad.add(Qt::Key_0, &zero);
        keypad.add(Qt::Key_1, &one);
        QObject::connect(&zero, &QAction::triggered, [this] { ++zeros; });
        QObject::connect(&one, &QAction::triggered, [this] { ++ones; });
        window.show();
        QApplication::setActiveWindow(&window);
        other.setFocus();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::KeypadModifier) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
};

TEST_F(TheKeypad, RunsItsActionsWithNumLock)
{
    press(Qt::Key_0);
    press(Qt::Key_1);
    EXPECT_EQ(zeros, 1);
    EXPECT_EQ(ones, 1);
}

TEST_F(TheKeypad, RunsThemWithoutNumLock)
{
    press(Qt::Key_Insert);
    press(Qt::Key_End);
    EXPECT_EQ(zeros, 1);
    EXPECT_EQ(ones, 1);
}

TEST_F(TheKeypad, LeavesTheDigitRowAndTheEditingKeysAlone)
{
    for (const Qt::Key key : {Qt::Key_0, Qt::Key_1, Qt::Key_Insert, Qt::Key_End})
        press(key, Qt::NoModifier);
    EXPECT_EQ(zeros + ones, 0);
}

TEST_F(TheKeypad, LeavesKeysWithOtherModifiersAlone)
{
    press(Qt::Key_1, Qt::KeypadModifier | Qt::ControlModifier);
    EXPECT_EQ(ones, 0);
}

TEST_F(TheKeypad, LeavesDigitsWithoutAnActionAlone)
{
    press(Qt::Key_3);
    EXPECT_EQ(zeros + ones, 0);
}

TEST_F(TheKeypad, TypesIntoATextBox)
{
    text.setFocus();
    press(Qt::Key_1);
    EXPECT_EQ(text.text().toStdString(), "1");
    EXPECT_EQ(ones, 0);
}

TEST_F(TheKeypad, IsLeftToAMenuThatIsOpen)
{
    QMenu menu(&window);
    menu.addAction("Play");
    menu.popup({});
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);
    QTest::keyClick(&menu, Qt::Key_1, Qt::KeypadModifier);
    EXPECT_EQ(ones, 0);
    menu.close();
    press(Qt::Key_1);
    EXPECT_EQ(ones, 1);
}

TEST_F(TheKeypad, RunsItsActionsFromATextBoxThatIsOnlyRead)
{
    text.setReadOnly(true);
    text.setFocus();
    press(Qt::Key_1);
    EXPECT_EQ(ones, 1);
}

TEST_F(TheKeypad, IsLeftToAnotherWindow)
{
    QLineEdit otherWindow;
    otherWindow.show();
    QApplication::setActiveWindow(&otherWindow);
    QTest::keyClick(&otherWindow, Qt::Key_1, Qt::KeypadModifier);
    EXPECT_EQ(otherWindow.text().toStdString(), "1");
    EXPECT_EQ(ones, 0);
}

}  // namespace
