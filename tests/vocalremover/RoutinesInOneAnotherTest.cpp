#include "vocalremover/VocalRemoverTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

/// A run or a preview started in the middle of another one. Nothing prevents it but that no run starts within a
/// run: they share the files, the player and the events.
class RoutinesInOneAnother : public VocalRemoverWindow
{
protected:
    void SetUp() override
    {
        chooseSource();
        mostAtWork = 2;
    }

    const Event preview = [this] { click("cmdConvertPlayPreview"); };
    const Event run = [this] { click("cmdProcess"); };
};

TEST_F(RoutinesInOneAnother, LetASecondPreviewPlayBeforeTheFirstGoesOn)
{
    const InSequence order;
    expectLoadedSource();
    expectExport(0, 15000, preview);
    expectPreview();
    expectExtendedRemoval();  // the report of the first export comes behind the second preview
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

TEST_F(RoutinesInOneAnother, LetAPreviewPlayBeforeTheRunGoesOnFromItsExport)
{
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
    expectExport(0, 200000, preview);
    expectPreview();
    EXPECT_CALL(*player, CloseSound(0));
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(RoutinesInOneAnother, LetAPreviewPlayInTheMiddleOfTheRemovalOfARun)
{
    const InSequence order;
    expectWholeExport();
    expectRemoval(preview);
    expectPreview();
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(RoutinesInOneAnother, LetOneRemoverWorkInTheMiddleOfItself)
{
    put("sldVocalPan", 10);
    const InSequence order;
    expectWholeExport();
    expectSetUp(*extended);
    EXPECT_CALL(*extended, VocalPan(10));
    EXPECT_CALL(*extended, RemoveVocals).WillOnce([this] { return removal(*extended, preview); });
    expectPreview();
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(RoutinesInOneAnother, LetAPreviewPlayWhileTheEditorWorks)
{
    put("sldGain", 50);
    const InSequence order;
    expectWholeExport();
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult(preview);
    expectPreview();
    expectGain(50.F, preview);
    expectPreview();
    expectExportedResult(outputOfSource(), preview);
    expectPreview();
    expectSuccess();
    click("cmdProcess");
}

TEST_F(RoutinesInOneAnother, LetARunGoToItsEndBeforeThePreviewGoesOn)
{
    const InSequence order;
    expectLoadedSource();
    expectExport(0, 15000, run);
    expectRun();
    expectExtendedRemoval();
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

// The player reports the later export only. The report of any other sound then leads the outer one on.
TEST_F(RoutinesInOneAnother, LeaveTheOuterOneWaitingForAnotherSuccessWhereTheInnerOneTookIt)
{
    bool innerEnded = false;
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, ExportSoundRange(0, home.in(), 0, 15000)).WillOnce([this, &innerEnded] {
        QTimer::singleShot(0, window, [this, &innerEnded] {
            click("cmdConvertPlayPreview");
            innerEnded = true;
            QTimer::singleShot(0, window, [this] { emit player->ConversionDone(1, 1); });
        });
        return 0;
    });
    expectPreview();
    EXPECT_CALL(*extended, LowCutOff).WillOnce([&] { EXPECT_TRUE(innerEnded); });
    EXPECT_CALL(*extended, HighCutOff);
    EXPECT_CALL(*extended, InputFile);
    EXPECT_CALL(*extended, OutputFile);
    EXPECT_CALL(*extended, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
    expectPlayedPreview();
    click("cmdConvertPlayPreview");
}

}  // namespace
