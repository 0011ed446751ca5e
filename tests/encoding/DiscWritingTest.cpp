#include "encoding/AudioCDBurnTest.h"

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

const QString insertBlank = "Please insert a blank disc before continuing!";
const QString doesNotFit =
    "Free Space on the loaded disc is 00:00:09\nThis audio image requires 00:00:10 of Free Space!";

class AWrite : public AudioCDBurn
{
protected:
    void SetUp() override { load(); }

    /// With a track in the list.
    void writeATrack()
    {
        list({{"/music/one.wav"}});
        startWriting();
    }

    void expectEndOfWrite(bool test)
    {
        expectBox("Writing is complete!");
        EXPECT_CALL(project, GetTestMode).WillOnce(Return(test));
        if (!test)
            EXPECT_CALL(drive, ReleaseDisc(false));
        expectIdleAgain();
        EXPECT_CALL(project, ClearTracks);
    }
};

TEST_F(AWrite, StartsWithWhatIsSet)
{
    combo("cboWriteSpeed").setListIndex(1);
    box("chkCacheFiles").setChecked(false);
    box("chkTestWrite").setChecked(true);
    box("chkUseBurnProof").setChecked(false);
    box("chkDiscAtOnce").setChecked(true);
    const InSequence order;
    expectBlankDisc();
    expectSpaces(1000, 10);
    EXPECT_CALL(project, SetProjectKind(1));
    EXPECT_CALL(project, SetWriteSpeed(1411));
    EXPECT_CALL(project, SetCacheFiles(false));
    EXPECT_CALL(project, SetTestMode(true));
    EXPECT_CALL(project, SetBurnProof(false));
    EXPECT_CALL(project, SetWriteMode(232));
    expectStart(true);
    click("cmdWriteDisc");
    expectWriting();
}

TEST_F(AWrite, StartsWithTheUsualSettings)
{
    expectIdle();
    startWriting();
    expectWriting();
    EXPECT_EQ(status(), "Status : Idle");
}

TEST_F(AWrite, ThatCannotBeStartedLeavesTheWindowAsItWas)
{
    const InSequence order;
    expectBlankDisc();
    expectSpaces(1000, 10);
    expectUsualSettings();
    expectStart(false);
    expectBox("Disc Write could not be started.", MsgBox::Look::Critical);
    click("cmdWriteDisc");
    expectIdle();
    EXPECT_EQ(status(), "Status : Idle");
}

TEST_F(AWrite, FitsWhereItNeedsAllThatIsFree)
{
    const InSequence order;
    expectBlankDisc();
    expectSpaces(10, 10);
    expectUsualSettings();
    expectStart(true);
    click("cmdWriteDisc");
    expectWriting();
}

TEST_F(AWrite, ThatDoesNotFitIsNotStarted)
{
    const InSequence order;
    expectBlankDisc();
    expectSpaces(9, 10);
    expectBox(doesNotFit);
    click("cmdWriteDisc");
    expectIdle();
}

struct DiscRow
{
    const char* name;
    DiscInfo disc;
};

class AWriteToADiscThatIsNotBlank : public AWrite, public ::testing::WithParamInterface<DiscRow>
{
};

TEST_P(AWriteToADiscThatIsNotBlank, IsWarnedOfAndGoesOn)
{
    const InSequence order;
    EXPECT_CALL(drive, RefreshDisc(0));
    EXPECT_CALL(drive, GetDiscInfo).WillOnce(Return(GetParam().disc));
    expectBox(insertBlank);
    expectSpaces(1000, 10);
    expectUsualSettings();
    expectStart(true);
    click("cmdWriteDisc");
    expectWriting();
}

TEST_P(AWriteToADiscThatIsNotBlank, CanAlsoNotFit)
{
    const InSequence order;
    EXPECT_CALL(drive, RefreshDisc(0));
    EXPECT_CALL(drive, GetDiscInfo).WillOnce(Return(GetParam().disc));
    expectBox(insertBlank);
    expectSpaces(9, 10);
    expectBox(doesNotFit);
    click("cmdWriteDisc");
    expectIdle();
}

INSTANTIATE_TEST_SUITE_P(Discs, AWriteToADiscThatIsNotBlank,
                         ::testing::Values(DiscRow{"Used", DiscInfo(true, true, 1)},
                                           DiscRow{"NotBlank", DiscInfo(true, false, 0)},
                                           DiscRow{"Missing", DiscInfo(false, true, 0)}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AWrite, IsAskedToEndByCancel)
{
    startWriting();
    EXPECT_CALL(project, AbortWrite);
    click("cmdCancel");
    EXPECT_EQ(status(), "Aborting Write...Please Wait!");
    expectWriting();
}

struct StageRow
{
    const char* name;
    int stage;
    const char* status;
    bool track;
    bool total;
};

class AStageOfAWrite : public AWrite, public ::testing::WithParamInterface<StageRow>
{
};

TEST_P(AStageOfAWrite, ShowsWhatItHasToTell)
{
    startWriting();
    tell(DiscStage::Writing, 7, 3, 11);
    tell(DiscStage{GetParam().stage}, 40, 5, 60);
    EXPECT_EQ(status(), GetParam().status);
    EXPECT_EQ(valueOf("prgTrackProgress"), GetParam().track ? 60 : 11);
    EXPECT_EQ(valueOf("prgTotalProgress"), GetParam().total ? 40 : 7);
    expectWriting();
}

INSTANTIATE_TEST_SUITE_P(Stages, AStageOfAWrite,
                         ::testing::Values(StageRow{"Preparing", 0, "Preparing Image....", false, false},
                                           StageRow{"CachingImage", 1, "Caching Image... Track# 05", true, true},
                                           StageRow{"Caching", 2, "Caching... Track# 05", true, false},
                                           StageRow{"Writing", 3, "Writing Image... Track# 05", true, true},
                                           StageRow{"ClosingTrack", 4, "Closing Track....", false, false},
                                           StageRow{"LeadIn", 5, "Writing Lead-in....", true, false},
                                           StageRow{"LeadOut", 6, "Writing Lead-out....", true, false},
                                           StageRow{"Seven", 7, "Writing Image... Track# 03", false, false},
                                           StageRow{"UpdatingVolume", 8, "Updating Volume....", false, false},
                                           StageRow{"Twelve", 12, "Writing Image... Track# 03", false, false},
                                           StageRow{"FarBeyond", 1000, "Writing Image... Track# 03", false, false},
                                           StageRow{"BelowAll", -1, "Writing Image... Track# 03", false, false}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AWrite, ThatIsCompletedHandsTheDiscOverAndEmptiesTheList)
{
    writeATrack();
    tell(DiscStage::Writing, 90, 1, 80);
    EXPECT_EQ(labelOf("lblDiscInfo0"), "1 Audio Tracks");

    const InSequence order;
    EXPECT_CALL(msgBox, show(QString("Writing is complete!"), MsgBox::Look::Information, QString()))
        .WillOnce([this] {
            EXPECT_EQ(status(), "Write Completed!");
            EXPECT_EQ(valueOf("prgTotalProgress"), 90);
            expectWriting();
        });
    EXPECT_CALL(project, GetTestMode).WillOnce(Return(false));
    EXPECT_CALL(drive, ReleaseDisc(false));
    expectIdleAgain();
    EXPECT_CALL(project, ClearTracks).WillOnce([this] { EXPECT_EQ(rows(), QStringList()); });
    tell(DiscStage::Completed, 100, 0, 100);
    expectIdle();
    EXPECT_EQ(status(), "Status : Idle");
    EXPECT_EQ(valueOf("prgTrackProgress"), 0);
    EXPECT_EQ(valueOf("prgTotalProgress"), 0);
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(labelOf("lblDiscInfo0"), "1 Audio Tracks");  // until the next change
}

TEST_F(AWrite, ThatWasATestEmptiesTheListAndKeepsTheDisc)
{
    writeATrack();
    const InSequence order;
    expectEndOfWrite(true);
    tell(DiscStage::Completed, 100, 0, 100);
    expectIdle();
    EXPECT_EQ(rows(), QStringList());
}

TEST_F(AWrite, ThatIsCancelledKeepsTheTracksAndTheBars)
{
    writeATrack();
    tell(DiscStage::Writing, 40, 1, 60);
    const InSequence order;
    EXPECT_CALL(msgBox, show(QString("Write Cancelled!"), MsgBox::Look::Information, QString())).WillOnce([this] {
        EXPECT_EQ(status(), "Write Cancelled....");
        expectWriting();
    });
    expectIdleAgain();
    tell(DiscStage::Cancelled);
    expectIdle();
    EXPECT_EQ(status(), "Write Cancelled....");
    EXPECT_EQ(rows().size(), 1);
    EXPECT_EQ(valueOf("prgTrackProgress"), 60);
    EXPECT_EQ(valueOf("prgTotalProgress"), 40);
}

TEST_F(AWrite, ThatFailsKeepsTheTracksAndTellsWhy)
{
    writeATrack();
    tell(DiscStage::Writing, 40, 1, 60);
    expectIdleAgain();
    tell(DiscStage::Failed);
    expectIdle();
    EXPECT_EQ(status(), "Write Error!");
    EXPECT_EQ(rows().size(), 1);
    EXPECT_EQ(valueOf("prgTotalProgress"), 40);

    DiscWriteError error;
    error.kind = DiscWriteError::sourceFile;
    error.fileError = {2, "No such file or directory", "/music/one.wav"};
    expectBox("Source File Error: (2)   No such file or directory\n'/music/one.wav'", MsgBox::Look::Critical);
    emit engine->WriteError(error);
    EXPECT_EQ(status(), "Write Error!");
}

TEST_F(AWrite, GoesOnBehindAWarningOfAFile)
{
    startWriting();
    bool goOn = false;
    emit engine->FileWarning({"/music/one.wav", "cut short"}, goOn);
    EXPECT_TRUE(goOn);
    EXPECT_EQ(status(), "File Warning:/music/one.wav");
    expectWriting();
}

TEST_F(AWrite, CanBeTriedAgainAfterOneThatFailed)
{
    writeATrack();
    expectIdleAgain();
    tell(DiscStage::Failed);
    ::testing::Mock::VerifyAndClearExpectations(&drive);
    startWriting();
    expectWriting();
}

// --- A message box turns the event loop.

TEST_F(AWrite, IsIdleInTheEndWhateverIsToldWhileTheBoxOfItsEndIsOpen)
{
    writeATrack();
    const InSequence order;
    EXPECT_CALL(msgBox, show(QString("Writing is complete!"), _, _)).WillOnce([this] {
        bool goOn = false;
        emit engine->FileWarning({"/music/one.wav", ""}, goOn);
        EXPECT_TRUE(goOn);
        tell(DiscStage::Writing, 55, 1, 66);
        tell(DiscStage::UpdatingVolume);
        expectWriting();
    });
    EXPECT_CALL(project, GetTestMode).WillOnce(Return(false));
    EXPECT_CALL(drive, ReleaseDisc(false));
    expectIdleAgain();
    EXPECT_CALL(project, ClearTracks);
    tell(DiscStage::Completed);
    expectIdle();
    EXPECT_EQ(status(), "Status : Idle");
    EXPECT_EQ(valueOf("prgTrackProgress"), 0);
    EXPECT_EQ(valueOf("prgTotalProgress"), 0);
}

TEST_F(AWrite, StaysIdleWhereItsErrorComesWhileABoxIsOpen)
{
    writeATrack();
    const InSequence order;
    EXPECT_CALL(msgBox, show(QString("Write Cancelled!"), _, _)).WillOnce([this] {
        tell(DiscStage::Failed);
        emit engine->WriteError({});
    });
    expectIdleAgain();
    expectBox("Write Error: (0)   ", MsgBox::Look::Critical);
    expectIdleAgain();
    tell(DiscStage::Cancelled);
    expectIdle();
    EXPECT_EQ(rows().size(), 1);
}

TEST_F(AWrite, CanBeginWhileAnOlderBoxIsOpen)
{
    list({{"/music/one.wav"}});
    EXPECT_CALL(msgBox, show(QString("No item is selected."), _, _)).WillOnce([this] { startWriting(); });
    click("cmdMoveUp");
    expectWriting();
    tell(DiscStage::Writing, 1, 1, 2);
    EXPECT_EQ(status(), "Writing Image... Track# 01");
}

TEST_F(AWrite, ThatBeganUnderTheWarningOfADiscIsNotStartedTwice)
{
    const InSequence order;
    EXPECT_CALL(drive, RefreshDisc(0));
    EXPECT_CALL(drive, GetDiscInfo).WillOnce(Return(DiscInfo(true, false, 5)));
    EXPECT_CALL(msgBox, show(insertBlank, _, _)).WillOnce([this] { click("cmdWriteDisc"); });
    expectBlankDisc();
    expectSpaces(1000, 10);
    expectUsualSettings();
    expectStart(true);
    expectSpaces(990, 10);
    click("cmdWriteDisc");
    expectWriting();
}

TEST_F(AWrite, IsNotStartedByAWindowThatWasClosedUnderTheWarningOfADisc)
{
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    const InSequence order;
    EXPECT_CALL(drive, RefreshDisc(0));
    EXPECT_CALL(drive, GetDiscInfo).WillOnce(Return(DiscInfo()));
    EXPECT_CALL(msgBox, show(insertBlank, _, _)).WillOnce([this] {
        EXPECT_TRUE(window->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(alive.isNull());
    });
    click("cmdWriteDisc");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

}  // namespace
