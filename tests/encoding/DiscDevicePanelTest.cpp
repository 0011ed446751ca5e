#include "encoding/AudioCDBurnTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

class TheDevices : public AudioCDBurn
{
protected:
    void expectEngineIsThere()
    {
        EXPECT_CALL(*engine, InitDevices(false)).WillOnce(Return(true));
        EXPECT_CALL(*engine, GetAudioProject).WillOnce(Return(&project));
    }

    void pickImage() const { combo("cboDevices").setListIndex(1); }
};

TEST_F(TheDevices, AreListedByNameAndTheFirstIsPicked)
{
    load();
    EXPECT_EQ(itemsOf("cboDevices"), QStringList({"Drive", "Disc image"}));
    EXPECT_EQ(combo("cboDevices").listIndex(), 0);
    EXPECT_TRUE(combo("cboDevices").itemData(1, Qt::ToolTipRole).toString().contains("Disc image"));
}

TEST_F(TheDevices, ThatCannotWriteAreLeftOutAndTheOthersKeepTheirNumbers)
{
    const InSequence order;
    expectEngineIsThere();
    EXPECT_CALL(*engine, GetDeviceCount).WillOnce(Return(3));
    EXPECT_CALL(*engine, GetDevice(0)).WillOnce(Return(&drive));
    EXPECT_CALL(drive, IsDeviceUsable).WillOnce(Return(false));
    EXPECT_CALL(*engine, GetDevice(1)).WillOnce(Return(&image));
    EXPECT_CALL(image, IsDeviceUsable).WillOnce(Return(true));
    EXPECT_CALL(image, GetDeviceName).WillOnce(Return("Disc image"));
    EXPECT_CALL(*engine, GetDevice(2)).WillOnce(Return(nullptr));
    expectImageIsPicked();
    EXPECT_CALL(image, GetCapability(57)).WillOnce(Return(false));
    window->Load();
    EXPECT_EQ(itemsOf("cboDevices"), QStringList("Disc image"));
    EXPECT_FALSE(isEnabled("chkUseBurnProof"));
}

TEST_F(TheDevices, AreMissedWhereThereAreNone)
{
    const InSequence order;
    expectEngineIsThere();
    EXPECT_CALL(*engine, GetDeviceCount).WillOnce(Return(0));
    expectBox("There are no compatible devices reported.\nSome older devices are not currently supported.");
    window->Load();
    EXPECT_EQ(itemsOf("cboDevices"), QStringList());
    EXPECT_EQ(itemsOf("cboWriteSpeed"), QStringList());
    EXPECT_FALSE(isEnabled("chkUseBurnProof"));
    EXPECT_TRUE(isEnabled("cmdWriteDisc"));
}

TEST_F(TheDevices, AreNotNeededToListTracks)
{
    const InSequence order;
    expectEngineIsThere();
    EXPECT_CALL(*engine, GetDeviceCount).WillOnce(Return(0));
    expectBox("There are no compatible devices reported.\nSome older devices are not currently supported.");
    window->Load();

    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering("/music/a.wav")));
    expectAddedTrack("/music/a.wav", 1);
    EXPECT_CALL(project, GetTrackCount).WillOnce(Return(1));
    EXPECT_CALL(project, GetTrackFile(1)).WillOnce(Return("/music/a.wav"));
    EXPECT_CALL(project, GetTrackFormat(1)).WillOnce(Return(0));
    EXPECT_CALL(project, GetTrackLength(1)).WillOnce(Return(300));
    EXPECT_CALL(project, GetRequiredSpace).WillOnce(Return(300));
    EXPECT_CALL(project, GetTrackCount).WillOnce(Return(1));
    click("cmdAddTrack");
    EXPECT_EQ(rows(), QStringList("01|/music/a.wav|WAV|00:04:00"));
    EXPECT_EQ(labelOf("lblDiscInfo0"), "1 Audio Tracks");
    EXPECT_EQ(labelOf("lblDiscInfo1"), "00:04:00 of 00:00:00 Used");

    expectBox("Please insert a blank disc before continuing!");
    EXPECT_CALL(project, GetRequiredSpace).WillOnce(Return(300));
    expectBox("Free Space on the loaded disc is 00:00:00\nThis audio image requires 00:04:00 of Free Space!");
    click("cmdWriteDisc");
}

TEST_F(TheDevices, OfferTheSpeedsOfTheLoadedDisc)
{
    load();
    EXPECT_EQ(itemsOf("cboWriteSpeed"), QStringList({"4.0x", "8.0x", ".5x"}));
    EXPECT_EQ(combo("cboWriteSpeed").listIndex(), 0);
}

TEST_F(TheDevices, WithoutSpeedsOfferTheHighest)
{
    load();
    {
        const InSequence order;
        expectImageIsPicked();
        pickImage();
    }
    EXPECT_EQ(itemsOf("cboWriteSpeed"), QStringList("MAX"));
    EXPECT_EQ(combo("cboWriteSpeed").listIndex(), 0);

    const InSequence order;
    EXPECT_CALL(image, RefreshDisc(0));
    EXPECT_CALL(image, GetDiscInfo).WillOnce(Return(DiscInfo(true, true, 0)));
    EXPECT_CALL(image, GetFreeSpace(0)).WillOnce(Return(10));
    EXPECT_CALL(project, GetRequiredSpace).WillOnce(Return(10));
    EXPECT_CALL(project, SetProjectKind(1));
    EXPECT_CALL(project, SetWriteSpeed(0));
    EXPECT_CALL(project, SetCacheFiles(true));
    EXPECT_CALL(project, SetTestMode(false));
    EXPECT_CALL(project, SetBurnProof(false));
    EXPECT_CALL(project, SetWriteMode(2));
    EXPECT_CALL(project, StartWrite(&image, ::testing::_)).WillOnce(::testing::SetArgReferee<1>(true));
    click("cmdWriteDisc");
}

TEST_F(TheDevices, SetTheProtectionAgainstUnderrunsToWhatTheyHaveWhateverTheUserChose)
{
    load();
    EXPECT_TRUE(isEnabled("chkUseBurnProof"));
    EXPECT_TRUE(box("chkUseBurnProof").isChecked());
    const InSequence order;
    expectImageIsPicked();
    pickImage();
    EXPECT_FALSE(isEnabled("chkUseBurnProof"));
    EXPECT_FALSE(box("chkUseBurnProof").isChecked());

    expectDriveIsPicked();
    combo("cboDevices").setListIndex(0);
    box("chkUseBurnProof").setChecked(false);
    expectDriveIsPicked();
    emit combo("cboDevices").activated(0);  // the user picks it once more
    EXPECT_TRUE(box("chkUseBurnProof").isChecked());
}

TEST_F(TheDevices, TellAfterAChangeWhatTheirDiscHasRoomFor)
{
    load();
    EXPECT_EQ(labelOf("lblDiscInfo1"), "00:00:00 of 79:58:00 Used");
    const InSequence order;
    EXPECT_CALL(*engine, GetDevice(1)).WillOnce(Return(&image));
    EXPECT_CALL(image, RefreshDisc(0));
    EXPECT_CALL(image, GetWriteSpeedCount).WillOnce(Return(0));
    EXPECT_CALL(image, GetCapability(57)).WillOnce(Return(false));
    expectDiscInfo(image, 2, 750, 4500);
    pickImage();
    EXPECT_EQ(labelOf("lblDiscInfo0"), "2 Audio Tracks");
    EXPECT_EQ(labelOf("lblDiscInfo1"), "00:10:00 of 01:00:00 Used");
}

TEST_F(TheDevices, KeepTheOtherOptionsWhenTheyChange)
{
    load();
    box("chkCacheFiles").setChecked(false);
    box("chkDiscAtOnce").setChecked(true);
    const InSequence order;
    expectImageIsPicked();
    pickImage();
    EXPECT_FALSE(box("chkCacheFiles").isChecked());
    EXPECT_TRUE(box("chkDiscAtOnce").isChecked());
    EXPECT_FALSE(box("chkTestWrite").isChecked());
}

}  // namespace
