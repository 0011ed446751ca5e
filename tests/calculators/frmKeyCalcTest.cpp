#include "calculators/frmKeyCalc.h"

#include "calculators/CalculatorTest.h"

#include <QTest>

namespace {

class KeyCalc : public ::testing::Test
{
protected:
    KeyCalc() { window.show(); }

    void choose(const QString& initial, const QString& desired)
    {
        pick("cboInitKey", initial);
        pick("cboDestKey", desired);
    }

    void pick(const char* list, const QString& key)
    {
        auto& box = control<ComboBox>(window, list);
        box.setListIndex(box.findText(key));
    }

    RangedSlider sldPitchSemi{-12, 12};
    frmKeyCalc window{sldPitchSemi};
};

TEST_F(KeyCalc, OffersTheTwelvePitchClassesInBothLists)
{
    const QStringList keys{"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
    EXPECT_EQ(itemsOf(window, "cboInitKey"), keys);
    EXPECT_EQ(itemsOf(window, "cboDestKey"), keys);
}

TEST_F(KeyCalc, SaysInItsListsWhatTheyAreForUntilAKeyIsChosen)
{
    EXPECT_EQ(control<ComboBox>(window, "cboInitKey").listIndex(), -1);
    EXPECT_EQ(control<ComboBox>(window, "cboDestKey").listIndex(), -1);
    EXPECT_EQ(control<ComboBox>(window, "cboInitKey").placeholderText(), "Initial");
    EXPECT_EQ(control<ComboBox>(window, "cboDestKey").placeholderText(), "Final");
    EXPECT_EQ(control<ComboBox>(window, "cboInitKey").currentText(), "");
    EXPECT_EQ(textOf(window, "lblAction"), "");
}

TEST_F(KeyCalc, TellsItsToolTipsAndCaptions)
{
    EXPECT_EQ(control<ComboBox>(window, "cboInitKey").toolTip(), "Set initial song key");
    EXPECT_EQ(control<ComboBox>(window, "cboDestKey").toolTip(), "Set desired song key");
    EXPECT_EQ(control<QPushButton>(window, "cmdTransposeUp").text(), "Transpose up");
    EXPECT_EQ(control<QPushButton>(window, "cmdTransposeDown").text(), "Transpose down");
}

TEST_F(KeyCalc, NamesItsControlsForScreenReaders)
{
    for (const char* name : {"cboInitKey", "cboDestKey", "cmdTransposeUp", "cmdTransposeDown"})
        EXPECT_NE(control<QWidget>(window, name).accessibleName(), "") << name;
}

TEST_F(KeyCalc, HasItsButtonsEnabledFromTheBeginning)
{
    EXPECT_TRUE(control<QPushButton>(window, "cmdTransposeUp").isEnabled());
    EXPECT_TRUE(control<QPushButton>(window, "cmdTransposeDown").isEnabled());
}

TEST_F(KeyCalc, WaitsForBothKeys)
{
    pick("cboInitKey", "D");
    EXPECT_EQ(textOf(window, "lblAction"), "");
    pick("cboDestKey", "C");
    EXPECT_EQ(textOf(window, "lblAction"), "10 up or 2 down");
}

TEST_F(KeyCalc, WaitsForBothKeysInTheOtherOrder)
{
    pick("cboDestKey", "C");
    EXPECT_EQ(textOf(window, "lblAction"), "");
    pick("cboInitKey", "C");
    EXPECT_EQ(textOf(window, "lblAction"), "No changes");
}

struct KeysRow
{
    const char* name;
    const char* initial;
    const char* desired;
    const char* text;
    int up;
    int down;
};

class EachPairOfKeys : public KeyCalc, public ::testing::WithParamInterface<KeysRow>
{
};

TEST_P(EachPairOfKeys, IsSoManySemitonesApart)
{
    choose(GetParam().initial, GetParam().desired);
    EXPECT_EQ(textOf(window, "lblAction"), GetParam().text);
}

TEST_P(EachPairOfKeys, IsReachedUpwards)
{
    choose(GetParam().initial, GetParam().desired);
    click(window, "cmdTransposeUp");
    EXPECT_EQ(sldPitchSemi.value(), GetParam().up);
    EXPECT_FALSE(window.isVisible());
}

TEST_P(EachPairOfKeys, IsReachedDownwards)
{
    choose(GetParam().initial, GetParam().desired);
    click(window, "cmdTransposeDown");
    EXPECT_EQ(sldPitchSemi.value(), -GetParam().down);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(Keys, EachPairOfKeys,
                         ::testing::Values(KeysRow{"CtoD", "C", "D", "2 up or 10 down", 2, 10},
                                           KeysRow{"DtoC", "D", "C", "10 up or 2 down", 10, 2},
                                           KeysRow{"BtoC", "B", "C", "1 up or 11 down", 1, 11},
                                           KeysRow{"CtoB", "C", "B", "11 up or 1 down", 11, 1},
                                           KeysRow{"CtoFSharp", "C", "F#", "6 up or 6 down", 6, 6},
                                           KeysRow{"ASharpToDSharp", "A#", "D#", "5 up or 7 down", 5, 7},
                                           KeysRow{"CtoC", "C", "C", "No changes", 0, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(KeyCalc, CalculatesAnewWithEachChoice)
{
    choose("C", "D");
    pick("cboDestKey", "E");
    EXPECT_EQ(textOf(window, "lblAction"), "4 up or 8 down");
    pick("cboInitKey", "A");
    EXPECT_EQ(textOf(window, "lblAction"), "7 up or 5 down");
}

TEST_F(KeyCalc, KeepsTheMoveWorkedOutBeforeWhenTheKeysBecomeEqual)
{
    choose("C", "D");
    pick("cboDestKey", "C");
    EXPECT_EQ(textOf(window, "lblAction"), "No changes");
    click(window, "cmdTransposeUp");
    EXPECT_EQ(sldPitchSemi.value(), 2);
}

TEST_F(KeyCalc, KeepsTheMoveDownToo)
{
    choose("C", "D");
    pick("cboInitKey", "D");
    click(window, "cmdTransposeDown");
    EXPECT_EQ(sldPitchSemi.value(), -10);
}

TEST_F(KeyCalc, AddsNothingBeforeAKeyIsChosenAndCloses)
{
    sldPitchSemi.setValue(3);
    click(window, "cmdTransposeUp");
    EXPECT_EQ(sldPitchSemi.value(), 3);
    EXPECT_FALSE(window.isVisible());

    window.show();
    click(window, "cmdTransposeDown");
    EXPECT_EQ(sldPitchSemi.value(), 3);
    EXPECT_FALSE(window.isVisible());
}

struct MoveRow
{
    const char* name;
    int before;
    const char* desired;  // from C
    const char* button;
    int after;
};

class EachMove : public KeyCalc, public ::testing::WithParamInterface<MoveRow>
{
};

TEST_P(EachMove, IsAddedToTheSliderOrDroppedAndClosesTheWindow)
{
    sldPitchSemi.setValue(GetParam().before);
    choose("C", GetParam().desired);
    click(window, GetParam().button);
    EXPECT_EQ(sldPitchSemi.value(), GetParam().after);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(Moves, EachMove,
                         ::testing::Values(MoveRow{"UpFromThree", 3, "D", "cmdTransposeUp", 5},
                                           MoveRow{"UpFromBelow", -12, "B", "cmdTransposeUp", -1},
                                           MoveRow{"UpToTheEnd", 4, "G#", "cmdTransposeUp", 12},
                                           MoveRow{"UpPastTheEnd", 5, "G#", "cmdTransposeUp", 5},
                                           MoveRow{"DownFromThree", 3, "D", "cmdTransposeDown", -7},
                                           MoveRow{"DownToTheEnd", -4, "E", "cmdTransposeDown", -12},
                                           MoveRow{"DownPastTheEnd", -5, "E", "cmdTransposeDown", -5}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(KeyCalc, PutsItsMoveIntoTheSliderOnce)
{
    int changes = 0;
    QObject::connect(&sldPitchSemi, &Slider::Change, [&changes] { ++changes; });
    choose("C", "D");
    EXPECT_EQ(changes, 0);
    click(window, "cmdTransposeUp");
    EXPECT_EQ(changes, 1);
}

TEST_F(KeyCalc, LeavesTheSliderToItsOwnRoutine)
{
    QObject::connect(&sldPitchSemi, &Slider::Change, [this] { sldPitchSemi.setValue(0); });
    choose("C", "D");
    click(window, "cmdTransposeUp");
    EXPECT_EQ(sldPitchSemi.value(), 0);
}

TEST_F(KeyCalc, IsClosedByEscapeWithoutAMove)
{
    choose("C", "D");
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(sldPitchSemi.value(), 0);
}

TEST_F(KeyCalc, TransposesUpWithEnter)
{
    choose("C", "D");
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(sldPitchSemi.value(), 2);
}

TEST_F(KeyCalc, StartsAfreshAtEachOpening)
{
    choose("C", "D");
    window.close();
    const frmKeyCalc next(sldPitchSemi);
    EXPECT_EQ(control<ComboBox>(next, "cboInitKey").listIndex(), -1);
    EXPECT_EQ(control<ComboBox>(next, "cboDestKey").listIndex(), -1);
    EXPECT_EQ(textOf(next, "lblAction"), "");
}

}  // namespace
