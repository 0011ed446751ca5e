#include "support/controls/ListBox.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace {

class AListBox : public ::testing::Test
{
protected:
    AListBox()
    {
        list.addItems({"Autumn", "Blue", "Czardas", "Etude"});
        list.resize(200, 300);
        list.show();
    }

    QPoint item(int index) { return list.visualRect(list.model()->index(index, 0)).center(); }
    QPoint below() { return {20, 280}; }

    void press(Qt::MouseButton button, const QPoint& point)
    {
        QTest::mousePress(list.viewport(), button, {}, point);
    }
    void click(Qt::MouseButton button, const QPoint& point)
    {
        QTest::mouseClick(list.viewport(), button, {}, point);
    }
    void secondPressOfADoubleClick(const QPoint& point)
    {
        QMouseEvent second(QEvent::MouseButtonDblClick, point, list.viewport()->mapToGlobal(point), Qt::LeftButton,
                           Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &second);
    }
    void key(Qt::Key key) { QTest::keyClick(&list, key); }

    ListBox list;
    QSignalSpy clicks{&list, &ListBox::Click};
};

class ToolTipOfAListBox : public AListBox
{
protected:
    QString plainToolTip(const QString& text)
    {
        list.addItem(text);
        const QString tip = list.model()->index(list.count() - 1, 0).data(Qt::ToolTipRole).toString();
        EXPECT_TRUE(Qt::mightBeRichText(tip));
        QTextDocument document;
        document.setHtml(tip);
        return document.toPlainText().replace(QChar::LineSeparator, u'\n');
    }
};

TEST_F(ToolTipOfAListBox, ShowsATextWithMarkUpToTheLetter)
{
    EXPECT_EQ(plainToolTip("<b>Rock  & Roll</b>"), "<b>Rock  & Roll</b>");
}

TEST_F(ToolTipOfAListBox, BreaksALongTextAtABlankOrElsewhereIfItMust)
{
    const QString seventy(70, u'x');
    EXPECT_EQ(plainToolTip(seventy + " " + seventy), seventy + " \n" + seventy);
    EXPECT_EQ(plainToolTip(QString(170, u'x')),
              QString(80, u'x') + "\n" + QString(80, u'x') + "\n" + QString(10, u'x'));
    const QString guitar = QString::fromUtf8("\xF0\x9F\x8E\xB8");
    EXPECT_EQ(plainToolTip(QString(79, u'x') + guitar), QString(79, u'x') + "\n" + guitar);
}

// An item without a tip of its own lets the list's one through.
TEST_F(ToolTipOfAListBox, IsTheListsOwnWhereItHasOne)
{
    const QModelIndex first = list.model()->index(0, 0);
    EXPECT_NE(first.data(Qt::ToolTipRole).toString(), "");
    list.setToolTip("What a click does");
    EXPECT_EQ(first.data(Qt::ToolTipRole).toString(), "");
    const QPoint place = item(0);
    QHelpEvent rest(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
    QApplication::sendEvent(list.viewport(), &rest);
    EXPECT_EQ(QToolTip::text(), "What a click does");
    QToolTip::hideText();
}

TEST_F(AListBox, ShowsATextWithLineEndsInOneLine)
{
    const QString text = "verse\r\nchorus";
    list.addItem(text);
    const QModelIndex last = list.model()->index(4, 0);
    const auto* delegate = qobject_cast<QStyledItemDelegate*>(list.itemDelegate());
    ASSERT_NE(delegate, nullptr);
    EXPECT_EQ(delegate->displayText(last.data(), QLocale()), "verse  chorus");
    EXPECT_EQ(list.itemText(4), text);
}

TEST_F(AListBox, HasNoSelectionAtFirst)
{
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.itemText(2), "Czardas");
    EXPECT_EQ(list.itemText(-1), "");
    EXPECT_EQ(list.itemText(4), "");
}

class EachButton : public AListBox, public ::testing::WithParamInterface<Qt::MouseButton>
{
};

TEST_P(EachButton, PicksTheItemUnderThePointerExactlyOnce)
{
    click(GetParam(), item(2));
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_EQ(clicks.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Buttons, EachButton, ::testing::Values(Qt::LeftButton, Qt::MiddleButton, Qt::RightButton));

TEST_F(AListBox, PicksAlreadyWhenTheButtonGoesDown)
{
    press(Qt::LeftButton, item(1));
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, RunsItsRoutineForAPickOfTheSameItem)
{
    click(Qt::LeftButton, item(2));
    click(Qt::LeftButton, item(2));
    EXPECT_EQ(clicks.count(), 2);
    click(Qt::RightButton, item(2));
    EXPECT_EQ(clicks.count(), 3);
}

TEST_F(AListBox, TakesADoubleClickForOnePick)
{
    click(Qt::LeftButton, item(2));
    secondPressOfADoubleClick(item(2));
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, TakesTheSecondHalfOfADoubleClickOnAnotherItemForAPick)
{
    click(Qt::LeftButton, item(1));
    secondPressOfADoubleClick(item(2));
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_EQ(clicks.count(), 2);
}

TEST_F(AListBox, PicksNothingWhenThePointerIsDraggedOverOtherItems)
{
    press(Qt::LeftButton, item(0));
    for (const int index : {1, 2, 3}) {
        QMouseEvent move(QEvent::MouseMove, item(index), list.viewport()->mapToGlobal(item(index)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &move);
    }
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, item(3));
    EXPECT_EQ(list.listIndex(), 0);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, LeavesItsSelectionAloneForAClickBesideTheItems)
{
    click(Qt::LeftButton, item(1));
    click(Qt::LeftButton, below());
    click(Qt::RightButton, below());
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, TellsTheItemAtAPoint)
{
    EXPECT_EQ(list.itemAtPoint(item(3)), 3);
    EXPECT_EQ(list.itemAtPoint(below()), -1);
}

TEST_F(AListBox, RunsItsRoutineOnceWhenCodeChangesTheIndex)
{
    list.setListIndex(3);
    EXPECT_EQ(list.listIndex(), 3);
    EXPECT_EQ(clicks.count(), 1);
    list.setListIndex(3);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, RunsNothingWhenCodeTakesTheSelectionAway)
{
    list.setListIndex(3);
    list.setListIndex(-1);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, PassesOverAnIndexBeyondItsEnd)
{
    list.setListIndex(1);
    list.setListIndex(4);
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, PicksWithTheArrowKeysOnceForEachMove)
{
    list.setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(list.listIndex(), 0);
    EXPECT_EQ(clicks.count(), 1);
    key(Qt::Key_Down);
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(clicks.count(), 2);
    key(Qt::Key_Up);
    EXPECT_EQ(list.listIndex(), 0);
    EXPECT_EQ(clicks.count(), 3);
    key(Qt::Key_Up);
    EXPECT_EQ(clicks.count(), 3);
    key(Qt::Key_End);
    EXPECT_EQ(list.listIndex(), 3);
    EXPECT_EQ(clicks.count(), 4);
}

TEST_F(AListBox, PicksWithTypedLetters)
{
    key(Qt::Key_C);
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, SelectsNothingWhenTheKeyboardComesToIt)
{
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&list, &focus);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 0);
    key(Qt::Key_Down);
    EXPECT_EQ(list.listIndex(), 0);
}

TEST_F(AListBox, PicksForWhoeverSelectsThroughTheSelectionModel)
{
    list.selectionModel()->select(list.model()->index(2, 0), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(list.listIndex(), 2);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(AListBox, HasNoSelectionAfterItsSelectedItemWasRemoved)
{
    for (const int index : {0, 1, 1}) {
        list.setListIndex(index);
        clicks.clear();
        list.removeItem(index);
        EXPECT_EQ(list.listIndex(), -1);
        EXPECT_EQ(clicks.count(), 0);
    }
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.itemText(0), "Blue");
}

TEST_F(AListBox, ComesBackToThePlaceOfARemovedItemWithTheNextArrowKey)
{
    list.setListIndex(1);
    list.removeItem(1);
    key(Qt::Key_Down);
    EXPECT_EQ(list.itemText(list.listIndex()), "Czardas");
}

TEST_F(AListBox, KeepsItsSelectionWhenAnotherItemIsRemoved)
{
    list.setListIndex(2);
    clicks.clear();
    list.removeItem(0);
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(list.itemText(1), "Czardas");
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(AListBox, SelectsNoNeighbourOfARemovedItemThatOnlyHadTheKeyboardsPlace)
{
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&list, &focus);
    list.removeItem(0);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(AListBox, PassesOverARemovalOfWhatIsNotThere)
{
    list.removeItem(-1);
    list.removeItem(4);
    EXPECT_EQ(list.count(), 4);
}

TEST_F(AListBox, IsEmptyAndUnselectedAfterClearing)
{
    list.setListIndex(2);
    clicks.clear();
    list.clear();
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(AListBox, TakesNewItemsAtItsEndWithoutSelectingAny)
{
    list.addItem("Lesson");
    EXPECT_EQ(list.itemText(4), "Lesson");
    list.addItems({});
    EXPECT_EQ(list.count(), 5);
    EXPECT_EQ(list.listIndex(), -1);
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(AListBox, BearsARoutineThatEmptiesIt)
{
    QObject::connect(&list, &ListBox::Click, [this] { list.clear(); });
    click(Qt::LeftButton, item(2));
    EXPECT_EQ(list.count(), 0);
    list.addItems({"a", "b"});
    key(Qt::Key_Down);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(AListBox, SelectsTheItemUnderThePointerBeforeItsContextMenuIsAskedFor)
{
    list.setContextMenuPolicy(Qt::CustomContextMenu);
    int selectedThen = -2;
    QObject::connect(&list, &QWidget::customContextMenuRequested, [&] { selectedThen = list.listIndex(); });
    press(Qt::RightButton, item(3));
    QContextMenuEvent menu(QContextMenuEvent::Mouse, item(3), list.viewport()->mapToGlobal(item(3)));
    QApplication::sendEvent(list.viewport(), &menu);
    EXPECT_EQ(selectedThen, 3);
}

}  // namespace
