#include "recorder/SoundCardPanel.h"

#include "recorder/RecorderTest.h"
#include "support/MockDialogs.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>

using ::testing::_;
using ::testing::AnyNumber;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

class SoundCards : public ::testing::Test
{
protected:
    int handle() const { return static_cast<int>(panel.window()->winId()); }
    Slider& level() const { return control<Slider>(panel, "SliderRecordingInputVolume"); }

    void expectDevices(const QStringList& names)
    {
        EXPECT_CALL(Recorder, InitRecorder(handle(), 0, -1));
        EXPECT_CALL(Recorder, GetRecordingDeviceCount).WillOnce(Return(static_cast<short>(names.size())));
        for (short i = 0; i < names.size(); ++i)
            EXPECT_CALL(Recorder, GetRecordingDeviceName(i)).WillOnce(Return(names[i]));
    }

    void expectInaccessible(short device)
    {
        EXPECT_CALL(Recorder, OpenRecordingDevice(device)).WillOnce(Return(-1));
        EXPECT_CALL(msgBox, show(QString("The selected device is not accessible"), MsgBox::Look::Plain, QString()));
    }

    /// One run of a device's selection. Its lines are asked for while @p before is selected, and @p current is the
    /// line that the device names. The level is 40, which @p writesBack where the slider stood elsewhere.
    void expectSelection(short device, short before, short current, const QStringList& lines, bool writesBack)
    {
        EXPECT_CALL(Recorder, OpenRecordingDevice(device)).WillOnce(Return(0));
        EXPECT_CALL(Recorder, SelectRecordingInput(device, before));
        EXPECT_CALL(Recorder, GetRecordingInputCount(device)).WillOnce(Return(static_cast<short>(lines.size())));
        for (short i = 0; i < lines.size(); ++i)
            EXPECT_CALL(Recorder, GetRecordingInputName(device, i)).WillOnce(Return(lines[i]));
        EXPECT_CALL(Recorder, GetCurrentRecordingInput(device)).WillOnce(Return(current));
        expectLine(device, current, writesBack);
        EXPECT_CALL(Recorder, GetRecordingInputVolume(device, current)).WillOnce(Return(40));
        expectLine(device, current, false);
    }

    void expectLine(short device, short line, bool writesBack)
    {
        EXPECT_CALL(Recorder, SelectRecordingInput(device, line));
        EXPECT_CALL(Recorder, GetRecordingInputVolume(device, line)).WillOnce(Return(40));
        if (writesBack)
            EXPECT_CALL(Recorder, SetRecordingInputVolume(device, line, 40));
    }

    /// Two devices; the first has two lines, of which the second is selected and stands at 40.
    void start()
    {
        {
            const InSequence order;
            expectDevices({"Built-in", "Monitor of Built-in"});
            expectSelection(0, -1, 1, {"Line In", "Microphone"}, true);
            expectSelection(0, 1, 1, {"Line In", "Microphone"}, false);
        }
        panel.FillSoundCardCombos();
    }

    StrictRecorder Recorder;
    StrictMock<MockMsgBox> msgBox;
    SoundCardPanel panel{Recorder, msgBox};
};

TEST_F(SoundCards, AreOfferedInTheEnginesOrderAndTheFirstIsSelectedTwice)
{
    start();
    EXPECT_EQ(itemsOf(panel, "ComboRecordingDevices"), QStringList({"Built-in", "Monitor of Built-in"}));
    EXPECT_EQ(textOf(panel, "ComboRecordingDevices"), "Built-in");
    EXPECT_EQ(itemsOf(panel, "ComboRecordingInput"), QStringList({"Line In", "Microphone"}));
    EXPECT_EQ(textOf(panel, "ComboRecordingInput"), "Microphone");
    EXPECT_EQ(level().value(), 40);
}

TEST_F(SoundCards, HaveRoomForTheirLongNamesInTheListThatDropsDown)
{
    const QString name = "Monitor of the second digital output of an interface with a long name";
    ON_CALL(Recorder, OpenRecordingDevice).WillByDefault(Return(1));
    EXPECT_CALL(Recorder, OpenRecordingDevice).Times(2);
    EXPECT_CALL(msgBox, show(_, _, _)).Times(2);
    expectDevices({name});
    panel.FillSoundCardCombos();
    const auto& list = control<ComboBox>(panel, "ComboRecordingDevices");
    EXPECT_GE(list.view()->minimumWidth(), list.fontMetrics().horizontalAdvance(name));
    EXPECT_LT(list.minimumSizeHint().width(), 300);
}

TEST_F(SoundCards, ThatAreNotThereLeaveTheListsEmptyAndTheEngineAlone)
{
    expectDevices({});
    panel.FillSoundCardCombos();
    EXPECT_EQ(control<ComboBox>(panel, "ComboRecordingDevices").listIndex(), -1);
    EXPECT_TRUE(itemsOf(panel, "ComboRecordingInput").isEmpty());
}

TEST_F(SoundCards, ThatCannotBeOpenedAreToldOfAtEachSelection)
{
    const InSequence order;
    expectDevices({"Broken"});
    expectInaccessible(0);
    expectInaccessible(0);
    panel.FillSoundCardCombos();
    EXPECT_EQ(textOf(panel, "ComboRecordingDevices"), "Broken");
    EXPECT_TRUE(itemsOf(panel, "ComboRecordingInput").isEmpty());
}

TEST_F(SoundCards, ThatCannotBeOpenedStaySelectedAndChangeNeitherLineNorLevel)
{
    start();
    const InSequence order;
    expectInaccessible(1);
    pick(panel, "ComboRecordingDevices", "Monitor of Built-in");
    EXPECT_EQ(textOf(panel, "ComboRecordingDevices"), "Monitor of Built-in");
    EXPECT_EQ(itemsOf(panel, "ComboRecordingInput"), QStringList({"Line In", "Microphone"}));
    EXPECT_EQ(textOf(panel, "ComboRecordingInput"), "Microphone");
    EXPECT_EQ(level().value(), 40);
}

TEST_F(SoundCards, AreAskedForTheirLinesWhileTheLineOfTheOneBeforeIsSelected)
{
    start();
    level().blockSignals(true);
    level().setValue(70);
    level().blockSignals(false);
    {
        const InSequence order;
        expectSelection(1, 1, 0, {"Output"}, true);
    }
    pick(panel, "ComboRecordingDevices", "Monitor of Built-in");
    EXPECT_EQ(itemsOf(panel, "ComboRecordingInput"), QStringList("Output"));
    EXPECT_EQ(textOf(panel, "ComboRecordingInput"), "Output");
}

TEST_F(SoundCards, WithoutALineAreSelectedWithLineMinusOne)
{
    start();
    {
        const InSequence order;
        EXPECT_CALL(Recorder, OpenRecordingDevice(1)).WillOnce(Return(0));
        EXPECT_CALL(Recorder, SelectRecordingInput(1, 1));
        EXPECT_CALL(Recorder, GetRecordingInputCount(1)).WillOnce(Return(0));
        EXPECT_CALL(Recorder, GetCurrentRecordingInput(1)).WillOnce(Return(0));
        EXPECT_CALL(Recorder, GetRecordingInputVolume(1, -1)).WillOnce(Return(40));
        EXPECT_CALL(Recorder, SelectRecordingInput(1, -1));
        EXPECT_CALL(Recorder, GetRecordingInputVolume(1, -1)).WillOnce(Return(40));
    }
    pick(panel, "ComboRecordingDevices", "Monitor of Built-in");
    EXPECT_TRUE(itemsOf(panel, "ComboRecordingInput").isEmpty());
    EXPECT_EQ(control<ComboBox>(panel, "ComboRecordingInput").listIndex(), -1);
}

TEST_F(SoundCards, SelectALineAndReadItsLevelBackAndForth)
{
    start();
    {
        const InSequence order;
        EXPECT_CALL(Recorder, SelectRecordingInput(0, 0));
        EXPECT_CALL(Recorder, GetRecordingInputVolume(0, 0)).WillOnce(Return(85));
        EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 0, 85));
    }
    pick(panel, "ComboRecordingInput", "Line In");
    EXPECT_EQ(level().value(), 85);
}

TEST_F(SoundCards, WriteEachLevelThatTheSliderComesTo)
{
    start();
    {
        const InSequence order;
        EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 41));
        EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 0));
        EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 100));
    }
    level().setValue(41);
    level().setValue(-5);
    level().setValue(200);
    level().setValue(100);  // the value held
    EXPECT_EQ(level().minimum(), 0);
    EXPECT_EQ(level().maximum(), 100);
}

TEST_F(SoundCards, ProtectAgainstClippingFromTheStart)
{
    EXPECT_TRUE(control<QCheckBox>(panel, "chkAutoGain").isChecked());
    EXPECT_CALL(Recorder, EnableAntiClipping(1));
    panel.passAntiClipping();
}

TEST_F(SoundCards, PassEachChangeOfTheProtection)
{
    const InSequence order;
    EXPECT_CALL(Recorder, EnableAntiClipping(0));
    EXPECT_CALL(Recorder, EnableAntiClipping(1));
    click(panel, "chkAutoGain");
    click(panel, "chkAutoGain");
}

TEST_F(SoundCards, AreLoweredByOneForAPeakOfFullScaleOnEitherSide)
{
    start();
    const InSequence order;
    EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 39));
    panel.lowerInputIfClipped(32767, 0);
    EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 38));
    panel.lowerInputIfClipped(0, 32767);
    EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 37));
    panel.lowerInputIfClipped(32767, 32767);
    EXPECT_EQ(level().value(), 37);
}

TEST_F(SoundCards, AreLeftAloneByAPeakJustUnderFullScale)
{
    start();
    panel.lowerInputIfClipped(32766, 32766);
    EXPECT_EQ(level().value(), 40);
}

TEST_F(SoundCards, AreLeftAloneWhereTheUserWantsNoProtection)
{
    start();
    EXPECT_CALL(Recorder, EnableAntiClipping(0));
    click(panel, "chkAutoGain");
    panel.lowerInputIfClipped(32767, 32767);
    EXPECT_EQ(level().value(), 40);
}

TEST_F(SoundCards, AtLevelZeroStayThere)
{
    start();
    EXPECT_CALL(Recorder, SetRecordingInputVolume(0, 1, 0));
    level().setValue(0);
    panel.lowerInputIfClipped(32767, 32767);
    EXPECT_EQ(level().value(), 0);
}

TEST_F(SoundCards, AreCaptionedAndNamedForScreenReaders)
{
    EXPECT_EQ(control<QWidget>(panel, "Frame1").property("title").toString(), "Sound card settings");
    EXPECT_EQ(textOf(panel, "LabelDevice"), "Device :");
    EXPECT_EQ(textOf(panel, "LabelInput"), "Input:");
    EXPECT_EQ(textOf(panel, "LabelSensitivity"), "Input sensitivity :");
    EXPECT_EQ(textOf(panel, "chkAutoGain"), "Use Anti Clipping");
    EXPECT_EQ(control<QWidget>(panel, "ComboRecordingDevices").toolTip(), "Choose sound card on your system");
    EXPECT_EQ(control<QWidget>(panel, "ComboRecordingInput").toolTip(), "Choose recording input");
    EXPECT_EQ(level().toolTip(), "Adjust input sensitivity level");
    EXPECT_EQ(control<QWidget>(panel, "chkAutoGain").toolTip(),
              "Automatically reduce input sensitivity if signal is too strong to avoid recording distortion");
    for (const char* name :
         {"ComboRecordingDevices", "ComboRecordingInput", "SliderRecordingInputVolume", "chkAutoGain"})
        EXPECT_NE(control<QWidget>(panel, name).accessibleName(), "") << name;
    for (QLabel* label : panel.findChildren<QLabel*>())
        EXPECT_NE(label->buddy(), nullptr) << qPrintable(label->text());
}

}  // namespace
