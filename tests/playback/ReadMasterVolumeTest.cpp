#include "playback/ReadMasterVolume.h"

#include "engines/MockOutputMixer.h"
#include "playback/PanelTest.h"

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;

namespace {

/// The slider as it stands in the main window: half way, with a change that writes a tool tip of its own.
class MasterVolume : public ::testing::Test
{
protected:
    MasterVolume()
    {
        sldVolume.setRange(0, 65535);
        sldVolume.setValue(32768);
        sldVolume.setToolTip("design");
        QObject::connect(&sldVolume, &Slider::Change, [this] {
            ++changes;
            sldVolume.setToolTip("change");
        });
    }

    void expectReading(int value)
    {
        const InSequence order;
        EXPECT_CALL(mixer, mixerOpen).WillOnce(Return(0));
        EXPECT_CALL(mixer, mixerGetLineControls).WillOnce(Return(true));
        EXPECT_CALL(mixer, mixerGetControlDetails).WillOnce(Return(value));
    }

    StrictMock<MockOutputMixer> mixer;
    StrictMock<MockMsgBox> msgBox;
    Slider sldVolume;
    int changes = 0;
};

TEST_F(MasterVolume, IsToldInAPlainBoxAndLeftAloneWhereTheMixerCannotBeOpened)
{
    EXPECT_CALL(mixer, mixerOpen).WillOnce(Return(2));
    EXPECT_CALL(msgBox,
                show(QString("Couldn't open the mixer please check if a audio mixer is installed then retry."),
                     MsgBox::Look::Plain, QString()));
    ReadMasterVolume(mixer, sldVolume, msgBox);
    EXPECT_EQ(sldVolume.value(), 32768);
    EXPECT_EQ(sldVolume.toolTip(), "design");
    EXPECT_EQ(changes, 0);
}

TEST_F(MasterVolume, IsNothingWithoutAWordWhereThereAreNoSpeakers)
{
    {
        const InSequence order;
        EXPECT_CALL(mixer, mixerOpen).WillOnce(Return(0));
        EXPECT_CALL(mixer, mixerGetLineControls).WillOnce(Return(false));
    }
    ReadMasterVolume(mixer, sldVolume, msgBox);
    EXPECT_EQ(sldVolume.value(), 0);
    EXPECT_EQ(sldVolume.toolTip(), "0");
    EXPECT_EQ(changes, 1);
}

TEST_F(MasterVolume, IsLeftAloneWhereItCannotBeRead)
{
    expectReading(-1);
    ReadMasterVolume(mixer, sldVolume, msgBox);
    EXPECT_EQ(sldVolume.value(), 32768);
    EXPECT_EQ(sldVolume.toolTip(), "design");
    EXPECT_EQ(changes, 0);
}

TEST_F(MasterVolume, WritesItsToolTipAlsoWhereTheSliderStandsThereAlready)
{
    expectReading(32768);
    ReadMasterVolume(mixer, sldVolume, msgBox);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(sldVolume.toolTip(), "5");
}

struct MixerRow
{
    const char* name;
    int value;
    const char* toolTip;
};

class EachVolumeOfTheMixer : public MasterVolume, public ::testing::WithParamInterface<MixerRow>
{
};

TEST_P(EachVolumeOfTheMixer, IsPutIntoTheSliderAndThenReplacesTheToolTipOfTheChange)
{
    expectReading(GetParam().value);
    ReadMasterVolume(mixer, sldVolume, msgBox);
    EXPECT_EQ(sldVolume.value(), GetParam().value);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(sldVolume.toolTip(), GetParam().toolTip);
}

// Half of 6553 is 3276.5.
INSTANTIATE_TEST_SUITE_P(Values, EachVolumeOfTheMixer,
                         ::testing::Values(MixerRow{"Full", 65535, "10"}, MixerRow{"Silent", 0, "0"},
                                           MixerRow{"JustUnderHalfATenth", 3276, "0"},
                                           MixerRow{"JustOverHalfATenth", 3277, "1"},
                                           MixerRow{"FourTenths", 26214, "4"},
                                           MixerRow{"NineAndAHalfTenths", 62254, "10"}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
