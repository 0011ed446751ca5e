#include "vocalremover/VocalRemoverTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

/// A preview of a source.
class PlayPreviewOfTheRemover : public VocalRemoverWindow
{
protected:
    void SetUp() override { chooseSource(); }
};

TEST_F(PlayPreviewOfTheRemover, RemovesTheVocalsOfTheStretchAndPlaysTheResult)
{
    const InSequence order;
    expectPreview();
    click("cmdConvertPlayPreview");
    EXPECT_EQ(status(), "Status : Playing modified audio");
    EXPECT_EQ(percentDone(), 0);
    emit player->SoundPlaying(1);
    EXPECT_EQ(status(), "Status : Playing modified audio ");
}

TEST_F(PlayPreviewOfTheRemover, BeginsAtThePositionAndIsAsLongAsTheLabelSays)
{
    put("sldPreviewPosition", 42);
    click("cmdPreviewDurationUp");
    const InSequence order;
    expectLoadedSource();
    expectExport(42000, 58000);
    expectExtendedRemoval();
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, KnowsNeitherThePanNorTheGain)
{
    put("sldVocalPan", -70);
    put("sldGain", 10);
    put("sldCutOffLow", 90);
    put("sldCutOffHigh", 9000);
    const InSequence order;
    expectLoadedSource();
    expectExport(0, 15000);
    expectSetUp(*extended, 90, 9000);
    EXPECT_CALL(*extended, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, TakesTheStretchWhenTheSourceIsLoadedAndTheCutOffsWhenItIsExported)
{
    const InSequence order;
    EXPECT_CALL(*player, CloseSound(0));
    EXPECT_CALL(*player, CloseSound(1));
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(3));
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce([this] {
        put("sldPreviewPosition", 8);
        return 0;
    });
    expectExport(8000, 23000, [this] {
        put("sldPreviewPosition", 9);
        put("sldCutOffHigh", 7777);
    });
    expectSetUp(*extended, 200, 7777);
    EXPECT_CALL(*extended, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, StopsASourceThatPlaysOnAfterItWasClosed)
{
    const InSequence order;
    EXPECT_CALL(*player, CloseSound(0));
    EXPECT_CALL(*player, CloseSound(1));
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(1));
    EXPECT_CALL(*player, StopSound(0));
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(Return(0));
    expectExport(0, 15000);
    expectExtendedRemoval();
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, EmptiesTheBarBehindTheRemoval)
{
    const InSequence order;
    expectLoadedSource();
    expectExport(0, 15000);
    expectExtendedRemoval();
    EXPECT_CALL(*player, LoadSoundForExport(1, home.out())).WillOnce([this] {
        EXPECT_EQ(percentDone(), 0);
        EXPECT_EQ(status(), "Status : Processing : 50%");
        return 0;
    });
    EXPECT_CALL(*player, PlaySound(1));
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, DoesNothingForASourceThatIsNotThereAnyMore)
{
    QFile::remove(source);
    click("cmdConvertPlayPreview");
    EXPECT_EQ(status(), "Status: Idle");
}

TEST_F(PlayPreviewOfTheRemover, CanBeGivenAgain)
{
    const InSequence order;
    expectPreview();
    click("cmdConvertPlayPreview");
    expectPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, IsAtThePlaceOfTheLastRun)
{
    put("sldVocalPan", 30);
    const InSequence order;
    expectWholeExport();
    expectSetUp(*extended);
    EXPECT_CALL(*extended, VocalPan(30));
    EXPECT_CALL(*extended, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
    put("sldVocalPan", 80);
    expectPreview();  // without a pan
    click("cmdConvertPlayPreview");
}

TEST_F(PlayPreviewOfTheRemover, DoesNotKeepARunFromBeingStarted)
{
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, ExportSoundRange).WillOnce(Return(1));
    EXPECT_CALL(*player, LastError).WillOnce(Return(-8));
    EXPECT_CALL(msgBox, show);
    click("cmdConvertPlayPreview");
    expectIdle();
}

TEST_F(PlayPreviewOfTheRemover, TellsWhyTheSourceCannotBeLoaded)
{
    const InSequence order;
    expectLoadedSource(-6);
    EXPECT_CALL(*player, LastError).WillOnce(Return(-6));
    expectFailure("File could not be loaded.\nInvalid sound file");
    click("cmdConvertPlayPreview");
    EXPECT_EQ(status(), "Status: Idle");
}

TEST_F(PlayPreviewOfTheRemover, TellsWhyTheStretchCannotBeExported)
{
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, ExportSoundRange(0, home.in(), 0, 15000)).WillOnce(Return(-80));
    EXPECT_CALL(*player, LastError).WillOnce(Return(-80));
    expectFailure("File could not be exported\nInvalid position");
    click("cmdConvertPlayPreview");
    EXPECT_EQ(status(), "Status: Idle");
}

TEST_F(PlayPreviewOfTheRemover, TellsWhyTheResultCannotBeLoaded)
{
    const InSequence order;
    expectLoadedSource();
    expectExport(0, 15000);
    expectExtendedRemoval();
    EXPECT_CALL(*player, LoadSoundForExport(1, home.out())).WillOnce(Return(-6));
    EXPECT_CALL(*player, LastError).WillOnce(Return(-6));
    expectFailure("Result could not be loaded.\nInvalid sound file");
    click("cmdConvertPlayPreview");
    EXPECT_EQ(status(), "Status : Processing : 50%");
}

TEST_F(PlayPreviewOfTheRemover, IsStoppedWithTheSource)
{
    const InSequence order;
    EXPECT_CALL(*player, StopSound(0));
    EXPECT_CALL(*player, StopSound(1));
    click("cmdConvertStopPreview");
}

/// The stretch of the source as it is.
class PlaySourceOfTheRemover : public PlayPreviewOfTheRemover
{
};

TEST_F(PlaySourceOfTheRemover, PlaysTheStretch)
{
    put("sldPreviewPosition", 30);
    click("cmdPreviewDurationDown");
    const InSequence order;
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(Return(0));
    EXPECT_CALL(*player, GetPlayerStatus(1)).WillOnce(Return(3));
    EXPECT_CALL(*player, PlaySoundSegment(0, 30000, 44000)).WillOnce(Return(0));
    click("cmdPlayOriginal");
}

TEST_F(PlaySourceOfTheRemover, StopsTheResultIfThatPlays)
{
    const InSequence order;
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(Return(0));
    EXPECT_CALL(*player, GetPlayerStatus(1)).WillOnce(Return(1));
    EXPECT_CALL(*player, StopSound(1));
    EXPECT_CALL(*player, PlaySoundSegment(0, 0, 15000)).WillOnce(Return(0));
    click("cmdPlayOriginal");
}

TEST_F(PlaySourceOfTheRemover, PassesASourceThatIsNotThereToThePlayerAndLooksAtNoResult)
{
    QFile::remove(source);
    const InSequence order;
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(Return(-6));
    EXPECT_CALL(*player, GetPlayerStatus(1)).WillOnce(Return(0));
    EXPECT_CALL(*player, PlaySoundSegment(0, 0, 15000)).WillOnce(Return(-20));
    click("cmdPlayOriginal");
}

}  // namespace
