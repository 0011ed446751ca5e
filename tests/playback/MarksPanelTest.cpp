#include "playback/MarksPanel.h"

#include "playback/PanelTest.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"
#include "support/controls/ListBox.h"
#include "support/controls/ReadOut.h"

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

using ::testing::AnyNumber;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class Marks : public ::testing::Test
{
protected:
    StrictMock<MockPlayerEngine> engine;
    StrictMock<MockMsgBox> msgBox;
    PlaybackState state;
    PositionPanel position{engine, state};
    MarksPanel panel{engine, position, msgBox};

    ListBox& list() const { return control<ListBox>(panel, "lstMark"); }
    void showTime(const QString& text) const { control<ReadOut>(position, "lblTime").setText(text); }

    QString marks() const
    {
        QStringList texts;
        for (int i = 0; i < list().count(); ++i)
            texts << list().itemText(i);
        return texts.join(' ');
    }

    void addAt(const QString& time)
    {
        EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(600000));
        showTime(time);
        click(panel, "cmdAddMark");
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    /// Marks at one, two and three seconds.
    void addThree()
    {
        for (const char* time : {"00:01:30", "00:02:30", "00:03:30"})
            addAt(time);
    }

    /// The keys' place moves on from the first mark, and plays.
    void makeCurrent(int index)
    {
        EXPECT_CALL(engine, SeekSound).Times(AnyNumber());
        EXPECT_CALL(engine, PlaySound).Times(AnyNumber());
        for (int i = 0; i < index; ++i)
            panel.GoToNextMark();
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    void select(int index)
    {
        EXPECT_CALL(engine, SeekSound).Times(AnyNumber());
        EXPECT_CALL(engine, PlaySound).Times(AnyNumber());
        list().setListIndex(index);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    void expectPlayFrom(int milliseconds)
    {
        const InSequence order;
        EXPECT_CALL(engine, SeekSound(0, milliseconds));
        EXPECT_CALL(engine, PlaySound(0));
    }

    void expectListShown(bool shown) const
    {
        for (const char* name : {"lblMark", "lstMark", "cmdDeleteMark", "cmdClearMark"})
            EXPECT_NE(control<QWidget>(panel, name).isHidden(), shown) << name;
        EXPECT_FALSE(control<QWidget>(panel, "cmdAddMark").isHidden());
    }

    void pressOn(const QPoint& place) const { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place); }

    QPoint middleOf(int index) const { return list().visualRect(list().model()->index(index, 0)).center(); }
};

TEST_F(Marks, StartWithTheAddButtonAlone)
{
    expectListShown(false);
    EXPECT_EQ(list().count(), 0);
    panel.show();
    EXPECT_TRUE(control<QToolButton>(panel, "cmdAddMark").isVisible());
    EXPECT_FALSE(list().isVisible());
}

struct TextRow
{
    const char* name;
    const char* toolTip;
};

class EachMarkControl : public Marks, public ::testing::WithParamInterface<TextRow>
{
};

TEST_P(EachMarkControl, HasItsToolTipAndANameForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(panel, GetParam().name).toolTip(), GetParam().toolTip);
    EXPECT_NE(control<QWidget>(panel, GetParam().name).accessibleName(), "");
}

INSTANTIATE_TEST_SUITE_P(Controls, EachMarkControl,
                         ::testing::Values(TextRow{"cmdAddMark", "Add mark (F5)"},
                                           TextRow{"cmdDeleteMark", "Remove selected mark"},
                                           TextRow{"cmdClearMark", "Clear all marks and hide list"},
                                           TextRow{"lstMark", "Click list item to play from specified position"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Marks, AreHeadedMarkList)
{
    EXPECT_EQ(textOf(panel, "lblMark"), "Mark list");
}

TEST_F(Marks, AreNotAddedWithoutASound)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(0));
    showTime("00:12:00");
    click(panel, "cmdAddMark");
    EXPECT_EQ(marks(), "");
    expectListShown(false);
}

TEST_F(Marks, AreAddedToASoundOfOneMillisecond)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(1));
    showTime("00:12:00");
    click(panel, "cmdAddMark");
    EXPECT_EQ(marks(), "00:11:70");
}

struct LeadRow
{
    const char* name;
    const char* shown;
    const char* mark;
};

class EachTime : public Marks, public ::testing::WithParamInterface<LeadRow>
{
};

TEST_P(EachTime, IsMarkedThreeTenthsEarlierOrNotAtAll)
{
    addAt(GetParam().shown);
    EXPECT_EQ(marks(), GetParam().mark);
    expectListShown(*GetParam().mark != '\0');
}

// A hundred minutes are more than the two places that a mark is read from: they are taken for ten.
INSTANTIATE_TEST_SUITE_P(Times, EachTime,
                         ::testing::Values(LeadRow{"Start", "00:00:00", ""},
                                           LeadRow{"JustBeforeTheLead", "00:00:29", ""},
                                           LeadRow{"TheLead", "00:00:30", "00:00:00"},
                                           LeadRow{"JustAfterTheLead", "00:00:31", "00:00:01"},
                                           LeadRow{"BorrowsASecond", "00:12:10", "00:11:80"},
                                           LeadRow{"BorrowsAMinute", "01:00:10", "00:59:80"},
                                           LeadRow{"LastOfTwoDigitMinutes", "99:59:99", "99:59:69"},
                                           LeadRow{"AHundredMinutes", "100:00:00", "09:59:70"},
                                           LeadRow{"NoTimeAtAll", "", ""}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Marks, ShowTheListWithTheFirstAndKeepItWithTheNext)
{
    addAt("00:01:30");
    expectListShown(true);
    addAt("00:02:30");
    expectListShown(true);
}

TEST_F(Marks, StayShownWhenAnotherIsRefused)
{
    addAt("00:01:30");
    addAt("00:00:10");
    expectListShown(true);
    EXPECT_EQ(marks(), "00:01:00");
}

TEST_F(Marks, KeepTheOrderOfAddingAndMayBeEqual)
{
    for (const char* time : {"00:05:30", "00:01:30", "00:05:30"})
        addAt(time);
    EXPECT_EQ(marks(), "00:05:00 00:01:00 00:05:00");
    EXPECT_EQ(list().listIndex(), -1);
}

// The engine may be elsewhere by now: the strict engine is not asked for its position.
TEST_F(Marks, AreMadeOfTheTimeThatIsShown)
{
    EXPECT_CALL(engine, GetDuration(0)).WillOnce(Return(600000));
    showTime("00:47:85");
    panel.cmdAddMark_Click();
    EXPECT_EQ(marks(), "00:47:55");
}

TEST_F(Marks, ScrollToTheOneJustAdded)
{
    panel.resize(200, 150);
    panel.show();
    for (int i = 0; i < 40; ++i)
        addAt("00:01:30");
    EXPECT_TRUE(list().viewport()->rect().contains(middleOf(39)));
}

TEST_F(Marks, PlayFromTheirTimeWhenClicked)
{
    addThree();
    panel.show();
    expectPlayFrom(2000);
    pressOn(middleOf(1));
    EXPECT_EQ(list().listIndex(), 1);
}

TEST_F(Marks, PlayOnceMoreWhenClickedOnceMore)
{
    addThree();
    panel.show();
    expectPlayFrom(3000);
    pressOn(middleOf(2));
    ::testing::Mock::VerifyAndClearExpectations(&engine);
    expectPlayFrom(3000);
    pressOn(middleOf(2));
}

TEST_F(Marks, LeaveALoopToTheEngineWhenClicked)
{
    state.PlayLoopActive = true;
    addThree();
    expectPlayFrom(1000);
    list().setListIndex(0);
    EXPECT_TRUE(state.PlayLoopActive);
}

TEST_F(Marks, PlayNothingForAClickBesideThemWithNothingSelected)
{
    addThree();
    panel.show();
    pressOn({5, list().viewport()->height() - 2});
    emit list().Click();
    EXPECT_EQ(list().listIndex(), -1);
}

TEST_F(Marks, PlayTheFirstForARepeatBeforeAnyMove)
{
    addThree();
    expectPlayFrom(1000);
    panel.RepeatCurrentMark();
}

TEST_F(Marks, PlayTheSecondForTheFirstMoveOn)
{
    addThree();
    expectPlayFrom(2000);
    panel.GoToNextMark();
}

TEST_F(Marks, RepeatTheOneLastMovedTo)
{
    addThree();
    makeCurrent(2);
    expectPlayFrom(3000);
    panel.RepeatCurrentMark();
    ::testing::Mock::VerifyAndClearExpectations(&engine);
    expectPlayFrom(3000);
    panel.RepeatCurrentMark();
}

TEST_F(Marks, GoFromTheLastOnToTheFirst)
{
    addThree();
    makeCurrent(2);
    expectPlayFrom(1000);
    panel.GoToNextMark();
}

TEST_F(Marks, GoFromTheFirstBackToTheLast)
{
    addThree();
    expectPlayFrom(3000);
    panel.GoToPreviousMark();
}

TEST_F(Marks, GoBackOneByOne)
{
    addThree();
    makeCurrent(2);
    expectPlayFrom(2000);
    panel.GoToPreviousMark();
    ::testing::Mock::VerifyAndClearExpectations(&engine);
    expectPlayFrom(1000);
    panel.GoToPreviousMark();
}

TEST_F(Marks, PlayTheOnlyOneWhicheverWayTheUserGoes)
{
    addAt("00:01:30");
    for (const auto go :
         {&MarksPanel::GoToNextMark, &MarksPanel::GoToPreviousMark, &MarksPanel::RepeatCurrentMark}) {
        expectPlayFrom(1000);
        (panel.*go)();
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }
}

TEST_F(Marks, KeepTheSelectionWhereItIsWhenTheKeysGoElsewhere)
{
    addThree();
    select(0);
    expectPlayFrom(2000);
    panel.GoToNextMark();
    EXPECT_EQ(list().listIndex(), 0);
}

TEST_F(Marks, KeepTheKeysPlaceWhenOneIsClicked)
{
    addThree();
    makeCurrent(1);
    select(2);
    expectPlayFrom(2000);
    panel.RepeatCurrentMark();
}

// Nothing is asked of the strict engine, and the place is where it was: the first of the marks that come later.
TEST_F(Marks, IgnoreTheKeysWhileThereAreNone)
{
    panel.GoToPreviousMark();
    panel.RepeatCurrentMark();
    panel.GoToNextMark();
    addThree();
    expectPlayFrom(1000);
    panel.RepeatCurrentMark();
}

TEST_F(Marks, AreRemovedWhereSelected)
{
    addThree();
    select(1);
    click(panel, "cmdDeleteMark");
    EXPECT_EQ(marks(), "00:01:00 00:03:00");
    EXPECT_EQ(list().listIndex(), -1);
    expectListShown(true);
}

TEST_F(Marks, TellWhenNoneIsSelectedForRemoval)
{
    addThree();
    EXPECT_CALL(msgBox, show(QString("No mark selected."), MsgBox::Look::Information, QString()));
    click(panel, "cmdDeleteMark");
    EXPECT_EQ(marks(), "00:01:00 00:02:00 00:03:00");
}

TEST_F(Marks, StayShownWhenTheLastOneIsRemoved)
{
    addAt("00:01:30");
    select(0);
    click(panel, "cmdDeleteMark");
    EXPECT_EQ(marks(), "");
    expectListShown(true);
    EXPECT_CALL(msgBox, show(QString("No mark selected."), MsgBox::Look::Information, QString()));
    click(panel, "cmdDeleteMark");
}

TEST_F(Marks, PlayNothingWhenTheKeysPlaceLiesBeyondThoseLeft)
{
    addThree();
    makeCurrent(2);
    select(2);
    click(panel, "cmdDeleteMark");
    panel.RepeatCurrentMark();
}

TEST_F(Marks, GoOnFromBeyondThoseLeftToTheFirst)
{
    addThree();
    makeCurrent(2);
    select(2);
    click(panel, "cmdDeleteMark");
    expectPlayFrom(1000);
    panel.GoToNextMark();
}

TEST_F(Marks, GoBackFromBeyondThoseLeftOneByOne)
{
    addThree();
    makeCurrent(2);
    for (const int index : {2, 1}) {
        select(index);
        click(panel, "cmdDeleteMark");
    }
    panel.GoToPreviousMark();
    expectPlayFrom(1000);
    panel.GoToPreviousMark();
}

TEST_F(Marks, AreClearedAndHiddenTogether)
{
    addThree();
    click(panel, "cmdClearMark");
    EXPECT_EQ(marks(), "");
    expectListShown(false);
}

TEST_F(Marks, AreClearedByAnotherPanelToo)
{
    addThree();
    panel.cmdClearMark_Click();
    EXPECT_EQ(marks(), "");
    expectListShown(false);
}

TEST_F(Marks, ClearNothingQuietly)
{
    panel.cmdClearMark_Click();
    expectListShown(false);
}

TEST_F(Marks, ComeBackWithTheNextOneAfterTheyWereCleared)
{
    addThree();
    click(panel, "cmdClearMark");
    addAt("00:09:30");
    EXPECT_EQ(marks(), "00:09:00");
    expectListShown(true);
}

TEST_F(Marks, KeepTheKeysPlaceWhenTheyAreCleared)
{
    addThree();
    makeCurrent(1);
    click(panel, "cmdClearMark");
    addThree();
    expectPlayFrom(2000);
    panel.RepeatCurrentMark();
}

/// The panel between two others that can have the keyboard.
class MarksInAWindow : public Marks
{
protected:
    MarksInAWindow()
    {
        for (QWidget* widget : std::initializer_list<QWidget*>{&before, &panel, &after})
            rows.addWidget(widget);
        for (QToolButton* button : {&before, &after})
            button->setFocusPolicy(Qt::StrongFocus);
        window.show();
        QApplication::setActiveWindow(&window);
    }

    ~MarksInAWindow() override
    {
        for (QWidget* widget : std::initializer_list<QWidget*>{&before, &panel, &after})
            widget->setParent(nullptr);
    }

    QWidget window;
    QVBoxLayout rows{&window};
    QToolButton before;
    QToolButton after;
};

TEST_F(MarksInAWindow, KeepTheKeyboardInThePanelWhenTheirListGoes)
{
    addThree();
    for (const char* name : {"lstMark", "cmdClearMark"}) {
        control<QWidget>(panel, name).setFocus();
        panel.cmdClearMark_Click();
        EXPECT_EQ(QApplication::focusWidget(), &control<QWidget>(panel, "cmdAddMark"));
        addThree();
    }
}

TEST_F(MarksInAWindow, LeaveTheKeyboardToThePanelThatHasIt)
{
    addThree();
    before.setFocus();
    panel.cmdClearMark_Click();
    EXPECT_EQ(QApplication::focusWidget(), &before);
}

TEST_F(Marks, AreWalkedByTheTabKeyAsTheEyeGoes)
{
    addThree();
    panel.show();
    QApplication::setActiveWindow(&panel);
    control<QWidget>(panel, "cmdAddMark").setFocus();
    for (const char* next : {"cmdDeleteMark", "cmdClearMark", "lstMark", "cmdAddMark"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
}

TEST_F(Marks, TakeNoMoreThanTheRowOfTheirButtonWhileHidden)
{
    QWidget column;
    QVBoxLayout rows(&column);
    rows.setContentsMargins(0, 0, 0, 0);
    rows.addWidget(new ListBox, 3);
    rows.addWidget(&panel, 2);
    column.resize(200, 500);
    column.show();
    EXPECT_EQ(panel.height(), control<QWidget>(panel, "cmdAddMark").sizeHint().height());
    addAt("00:01:30");
    QApplication::processEvents();
    EXPECT_GT(panel.height(), 150);
    panel.cmdClearMark_Click();
    QApplication::processEvents();
    EXPECT_EQ(panel.height(), control<QWidget>(panel, "cmdAddMark").sizeHint().height());
    panel.setParent(nullptr);
}

}  // namespace
