#include "vocalremover/VocalRemoverTest.h"

namespace {

class StatusOfTheVocalRemover : public VocalRemoverWindow
{
protected:
    /// Whether the event loop turns while @p event is reported.
    template <typename Report>
    bool turnsTheEventLoop(Report report)
    {
        bool turned = false;
        QTimer::singleShot(0, window, [&turned] { turned = true; });
        report();
        const bool meanwhile = turned;
        QCoreApplication::processEvents();
        EXPECT_TRUE(turned);
        return meanwhile;
    }

    void expectTold(const char* text, int percent) const
    {
        EXPECT_EQ(status(), text);
        EXPECT_EQ(percentDone(), percent);
    }
};

TEST_F(StatusOfTheVocalRemover, IsIdleAtFirst)
{
    expectTold("Status: Idle", 0);
}

TEST_F(StatusOfTheVocalRemover, TellsOfTheLoadingOfAnyPlayer)
{
    EXPECT_FALSE(turnsTheEventLoop([this] { emit player->ConversionPercent(0, 7); }));
    expectTold("Status : Loading source audio: 7%", 7);
    emit player->ConversionPercent(1, 100);
    expectTold("Status : Loading source audio: 100%", 100);
}

TEST_F(StatusOfTheVocalRemover, TellsOfBothRemoversAndTurnsTheEventLoopForEach)
{
    EXPECT_TRUE(turnsTheEventLoop([this] { emit remover->ProcessPercent(0); }));
    expectTold("Status : Processing : 0%", 0);
    EXPECT_TRUE(turnsTheEventLoop([this] { emit extended->ProcessPercent(63); }));
    expectTold("Status : Processing : 63%", 63);
}

TEST_F(StatusOfTheVocalRemover, TellsOfTheEditorsJobs)
{
    EXPECT_FALSE(turnsTheEventLoop([this] { emit editor->LoadPercent(12); }));
    expectTold("Status : Preparing export : 12%", 12);
    EXPECT_FALSE(turnsTheEventLoop([this] { emit editor->EffectPercent(13, 34); }));
    expectTold("Status : Applying gain : 34%", 34);
    emit editor->EffectPercent(10, 35);
    expectTold("Status : Applying gain : 35%", 35);
    EXPECT_FALSE(turnsTheEventLoop([this] { emit editor->ExportPercent(56); }));
    expectTold("Status : Exporting : 56%", 56);
}

TEST_F(StatusOfTheVocalRemover, TellsWhichPlayerPlays)
{
    emit player->ConversionPercent(0, 44);
    emit player->SoundPlaying(0);
    expectTold("Status : Playing source audio ", 44);
    emit player->SoundPlaying(1);
    expectTold("Status : Playing modified audio ", 44);
    emit player->SoundPlaying(2);
    expectTold("Status : Playing modified audio ", 44);
}

TEST_F(StatusOfTheVocalRemover, IsIdleWhenAPlayerHasComeToItsEndOrWasStopped)
{
    emit player->SoundPlaying(0);
    emit player->SoundFinished(0);
    EXPECT_EQ(status(), "Status : Idle");
    emit player->SoundPlaying(1);
    emit player->SoundStopped(1);
    EXPECT_EQ(status(), "Status : Idle");
}

TEST_F(StatusOfTheVocalRemover, IsIdleWithoutABlankBeforeItsColonAfterARun)
{
    chooseSource();
    const ::testing::InSequence order;
    expectWholeExport();
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    EXPECT_CALL(*editor, CloseSound);
    EXPECT_CALL(msgBox, show).WillOnce([this] { emit editor->ExportPercent(100); });
    click("cmdProcess");
    expectTold("Status: Idle", 0);
}

}  // namespace
