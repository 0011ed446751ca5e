#include "playback/EqualizerPanel.h"

#include "playback/GainSlider.h"
#include "playback/PanelTest.h"
#include "support/controls/ComboBox.h"

#include <QAbstractItemView>
#include <QGroupBox>
#include <QTest>
#include <cmath>

using ::testing::_;
using ::testing::AnyNumber;
using ::testing::Eq;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

struct BandRow
{
    const char* slider;
    const char* label;
    float frequency;
    const char* caption;
    const char* spoken;
};

constexpr std::array<BandRow, 10> rows{{{"Slider80Hz", "lbl80Hz", 80, "80 Hz", "80 Hz"},
                                        {"Slider170Hz", "lbl170Hz", 170, "170 Hz", "170 Hz"},
                                        {"Slider310Hz", "lbl310Hz", 310, "310 Hz", "310 Hz"},
                                        {"Slider600Hz", "lbl600Hz", 600, "600 Hz", "600 Hz"},
                                        {"Slider1000Hz", "lbl1000Hz", 1000, "1 Khz", "1 kHz"},
                                        {"Slider3000Hz", "lbl3000Hz", 3000, "3 Khz", "3 kHz"},
                                        {"Slider6000Hz", "lbl6000Hz", 6000, "6 Khz", "6 kHz"},
                                        {"Slider12000Hz", "lbl12000Hz", 12000, "12 Khz", "12 kHz"},
                                        {"Slider14000Hz", "lbl14000Hz", 14000, "14 Khz", "14 kHz"},
                                        {"Slider16000Hz", "lbl16000Hz", 16000, "16 Khz", "16 kHz"}}};

/// A preset as the user sees it, with its place in the list.
constexpr std::array<const char*, 17> presetNames{
    "None",       "Club",      "Dance", "Full Bass", "Full Bass Treble", "Full Treble", "Laptop Speakers",
    "Large Hall", "Live",      "Party", "Pop",       "Reggae",           "Rock",        "Ska",
    "Soft",       "Soft Rock", "Techno"};

/// The panel as the window's form has it, before the start of the program has reached it.
class EqualizerDesign : public ::testing::Test
{
protected:
    ComboBox& presets() { return control<ComboBox>(panel, "cmbEQPresets"); }

    // The calls of one reading of bands with these gains, in order.
    void expectReading(const std::vector<float>& gains)
    {
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(static_cast<short>(gains.size())));
        for (std::size_t index = 0; index < gains.size(); ++index)
            expectReadingOf(index, gains[index]);
    }

    void expectReadingOf(std::size_t index, float gain)
    {
        const float frequency = index < rows.size() ? rows[index].frequency : 20000 + static_cast<float>(index);
        EXPECT_CALL(engine, GetEqualizerBandFrequency(0, static_cast<int>(index))).WillOnce(Return(frequency));
        EXPECT_CALL(engine, GetEqualizerBand(0, Eq(frequency), _, _))
            .WillOnce([gain](short, float&, float& bandwidth, float& read) {
                bandwidth = 12;
                read = gain;
            });
    }

    StrictMock<MockPlayerEngine> engine;
    StrictMock<MockCommonDialog> dialog;
    StrictMock<MockMsgBox> msgBox;
    EqualizerPanel panel{engine, dialog, msgBox};
};

/// The panel in use.
class Equalizer : public EqualizerDesign
{
protected:
    Equalizer()
    {
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{0}));
        EXPECT_CALL(engine, EnableEqualizer(true));
        EXPECT_CALL(engine, AddEqualizerBand).Times(10);
        panel.EnableEqualizerPanel();
        ::testing::Mock::VerifyAndClearExpectations(&engine);
        panel.show();
    }

    /// Puts a slider where a test needs it, whatever engine calls that makes.
    void prepare(const char* slider, int value)
    {
        EXPECT_CALL(engine, ChangeEqualizerBand).Times(AnyNumber());
        put(panel, slider, value);
        ::testing::Mock::VerifyAndClearExpectations(&engine);
    }

    /// As a user picks.
    void pick(int index)
    {
        presets().showPopup();
        presets().view()->setCurrentIndex(presets().model()->index(index, 0));
        QTest::keyClick(presets().view(), Qt::Key_Return);
    }

    void expectReset()
    {
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{0}));
    }
};

TEST_F(EqualizerDesign, IsOutOfUseWithItsSlidersInTheMiddle)
{
    for (const BandRow& row : rows) {
        const auto& slider = control<GainSlider>(panel, row.slider);
        EXPECT_FALSE(slider.isEnabled()) << row.slider;
        EXPECT_EQ(slider.value(), 0) << row.slider;
    }
    for (const char* button : {"cmdResetEQ", "cmdLoadEQPreset", "cmdSaveEQPreset"})
        EXPECT_FALSE(control<QToolButton>(panel, button).isEnabled()) << button;
    EXPECT_TRUE(presets().isHidden());
    EXPECT_EQ(presets().listIndex(), -1);
}

TEST_F(EqualizerDesign, IsCaptioned)
{
    EXPECT_EQ(control<QGroupBox>(panel, "Frame1").title(), "Equalizer");
    EXPECT_EQ(textOf(panel, "Label16"), "Bass");
    EXPECT_EQ(textOf(panel, "Label15"), "Middle");
    EXPECT_EQ(textOf(panel, "Label17"), "High");
    EXPECT_EQ(textOf(panel, "Label30"), "Apply equalizer preset :");
    EXPECT_EQ(textOf(panel, "lblEQMax"), "+");
    EXPECT_EQ(textOf(panel, "lblEQReset"), "0");
    EXPECT_EQ(textOf(panel, "lblEQMin"), "_");
    for (const BandRow& row : rows)
        EXPECT_EQ(textOf(panel, row.label), row.caption);
}

TEST_F(EqualizerDesign, TellsItsToolTips)
{
    EXPECT_EQ(control<QToolButton>(panel, "cmdResetEQ").toolTip(), "Reset all");
    EXPECT_EQ(control<QToolButton>(panel, "cmdLoadEQPreset").toolTip(), "Load preset");
    EXPECT_EQ(control<QToolButton>(panel, "cmdSaveEQPreset").toolTip(), "Save preset");
    EXPECT_EQ(control<QLabel>(panel, "lblEQMax").toolTip(), "Maximize band");
    EXPECT_EQ(control<QLabel>(panel, "lblEQReset").toolTip(), "Reset band");
    EXPECT_EQ(control<QLabel>(panel, "lblEQMin").toolTip(), "Minimize band");
}

TEST_F(EqualizerDesign, HasTheRangeOfEachBandAndANameForScreenReaders)
{
    for (const BandRow& row : rows) {
        const auto& slider = control<GainSlider>(panel, row.slider);
        EXPECT_EQ(slider.minimum(), -1500) << row.slider;
        EXPECT_EQ(slider.maximum(), 1500) << row.slider;
        EXPECT_EQ(slider.orientation(), Qt::Vertical) << row.slider;
        EXPECT_EQ(slider.accessibleName(), row.spoken);
    }
    for (const char* name : {"cmbEQPresets", "cmdResetEQ", "cmdLoadEQPreset", "cmdSaveEQPreset"})
        EXPECT_NE(control<QWidget>(panel, name).accessibleName(), "") << name;
}

TEST_F(EqualizerDesign, ListsThePresetsInTheirOrder)
{
    ASSERT_EQ(presets().count(), static_cast<int>(presetNames.size()));
    for (std::size_t index = 0; index < presetNames.size(); ++index)
        EXPECT_EQ(presets().itemText(static_cast<int>(index)), presetNames[index]);
}

TEST_F(EqualizerDesign, IsPutToUseByAResetAndThenTheBandsLowestFirst)
{
    {
        const InSequence order;
        EXPECT_CALL(engine, ResetEqualizer(0)).WillOnce([this] {
            for (const BandRow& row : rows)
                EXPECT_TRUE(control<GainSlider>(panel, row.slider).isEnabled()) << row.slider;
            for (const char* button : {"cmdResetEQ", "cmdLoadEQPreset", "cmdSaveEQPreset"})
                EXPECT_TRUE(control<QToolButton>(panel, button).isEnabled()) << button;
            EXPECT_FALSE(presets().isHidden());
        });
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{0}));
        EXPECT_CALL(engine, EnableEqualizer(true));
        for (const BandRow& row : rows)
            EXPECT_CALL(engine, AddEqualizerBand(0, row.frequency, 12.0F, 0.0F));
    }
    panel.EnableEqualizerPanel();
    EXPECT_EQ(presets().listIndex(), 0);
}

TEST_F(Equalizer, ASliderSendsItsBandAHundredthOfItsValueInDecibels)
{
    for (const BandRow& row : rows) {
        EXPECT_CALL(engine, ChangeEqualizerBand(0, row.frequency, 7.5F));
        put(panel, row.slider, 750);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, row.frequency, -15.0F));
        put(panel, row.slider, -1500);
    }
}

TEST_F(Equalizer, AGainIsDividedInDoublePrecisionAndThenNarrowed)
{
    // 0.01 and 14.99 have no exact float; the nearest ones, by their bits.
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 1000.0F, 0x1.47ae14p-7F));
    put(panel, "Slider1000Hz", 1);
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 1000.0F, 0x1.dfae14p+3F));
    put(panel, "Slider1000Hz", 1499);
}

TEST_F(Equalizer, EachGainThatASliderSendsComesBackToTheSameValue)
{
    float sent = 0;
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, _)).WillRepeatedly([&](short, float, const float& gain) {
        sent = gain;
    });
    EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillRepeatedly(Return(short{1}));
    EXPECT_CALL(engine, GetEqualizerBandFrequency(0, 0)).WillRepeatedly(Return(80.0F));
    EXPECT_CALL(engine, GetEqualizerBand(0, Eq(80.0F), _, _))
        .WillRepeatedly([&](short, float&, float&, float& gain) { gain = sent; });
    for (int value = -1500; value <= 1500; ++value) {
        put(panel, "Slider80Hz", value);
        panel.ReadEqualizerBands();
        ASSERT_EQ(valueOf(panel, "Slider80Hz"), value);
    }
}

TEST_F(Equalizer, ReadsEachBandInTurnAndSendsBackWhatMovedASlider)
{
    {
        const InSequence order;
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{3}));
        expectReadingOf(0, 7.5F);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, 7.5F));
        expectReadingOf(1, 0);
        expectReadingOf(2, -3.25F);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 310.0F, -3.25F));
    }
    panel.ReadEqualizerBands();
    EXPECT_EQ(valueOf(panel, "Slider80Hz"), 750);
    EXPECT_EQ(valueOf(panel, "Slider170Hz"), 0);
    EXPECT_EQ(valueOf(panel, "Slider310Hz"), -325);
}

TEST_F(Equalizer, FollowsTheEngineWhenItTellsOfAChange)
{
    expectReading({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    for (std::size_t index = 0; index < rows.size(); ++index)
        EXPECT_CALL(engine, ChangeEqualizerBand(0, rows[index].frequency, static_cast<float>(index + 1)));
    emit engine.EqualizerChanged(0);
    for (std::size_t index = 0; index < rows.size(); ++index)
        EXPECT_EQ(valueOf(panel, rows[index].slider), static_cast<int>(index + 1) * 100);
}

TEST_F(Equalizer, ABandFromTheEleventhOnHasNoSlider)
{
    expectReading({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 6});
    panel.ReadEqualizerBands();
    for (const BandRow& row : rows)
        EXPECT_EQ(valueOf(panel, row.slider), 0) << row.slider;
}

TEST_F(Equalizer, RoundsAGainToTheNearestHundredth)
{
    struct Row
    {
        float gain;
        int value;
    };
    for (const Row& row :
         {Row{3.126F, 313}, Row{3.124F, 312}, Row{-3.126F, -313}, Row{0.125F, 12}, Row{0.375F, 38}}) {
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, _));
        expectReading({row.gain});
        panel.ReadEqualizerBands();
        EXPECT_EQ(valueOf(panel, "Slider80Hz"), row.value) << row.gain;
    }
}

TEST_F(Equalizer, AGainBeyondTheSliderIsCutByItAndSentBackSo)
{
    expectReading({20, -INFINITY, 1e30F});
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, 15.0F));
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 170.0F, -15.0F));
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 310.0F, 15.0F));
    panel.ReadEqualizerBands();
    EXPECT_EQ(valueOf(panel, "Slider80Hz"), 1500);
    EXPECT_EQ(valueOf(panel, "Slider170Hz"), -1500);
    EXPECT_EQ(valueOf(panel, "Slider310Hz"), 1500);
}

TEST_F(Equalizer, APresetIsTheEnginesAndCountedFromTheSecondName)
{
    for (int index = 1; index <= 16; ++index) {
        EXPECT_CALL(engine, LoadEqualizerPreset(0, index - 1));
        pick(index);
        EXPECT_EQ(presets().listIndex(), index);
    }
}

TEST_F(Equalizer, APresetPickedAgainIsLoadedAgain)
{
    EXPECT_CALL(engine, LoadEqualizerPreset(0, 4)).Times(2);
    pick(5);
    pick(5);
}

TEST_F(Equalizer, ThePresetNoneResetsOnceAndBringsTheSlidersBackToTheMiddle)
{
    EXPECT_CALL(engine, LoadEqualizerPreset(0, 11));
    pick(12);
    prepare("Slider80Hz", 750);
    {
        const InSequence order;
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{1}));
        expectReadingOf(0, 0);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, 0.0F));
    }
    pick(0);
    EXPECT_EQ(valueOf(panel, "Slider80Hz"), 0);
    EXPECT_EQ(presets().listIndex(), 0);
}

TEST_F(Equalizer, ThePresetNonePickedAgainResetsAgain)
{
    expectReset();
    pick(0);
}

TEST_F(Equalizer, TheResetButtonResetsOnceWhereNoPresetIsChosen)
{
    prepare("Slider16000Hz", -300);
    {
        const InSequence order;
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{10}));
        for (std::size_t index = 0; index < rows.size(); ++index)
            expectReadingOf(index, 0);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 16000.0F, 0.0F));
    }
    click(panel, "cmdResetEQ");
    EXPECT_EQ(valueOf(panel, "Slider16000Hz"), 0);
}

TEST_F(Equalizer, TheResetButtonResetsTwiceWhereAPresetIsChosen)
{
    EXPECT_CALL(engine, LoadEqualizerPreset(0, 2));
    pick(3);
    prepare("Slider80Hz", 500);
    {
        const InSequence order;
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{1}));
        expectReadingOf(0, 0);
        EXPECT_CALL(engine, ChangeEqualizerBand(0, 80.0F, 0.0F));
        EXPECT_CALL(engine, ResetEqualizer(0));
        EXPECT_CALL(engine, GetEqualizerBandCount(0)).WillOnce(Return(short{1}));
        expectReadingOf(0, 0);
    }
    click(panel, "cmdResetEQ");
    EXPECT_EQ(presets().listIndex(), 0);
    EXPECT_EQ(valueOf(panel, "Slider80Hz"), 0);
}

FileDialogSetup setupOf(const QString& title)
{
    FileDialogSetup setup;
    setup.title = title;
    setup.fileName = "";
    setup.filter = "Equalizer files (*.edj)|*.edj|";
    setup.filterIndex = 0;
    return setup;
}

FileDialogAnswer answered(const QString& path)
{
    FileDialogAnswer answer;
    answer.fileName = path;
    return answer;
}

TEST_F(Equalizer, LoadsTheFileThatTheUserNamesAndLeavesTheListAlone)
{
    EXPECT_CALL(engine, LoadEqualizerPreset(0, 2));
    pick(3);
    const InSequence order;
    EXPECT_CALL(dialog, ShowOpen(setupOf("Load equalizer preset"))).WillOnce(Return(answered("/music/my.edj")));
    EXPECT_CALL(engine, LoadEqualizerFile(0, QString("/music/my.edj"))).WillOnce(Return(0));
    click(panel, "cmdLoadEQPreset");
    EXPECT_EQ(presets().listIndex(), 3);
}

TEST_F(Equalizer, SavesToTheFileThatTheUserNamesAndLeavesTheListAlone)
{
    EXPECT_CALL(engine, LoadEqualizerPreset(0, 2));
    pick(3);
    const InSequence order;
    EXPECT_CALL(dialog, ShowSave(setupOf("Save equalizer preset"))).WillOnce(Return(answered("/music/my.edj")));
    EXPECT_CALL(engine, SaveEqualizerFile(0, QString("/music/my.edj"))).WillOnce(Return(0));
    click(panel, "cmdSaveEQPreset");
    EXPECT_EQ(presets().listIndex(), 3);
}

TEST_F(Equalizer, CancellingADialogDoesNothing)
{
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(FileDialogAnswer{}));
    click(panel, "cmdLoadEQPreset");
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(FileDialogAnswer{}));
    click(panel, "cmdSaveEQPreset");
}

TEST_F(Equalizer, AFileThatCannotBeLoadedIsNamedInAPlainBox)
{
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answered("/music/not one.edj")));
    EXPECT_CALL(engine, LoadEqualizerFile).WillOnce(Return(-75));
    EXPECT_CALL(msgBox, show(QString("Cannot load file /music/not one.edj"), MsgBox::Look::Plain, QString()));
    click(panel, "cmdLoadEQPreset");
}

TEST_F(Equalizer, AFileThatCannotBeSavedIsNamedInAPlainBox)
{
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answered("/proc/x.edj")));
    EXPECT_CALL(engine, SaveEqualizerFile).WillOnce(Return(1));
    EXPECT_CALL(msgBox, show(QString("Cannot save file /proc/x.edj"), MsgBox::Look::Plain, QString()));
    click(panel, "cmdSaveEQPreset");
}

TEST_F(Equalizer, TheTabKeyWalksTheBandsFromLowToHighAndThenThePresets)
{
    QWidget* next = &control<QWidget>(panel, "Slider80Hz");
    QStringList order;
    for (int i = 0; i < 14; ++i) {
        while (!(next->focusPolicy() & Qt::TabFocus))
            next = next->nextInFocusChain();
        order << next->objectName();
        next = next->nextInFocusChain();
    }
    QStringList wanted;
    for (const BandRow& row : rows)
        wanted << row.slider;
    wanted << "cmbEQPresets"
           << "cmdResetEQ"
           << "cmdLoadEQPreset"
           << "cmdSaveEQPreset";
    EXPECT_EQ(order, wanted);
}

TEST_F(Equalizer, ASliderTellsItsGainInDecibels)
{
    struct Row
    {
        int value;
        const char* tip;
    };
    for (const Row& row : {Row{750, "+7.5 dB"}, Row{-325, "-3.25 dB"}, Row{1500, "+15 dB"}, Row{0, "0 dB"}}) {
        prepare("Slider310Hz", row.value);
        EXPECT_EQ(control<GainSlider>(panel, "Slider310Hz").valueTip(), row.tip);
    }
}

TEST_F(Equalizer, AnArrowKeyIsHalfADecibelAndAPageThree)
{
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 600.0F, 0.5F));
    QTest::keyClick(&control<GainSlider>(panel, "Slider600Hz"), Qt::Key_Up);
    EXPECT_CALL(engine, ChangeEqualizerBand(0, 600.0F, -2.5F));
    QTest::keyClick(&control<GainSlider>(panel, "Slider600Hz"), Qt::Key_PageDown);
}

}  // namespace
