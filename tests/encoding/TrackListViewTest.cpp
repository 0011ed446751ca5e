#include "encoding/TrackListView.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QHeaderView>
#include <QScopeGuard>
#include <QStyledItemDelegate>
#include <QTest>

namespace {

class TheListOfTracks : public ::testing::Test
{
protected:
    TrackListView list;

    void SetUp() override
    {
        list.makeColumns();
        for (const char* number : {"01", "02", "03"})
            list.addRow(number, QStringLiteral("/music/of mine/%1 song.wav").arg(number), "WAV", "03:25:17");
    }

    void show(int width)
    {
        list.resize(width, 200);
        list.show();
        QApplication::setActiveWindow(&list);
        list.setFocus();
        QApplication::processEvents();
    }

    QPoint middleOf(int row) const { return list.visualItemRect(list.topLevelItem(row - 1)).center(); }

    /// What stands in the first row's column of files, as the delegate is to draw it.
    QString shownFile(int width)
    {
        class Shown : public QStyledItemDelegate
        {
        public:
            using QStyledItemDelegate::initStyleOption;
        };
        QStyleOptionViewItem option;
        option.widget = &list;
        option.font = list.font();
        option.fontMetrics = list.fontMetrics();
        option.rect = QRect(0, 0, width, 20);
        const auto fill = &Shown::initStyleOption;
        (qobject_cast<QStyledItemDelegate*>(list.itemDelegate())->*fill)(&option, list.model()->index(0, 1));
        return option.text;
    }

    int widthOf(const QString& text) const
    {
        constexpr int margins = 20;
        return list.fontMetrics().horizontalAdvance(text) + margins;
    }
};

struct ColumnRow
{
    const char* caption;
    const char* key;
    const char* tag;
};

TEST_F(TheListOfTracks, HasAnImageForEachFormatAndShowsNone)
{
    EXPECT_EQ(list.images().size(), 4);
    for (int column = 0; column < list.columnCount(); ++column)
        EXPECT_TRUE(list.topLevelItem(0)->icon(column).isNull());
    list.makeColumns();
    EXPECT_EQ(list.images().size(), 4);
}

TEST_F(TheListOfTracks, HasFourColumnsWithWhatIsKeptWithThem)
{
    constexpr ColumnRow columns[] = {{"Track", "NAME", "Stores the name of the item"},
                                     {"File name", "FORMAT", "Stores the date of the item"},
                                     {"Format", "SIZE", "Stores the size of the item"},
                                     {"Duration", "FUTURE_FORMAT", ""}};
    ASSERT_EQ(list.columnCount(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(list.headerItem()->text(i), columns[i].caption);
        EXPECT_EQ(list.headerItem()->data(i, TrackListView::Key).toString(), columns[i].key);
        EXPECT_EQ(list.headerItem()->data(i, TrackListView::Tag).toString(), columns[i].tag);
    }
}

TEST_F(TheListOfTracks, BeginsWithTheWidthsOfItsColumnsWhereTheLettersHaveRoom)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont small = usual;
    small.setPixelSize(7);
    QApplication::setFont(small);
    TrackListView another;
    another.makeColumns();
    EXPECT_EQ(another.header()->sectionSize(0), 43);
    EXPECT_EQ(another.header()->sectionSize(2), 47);
    EXPECT_EQ(another.header()->sectionSize(3), 60);
}

TEST_F(TheListOfTracks, IsWideEnoughForLargeLetters)
{
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
    show(900);
    QFont large = usual;
    large.setPointSize(24);
    QApplication::setFont(large);
    QApplication::processEvents();
    EXPECT_GE(list.header()->sectionSize(3), list.fontMetrics().horizontalAdvance("00:00:00"));
    EXPECT_GE(list.header()->sectionSize(0), list.header()->fontMetrics().horizontalAdvance("Track"));
}

TEST_F(TheListOfTracks, GivesTheFileNameWhatRoomTheWindowHas)
{
    show(500);
    const int before = list.header()->sectionSize(1);
    const int others = list.header()->length() - before;
    list.resize(800, 200);
    QApplication::processEvents();
    EXPECT_EQ(list.header()->sectionSize(1), before + 300);
    EXPECT_EQ(list.header()->length() - list.header()->sectionSize(1), others);
}

TEST_F(TheListOfTracks, ShowsAPathWholeWhereItFits)
{
    EXPECT_EQ(shownFile(2000), "/music/of mine/01 song.wav");
}

TEST_F(TheListOfTracks, LeavesOutTheFirstFoldersOfALongPathAndNeverThoseOfTheRow)
{
    EXPECT_EQ(shownFile(widthOf("…/of mine/01 song.wav")), "…/of mine/01 song.wav");
    EXPECT_EQ(shownFile(widthOf("…/01 song.wav")), "…/01 song.wav");
    EXPECT_EQ(list.file(1), "/music/of mine/01 song.wav");
}

TEST_F(TheListOfTracks, LeavesTheBeginAndTheEndOfANameThatIsTooLongByItself)
{
    const QString shown = shownFile(widthOf("01 song") + 4);
    EXPECT_TRUE(shown.startsWith("01")) << qPrintable(shown);
    EXPECT_TRUE(shown.endsWith("v")) << qPrintable(shown);
    EXPECT_TRUE(shown.contains(u'…'));
    EXPECT_FALSE(shown.contains(u'/'));
}

TEST_F(TheListOfTracks, TellsThePointerTheWholePath)
{
    EXPECT_TRUE(list.topLevelItem(1)->toolTip(1).contains("/music/of mine/02 song.wav"));
}

TEST_F(TheListOfTracks, SelectsOneRowAtATime)
{
    show(500);
    EXPECT_EQ(list.selectedRow(), 0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(list.selectedRow(), 2);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier, middleOf(3));
    EXPECT_EQ(list.selectedRow(), 3);
    EXPECT_EQ(list.selectedItems().size(), 1);
}

TEST_F(TheListOfTracks, SelectsNoRowWhereItIsClickedBesideThem)
{
    show(500);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(2));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, list.viewport()->height() - 2));
    EXPECT_EQ(list.selectedRow(), 0);
}

TEST_F(TheListOfTracks, SelectsTheFirstRowWithTheFirstArrowKey)
{
    show(500);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.selectedRow(), 1);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.selectedRow(), 2);
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(list.selectedRow(), 1);
}

TEST_F(TheListOfTracks, SelectsNothingInRowsThatAreRebuilt)
{
    show(500);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middleOf(2));
    list.clearRows();
    EXPECT_EQ(list.rowCount(), 0);
    list.addRow("01", "a", "WAV", "00:00:01");
    list.addRow("02", "b", "WAV", "00:00:02");
    QApplication::processEvents();
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_EQ(list.rowCount(), 2);
}

TEST_F(TheListOfTracks, KnowsNoFileOfARowThatIsNotThere)
{
    EXPECT_EQ(list.file(0), "");
    EXPECT_EQ(list.file(4), "");
}

}  // namespace
