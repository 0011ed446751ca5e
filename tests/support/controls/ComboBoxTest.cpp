#include "support/controls/ComboBox.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>

namespace {

class AComboBox : public ::testing::Test
{
protected:
    AComboBox()
    {
        box.addItems({"None", "Club", "Dance"});
        box.show();
    }

    void pick(int index)
    {
        box.showPopup();
        QTest::mouseMove(box.view()->viewport());
        const QModelIndex item = box.model()->index(index, 0);
        box.view()->setCurrentIndex(item);
        QTest::keyClick(box.view(), Qt::Key_Return);
    }

    ComboBox box;
    QSignalSpy clicks{&box, &ComboBox::Click};
};

TEST_F(AComboBox, HasNoSelectionUntilSomeoneSelects)
{
    EXPECT_EQ(box.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(AComboBox, RunsItsRoutineOnceWhenCodeChangesTheIndex)
{
    box.setListIndex(0);
    EXPECT_EQ(box.listIndex(), 0);
    EXPECT_EQ(clicks.count(), 1);
    box.setListIndex(0);
    EXPECT_EQ(clicks.count(), 1);
    box.setCurrentIndex(2);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(AComboBox, RunsNothingWhenCodeTakesTheSelectionAway)
{
    box.setListIndex(1);
    box.setListIndex(-1);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AComboBox, RunsItsRoutineOnceForAPickByTheUser)
{
    pick(1);
    EXPECT_EQ(box.listIndex(), 1);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AComboBox, RunsItsRoutineForAPickOfTheSameItem)
{
    pick(1);
    pick(1);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(AComboBox, RunsItsRoutineForAPickOfTheItemThatCodeSelected)
{
    box.setListIndex(2);
    pick(2);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(AComboBox, RunsItsRoutineOnceForAPickWhoseRoutinePutsTheSameIndexAgain)
{
    QObject::connect(&box, &ComboBox::Click, [this] { box.setListIndex(box.listIndex()); });
    pick(1);
    EXPECT_EQ(clicks.count(), 1);
    pick(1);
    EXPECT_EQ(clicks.count(), 2);
    pick(0);
    EXPECT_EQ(clicks.count(), 3);
}

TEST_F(AComboBox, RunsItsRoutineForAPickOfTheItemThatTookTheSelectedOnesPlace)
{
    box.setListIndex(1);
    box.removeItem(1);
    const auto before = clicks.count();
    pick(box.listIndex());
    EXPECT_EQ(clicks.count(), before + 1);
}

TEST_F(AComboBox, PicksWithTheArrowKeys)
{
    box.setListIndex(0);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.listIndex(), 1);
    EXPECT_EQ(clicks.count(), 2);
}

}  // namespace
