#include "encoding/EncoderWindowTest.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>
#include <QTest>

using ::testing::InSequence;

namespace {

using Property = std::function<void(MockMp3EncoderEngine& encoder, bool on)>;

struct SwitchRow
{
    const char* box;
    const char* caption;
    bool onAtFirst;
    const char* frame;
    Property expect;
};

#define SWITCH(property) [](MockMp3EncoderEngine& encoder, bool on) { EXPECT_CALL(encoder, property(on)); }

class EachSwitchOfTheEncoder : public EncoderWindow, public ::testing::WithParamInterface<SwitchRow>
{
};

TEST_P(EachSwitchOfTheEncoder, IsWrittenAtEachClickAndNotBefore)
{
    const SwitchRow& row = GetParam();
    auto& box = control<QCheckBox>(*window, row.box);
    EXPECT_EQ(box.isChecked(), row.onAtFirst);
    EXPECT_FALSE(box.isTristate());
    const InSequence order;
    row.expect(*encoder, !row.onAtFirst);
    row.expect(*encoder, row.onAtFirst);
    row.expect(*encoder, !row.onAtFirst);
    box.click();
    box.toggle();  // as a screen reader does
    box.setChecked(!row.onAtFirst);
    box.setChecked(!row.onAtFirst);  // changes nothing
}

TEST_P(EachSwitchOfTheEncoder, HasItsCaptionInItsFrame)
{
    const auto& box = control<QCheckBox>(*window, GetParam().box);
    EXPECT_EQ(box.text(), GetParam().caption);
    EXPECT_EQ(box.accessibleName(), GetParam().caption);
    EXPECT_TRUE(control<QWidget>(*window, GetParam().frame).isAncestorOf(&box));
}

INSTANTIATE_TEST_SUITE_P(
    Boxes, EachSwitchOfTheEncoder,
    ::testing::Values(
        SwitchRow{"chkVoiceMode", "Voice mode", false, "FrameMisc", SWITCH(VoiceMode)},
        SwitchRow{"chkUseVBR", "Use variable bitrate", false, "FrameVBR", SWITCH(UseVbr)},
        SwitchRow{"chkVBRTag", "Disable VBR info tag", false, "FrameVBR", SWITCH(DisableVbrTag)},
        SwitchRow{"chkHQ", "High quality", false, "FrameMisc", SWITCH(HighQuality)},
        SwitchRow{"chkFastMode", "Fast mode (less quality)", false, "FrameMisc", SWITCH(FastMode)},
        SwitchRow{"chkDisableSFB", "Disable SFB=21 cutoff", true, "FrameMisc", SWITCH(DisableSfb21Cutoff)},
        SwitchRow{"chkChanellBlocktype", "Chanells can have different blocktypes", false, "FrameMisc",
                  SWITCH(MixedBlockTypes)},
        SwitchRow{"chkATHmasking", "Only use ATH for masking", false, "FrameMisc", SWITCH(AthOnlyMasking)},
        SwitchRow{"chkShortBlocks", "Do not use short blocks", false, "FrameMisc", SWITCH(NoShortBlocks)},
        SwitchRow{"chkRaw", "All input is raw PCM", false, "FrameMisc", SWITCH(RawInput)},
        SwitchRow{"chkByteSwab", "Byte swab all data", false, "FrameMisc", SWITCH(SwapBytes)},
        SwitchRow{"chkToMono", "Downmix stereo to mono", false, "FrameMisc", SWITCH(DownmixToMono)},
        SwitchRow{"chkAddChecksum", "Add 16-bit checksum (error protection)", false, "FrameMisc",
                  SWITCH(AddChecksum)},
        SwitchRow{"chkCopyright", "Mark all as copyrighted", false, "FrameMisc", SWITCH(MarkCopyrighted)},
        SwitchRow{"chkNonOriginal", "Mark all as non-original", false, "FrameMisc", SWITCH(MarkNonOriginal)}),
    [](const auto& info) { return std::string(info.param.box); });

const QStringList bitrates{"32",  "40",  "48",  "56",  "64",  "80",  "96",
                           "112", "128", "160", "192", "224", "256", "320"};

struct ListRow
{
    const char* list;
    const char* caption;
    const char* captionLabel;
    const char* frame;
    QStringList rows;
    const char* atFirst;
    std::function<void(MockMp3EncoderEngine& encoder, int index, const QString& text)> expect;
};

#define NUMBER(property) \
    [](MockMp3EncoderEngine& encoder, int, const QString& text) { EXPECT_CALL(encoder, property(text.toInt())); }

class EachListOfTheEncoder : public EncoderWindow, public ::testing::WithParamInterface<ListRow>
{
};

TEST_P(EachListOfTheEncoder, OffersItsRowsAndShowsTheUsualOne)
{
    const ComboBox& shown = list(GetParam().list);
    QStringList rows;
    for (int i = 0; i < shown.count(); ++i)
        rows << shown.itemText(i);
    EXPECT_EQ(rows, GetParam().rows);
    EXPECT_EQ(shown.currentText(), GetParam().atFirst);
    EXPECT_FALSE(shown.isEditable());
}

TEST_P(EachListOfTheEncoder, IsWrittenAtEachPick)
{
    ComboBox& picked = list(GetParam().list);
    const InSequence order;
    for (int i = 0; i < picked.count(); ++i) {
        if (picked.listIndex() == i)
            picked.setListIndex(-1);  // so that each row is another one
        GetParam().expect(*encoder, i, GetParam().rows[i]);
        picked.setListIndex(i);
    }
}

TEST_P(EachListOfTheEncoder, IsWrittenAtAPickOfTheRowThatItShowsAlready)
{
    showOptions();
    ComboBox& picked = list(GetParam().list);
    GetParam().expect(*encoder, picked.listIndex(), GetParam().atFirst);
    picked.setFocus();
    picked.showPopup();
    QTest::keyClick(picked.view(), Qt::Key_Return);
    EXPECT_EQ(picked.currentText(), GetParam().atFirst);
}

TEST_P(EachListOfTheEncoder, HasItsCaptionInItsFrame)
{
    const auto& label = control<QLabel>(*window, GetParam().captionLabel);
    EXPECT_EQ(label.text(), GetParam().caption);
    EXPECT_EQ(label.buddy(), &list(GetParam().list));
    EXPECT_TRUE(control<QWidget>(*window, GetParam().frame).isAncestorOf(&list(GetParam().list)));
}

INSTANTIATE_TEST_SUITE_P(Lists, EachListOfTheEncoder,
                         ::testing::Values(ListRow{"cmbBitrate", "Bitrate", "LabelBitrate", "FrameBitrate",
                                                   bitrates, "128", NUMBER(Bitrate)},
                                           ListRow{"cmbMinVBRRate", "Minimum bitrate", "LabelMinVBRRate",
                                                   "FrameVBR", bitrates, "128", NUMBER(MinVbrBitrate)},
                                           ListRow{"cmbMaxVBRRate", "Maximum bitrate", "LabelMaxVBRRate",
                                                   "FrameVBR", bitrates, "128", NUMBER(MaxVbrBitrate)},
                                           ListRow{"cmbVBRQuality",
                                                   "Quality",
                                                   "LabelVBRQuality",
                                                   "FrameVBR",
                                                   {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"},
                                                   "4",
                                                   NUMBER(VbrQuality)},
                                           ListRow{"cmbPriority",
                                                   "Priority",
                                                   "LabelPriority",
                                                   "FrameBitrate",
                                                   {"Idle", "Lowest", "Below Normal", "Normal", "Above Normal",
                                                    "Highest", "Time Critical"},
                                                   "Normal",
                                                   [](MockMp3EncoderEngine& encoder, int index, const QString&) {
                                                       EXPECT_CALL(encoder, Priority(index));
                                                   }}),
                         [](const auto& info) { return std::string(info.param.list); });

class ModeOfTheEncoder : public EncoderWindow
{
protected:
    QRadioButton& option(int index) const
    {
        return control<QRadioButton>(*window, qPrintable(QStringLiteral("optMode%1").arg(index)));
    }

    QString selected() const
    {
        QStringList found;
        for (int i = 0; i < 4; ++i) {
            if (option(i).isChecked())
                found << option(i).text();
        }
        return found.join(' ');
    }
};

TEST_F(ModeOfTheEncoder, IsOneOfFourAndStereoAtFirst)
{
    QStringList captions;
    for (int i = 0; i < 4; ++i) {
        captions << option(i).text();
        EXPECT_TRUE(control<QWidget>(*window, "FrameMode").isAncestorOf(&option(i)));
    }
    EXPECT_EQ(captions.join(' '), "Stereo Joint Force Mono");
    EXPECT_EQ(selected(), "Stereo");
}

TEST_F(ModeOfTheEncoder, IsWrittenByItsIndexOnceForAClick)
{
    const InSequence order;
    for (const short index : {1, 2, 3, 0}) {
        EXPECT_CALL(*encoder, Mode(index));
        option(index).click();
        EXPECT_EQ(selected(), option(index).text());
    }
}

TEST_F(ModeOfTheEncoder, IsWrittenAgainByAClickOnTheSelectedOption)
{
    EXPECT_CALL(*encoder, Mode(0)).Times(2);
    option(0).click();
    option(0).click();
    EXPECT_EQ(selected(), "Stereo");
}

TEST_F(ModeOfTheEncoder, IsWrittenByTheMouseTheArrowKeysAndAScreenReader)
{
    showOptions();
    const InSequence order;
    EXPECT_CALL(*encoder, Mode(2));
    EXPECT_CALL(*encoder, Mode(3));
    EXPECT_CALL(*encoder, Mode(1));
    QTest::mouseClick(&option(2), Qt::LeftButton, {}, QPoint(8, option(2).height() / 2));
    option(2).setFocus();
    QTest::keyClick(&option(2), Qt::Key_Right);
    option(1).toggle();
}

// A press that is taken back on another place is no click.
TEST_F(ModeOfTheEncoder, IsNotWrittenByAPressThatIsTakenBack)
{
    showOptions();
    QTest::mousePress(&option(0), Qt::LeftButton, {}, QPoint(8, 8));
    QTest::mouseRelease(&option(0), Qt::LeftButton, {}, QPoint(-50, -50));
    EXPECT_CALL(*encoder, Mode(1));
    option(1).click();
    EXPECT_EQ(selected(), "Joint");
}

class FrequenciesOfTheEncoder : public EncoderWindow
{
};

TEST_F(FrequenciesOfTheEncoder, AreOnlyShown)
{
    for (const char* box : {"Text1", "Text2"}) {
        EXPECT_EQ(boxOf(box), "-1.000000");
        EXPECT_TRUE(control<QLineEdit>(*window, box).isReadOnly());
        edit(box, "22050");  // and nothing is written
    }
    browse("/music/track.wav");
    const InSequence order;
    expectEncoding("/music/track.wav", "/music/track.mp3");
    click("cmdEncode");
}

}  // namespace
