#include "vocalremover/VocalRemoverTest.h"

using ::testing::InSequence;
using ::testing::Return;

namespace {

/// A run with a source.
class ProcessAudioRun : public VocalRemoverWindow
{
protected:
    void SetUp() override { chooseSource(); }

    void expectBehindRemoval()
    {
        expectForgottenFiles();
        expectLoadedResult();
        expectExportedResult(outputOfSource());
        expectSuccess();
    }
};

TEST_F(ProcessAudioRun, GoesFromThePlayerOverTheRemoverToTheEditor)
{
    const InSequence order;
    expectRun();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, TakesTheRemoverForTheCentreOnlyWhereThePanIsNought)
{
    for (const int pan : {1, -1, -100, 100}) {
        put("sldVocalPan", pan);
        const InSequence order;
        expectWholeExport();
        expectSetUp(*extended);
        EXPECT_CALL(*extended, VocalPan(pan));
        EXPECT_CALL(*extended, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
        expectBehindRemoval();
        click("cmdProcess");
    }
    put("sldVocalPan", 0);
    const InSequence order;
    expectRun();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, PassesTheCutOffsUnscaled)
{
    put("sldCutOffLow", 51);
    put("sldCutOffHigh", 15999);
    const InSequence order;
    expectWholeExport();
    expectSetUp(*remover, 51, 15999);
    EXPECT_CALL(*remover, RemoveVocals).WillOnce(Return(VocalRemoval::Done));
    expectBehindRemoval();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, DoesNotLookAtTheResultOfTheRemover)
{
    const InSequence order;
    expectWholeExport();
    expectSetUp(*remover);
    EXPECT_CALL(*remover, RemoveVocals).WillOnce(Return(VocalRemoval::NotStereo));
    expectBehindRemoval();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, EmptiesTheBarBehindTheRemoval)
{
    const InSequence order;
    expectWholeExport();
    expectRemoval();
    EXPECT_CALL(*remover, InputFile(QString())).WillOnce([this] {
        EXPECT_EQ(percentDone(), 0);
        EXPECT_EQ(status(), "Status : Processing : 50%");
    });
    EXPECT_CALL(*remover, OutputFile(QString()));
    expectLoadedResult();
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, AppliesAnyGainButAHundred)
{
    for (const int gain : {0, 99, 101, 200}) {
        put("sldGain", gain);
        const InSequence order;
        expectWholeExport();
        expectRemoval();
        expectForgottenFiles();
        expectLoadedResult();
        expectGain(static_cast<float>(gain));
        expectExportedResult(outputOfSource());
        expectSuccess();
        click("cmdProcess");
    }
}

TEST_F(ProcessAudioRun, GoesOnWhereTheGainIsRefused)
{
    put("sldGain", 50);
    const InSequence order;
    expectWholeExport();
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult();
    expectGain(50.F, {}, -111);
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, StopsASourceThatPlaysOnAfterItWasClosed)
{
    const InSequence order;
    EXPECT_CALL(*player, CloseSound(0));
    EXPECT_CALL(*player, CloseSound(1));
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(1));
    EXPECT_CALL(*player, StopSound(0));
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(Return(0));
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(31));
    expectExport(0, 31);
    EXPECT_CALL(*player, CloseSound(0));
    expectRemoval();
    expectBehindRemoval();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, ReadsEachValueWhenItsStepComes)
{
    const QString later = home.recordings() + "/later.wav";
    const InSequence order;
    expectWholeExport([this] {
        put("sldCutOffLow", 60);
        put("sldCutOffHigh", 7000);
        put("sldVocalPan", 25);
    });
    expectSetUp(*extended, 60, 7000);
    EXPECT_CALL(*extended, VocalPan(25));
    EXPECT_CALL(*extended, RemoveVocals).WillOnce([this] {
        put("sldVocalPan", 0);  // the remover has been picked by now
        put("sldGain", 100);
        return VocalRemoval::Done;
    });
    expectForgottenFiles();
    expectLoadedResult([this] { put("sldGain", 30); });
    expectGain(30.F, [this, later] { control<QLineEdit>(*window, "txtOutputAudio").setText(later); });
    expectExportedResult(later);
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, LooksForItsFilesAnewAtEachStart)
{
    {
        const InSequence order;
        expectRun();
        click("cmdProcess");
    }
    const HomeOfItsOwn another;
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
    EXPECT_CALL(*player, ExportSoundRange(0, another.in(), 0, 200000)).WillOnce(Return(-8));
    EXPECT_CALL(*player, LastError).WillOnce(Return(-8));
    EXPECT_CALL(msgBox, show);
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, LeavesTheTemporaryFilesWhereTheyAre)
{
    HomeOfItsOwn::write(home.in());
    HomeOfItsOwn::write(home.out());
    const InSequence order;
    expectRun();
    click("cmdProcess");
    EXPECT_TRUE(QFile::exists(home.in()));
    EXPECT_TRUE(QFile::exists(home.out()));
}

TEST_F(ProcessAudioRun, DoesNothingForASourceThatIsNotThereAnyMore)
{
    QFile::remove(source);
    click("cmdProcess");
    source = makeSource();
    expectIdle();
}

TEST_F(ProcessAudioRun, DoesNothingForAFolder)
{
    control<QLineEdit>(*window, "txtInputAudio").setText(home.recordings());
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, RefusesAnotherOneWhileItIsUnderWay)
{
    const auto again = [this] { click("cmdProcess"); };
    put("sldGain", 70);
    const InSequence order;
    expectWholeExport(again);
    expectRemoval(again);
    expectForgottenFiles();
    expectLoadedResult(again);
    expectGain(70.F, again);
    expectExportedResult(outputOfSource(), again);
    EXPECT_CALL(*editor, CloseSound);
    EXPECT_CALL(msgBox, show).WillOnce(again);
    click("cmdProcess");
    put("sldGain", 100);
    expectIdle();
}

TEST_F(ProcessAudioRun, DisablesNothing)
{
    const auto look = [this] {
        for (const char* name :
             {"cmdInput", "cmdOutput", "cmdProcess", "cmdHelp", "sldCutOffLow", "sldCutOffHigh", "sldGain",
              "sldVocalPan", "cmdConvertPlayPreview", "cmdPlayOriginal", "cmdConvertStopPreview"})
            EXPECT_TRUE(isEnabled(name)) << name;
    };
    const InSequence order;
    expectWholeExport(look);
    expectRemoval(look);
    expectForgottenFiles();
    expectLoadedResult(look);
    expectExportedResult(outputOfSource(), look);
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, ExportsInTheFormatThatWasSelectedLast)
{
    const InSequence order;
    expectLoadedSource();
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
    expectExport(0, 200000, [this] { click("cmdOutput"); });
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answering("/out/mix.wav")));
    expectWav();
    EXPECT_CALL(*player, CloseSound(0));
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult();
    expectExportedResult("/out/mixNoVocal.wav");
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, WaitsForASuccessOfTheExport)
{
    const InSequence order;
    expectWholeExport([this] {
        emit player->ConversionDone(0, 0);
        emit player->ConversionDone(0, -1);
    });
    expectRemoval();
    expectBehindRemoval();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, IsNotLedOnByTheReportOfASoundThatWasLoadedBefore)
{
    emit player->ConversionDone(0, 1);
    emit editor->LoadDone(0);
    emit editor->EffectDone(13, 0);
    emit editor->ExportDone(0);
    put("sldGain", 90);
    const InSequence order;
    expectWholeExport();
    expectRemoval();
    expectForgottenFiles();
    expectLoadedResult();
    expectGain(90.F);
    expectExportedResult(outputOfSource());
    expectSuccess();
    click("cmdProcess");
}

TEST_F(ProcessAudioRun, TakesAnyResultOfTheEditorsJobsForTheirEnd)
{
    put("sldGain", 90);
    const InSequence order;
    expectWholeExport();
    expectRemoval();
    expectForgottenFiles();
    EXPECT_CALL(*editor, LoadSound).WillOnce([this] { return soon({}, [this] { emit editor->LoadDone(-6); }); });
    EXPECT_CALL(effects, ApplyGain).WillOnce([this] {
        return soon({}, [this] { emit editor->EffectDone(13, -100); });
    });
    EXPECT_CALL(*editor, ExportToFile).WillOnce([this] {
        return soon({}, [this] { emit editor->ExportDone(-8); });
    });
    expectSuccess();
    click("cmdProcess");
}

/// A player that keeps its contract: the report of a loading comes later, unless an export replaces it.
TEST_F(ProcessAudioRun, WaitsForTheExportAndNotForTheLoadingThatThePlayerWouldReport)
{
    QTimer report;
    report.setSingleShot(true);
    QStringList reported;
    QString job;
    QObject::connect(&report, &QTimer::timeout, [&] {
        reported << job;
        emit player->ConversionPercent(0, 100);
        emit player->ConversionDone(0, 1);
    });
    const auto begin = [&](const QString& what) {
        job = what;
        report.start(0);
        return 0;
    };
    const InSequence order;
    EXPECT_CALL(*player, CloseSound(0));
    EXPECT_CALL(*player, CloseSound(1));
    EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(Return(0));
    EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce([&] { return begin("loading"); });
    EXPECT_CALL(*player, GetDuration(0)).WillOnce(Return(200000));
    EXPECT_CALL(*player, ExportSoundRange(0, home.in(), 0, 200000)).WillOnce([&] { return begin("export"); });
    EXPECT_CALL(*player, CloseSound(0)).WillOnce([&] { EXPECT_EQ(reported, QStringList("export")); });
    expectRemoval();
    expectBehindRemoval();
    click("cmdProcess");
}

}  // namespace
