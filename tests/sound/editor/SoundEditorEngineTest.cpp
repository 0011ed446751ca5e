#include "sound/editor/SoundEditorEngine.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"
#include "sound/editor/EditorOnFiles.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;
using ::testing::Pair;
using SoundFiles = sound::test::SoundFiles;

namespace {

class SoundEditorEngineTest : public EditorOnFiles
{
};

TEST_F(SoundEditorEngineTest, BeforeInitEditorEverythingIsRefusedAsNotInitialized)
{
    EXPECT_EQ(engine.LoadSound(sineFile("a.wav")), code(EngineError::NotInitialized));
    EXPECT_EQ(engine.LastError(), -49);
    EXPECT_EQ(startExport(files.path("b.wav")), -49);
    EXPECT_EQ(engine.Effects().ApplyTempo(0, -1, 0), -49);
    EXPECT_EQ(nextEvent(), "effect 10 -49");
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(names(), ElementsAre("a.wav"));
}

TEST_F(SoundEditorEngineTest, AnEmptyEditorRefusesEffectsAndExportAndSaysSo)
{
    engine.InitEditor(0);
    EXPECT_EQ(engine.LastError(), 0);
    EXPECT_EQ(engine.Effects().ApplyTempo(0, -1, -20), code(EngineError::EditorEmpty));
    EXPECT_EQ(engine.LastError(), -111);
    EXPECT_EQ(nextEvent(), "effect 10 -111");
    EXPECT_EQ(engine.Effects().ApplyPitch(0, -1, 2), -111);
    EXPECT_EQ(nextEvent(), "effect 12 -111");
    EXPECT_EQ(engine.Effects().ApplyRate(0, -1, 0), -111);
    EXPECT_EQ(nextEvent(), "effect 11 -111");
    EXPECT_EQ(engine.Effects().ApplyGain(0, -1, 0, 50, 0), -111);
    EXPECT_EQ(nextEvent(), "effect 13 -111");
    EXPECT_TRUE(effectPercents.empty());
    EXPECT_EQ(startExport(files.path("b.wav")), -111);
    EXPECT_EQ(engine.LastError(), -111);
    EXPECT_TRUE(staysQuiet());
    EXPECT_TRUE(names().empty());
}

TEST_F(SoundEditorEngineTest, EveryJobIsToldByTheEventLoopAndNeverOutOfItsCall)
{
    engine.InitEditor(0);
    EXPECT_EQ(engine.LoadSound(sineFile("a.wav")), 0);
    EXPECT_TRUE(events.empty());
    EXPECT_TRUE(loadPercents.empty());
    EXPECT_EQ(nextEvent(), "load 0");
    EXPECT_THAT(loadPercents, ElementsAre(100));

    EXPECT_EQ(engine.Effects().ApplyTempo(0, -1, -20), 0);
    EXPECT_EQ(events.size(), 1);
    EXPECT_TRUE(effectPercents.empty());
    EXPECT_EQ(nextEvent(), "effect 10 0");
    EXPECT_THAT(effectPercents, ElementsAre(Pair(10, 100)));

    EXPECT_EQ(startExport(files.path("b.wav")), 0);
    EXPECT_EQ(events.size(), 2);
    EXPECT_TRUE(exportPercents.empty());
    EXPECT_EQ(nextEvent(), "export 0");
    EXPECT_TRUE(staysQuiet());
}

TEST_F(SoundEditorEngineTest, WhileAJobRunsAllOthersAreRefusedAsBusy)
{
    engine.InitEditor(0);
    const QString path = sineFile("a.wav");
    ASSERT_EQ(engine.LoadSound(path), 0);
    EXPECT_EQ(engine.LoadSound(path), code(EngineError::EditorBusy));
    EXPECT_EQ(engine.LastError(), -110);
    EXPECT_EQ(startExport(files.path("b.wav")), -110);
    EXPECT_EQ(nextEvent(), "load 0");

    ASSERT_EQ(engine.Effects().ApplyTempo(0, -1, 0), 0);
    EXPECT_EQ(engine.Effects().ApplyPitch(0, -1, 1), -110);
    EXPECT_EQ(nextEvent(), "effect 10 0");
    EXPECT_EQ(nextEvent(), "effect 12 -110");

    ASSERT_EQ(startExport(files.path("b.wav")), 0);
    EXPECT_EQ(startExport(files.path("c.wav")), -110);
    EXPECT_EQ(engine.LoadSound(path), -110);
    EXPECT_EQ(nextEvent(), "export 0");
    // What was refused has changed nothing: the sound is there, a second long.
    save(files.path("d.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("d.wav"), 2).size(), 2U * 44100);
    EXPECT_THAT(names(), ElementsAre("a.wav", "b.wav", "d.wav"));
}

TEST_F(SoundEditorEngineTest, AFailedLoadLeavesNothingToExport)
{
    engine.InitEditor(0);
    load(sineFile("a.wav"));
    EXPECT_EQ(engine.LoadSound(files.write("b.mp3", "no sound")), code(EngineError::InvalidSoundFile));
    EXPECT_EQ(engine.LastError(), -6);
    EXPECT_EQ(engine.Effects().ApplyTempo(0, -1, 0), -111);
    EXPECT_EQ(nextEvent(), "effect 10 -111");
    EXPECT_EQ(startExport(files.path("c.wav")), -111);

    load(sineFile("a.wav"));
    EXPECT_NE(engine.LoadSound(files.path("there is none.wav")), 0);
    EXPECT_EQ(startExport(files.path("c.wav")), -111);
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(names(), ElementsAre("a.wav", "b.mp3"));
}

TEST_F(SoundEditorEngineTest, RefusesWhatNoExportCanBe)
{
    engine.InitEditor(0);
    load(sineFile("a.wav"));
    const QString out = files.path("b.wav");
    EXPECT_EQ(engine.ExportToFile(0, 2, 0, 0, -1, out), code(EngineError::InvalidExportSettings));
    EXPECT_EQ(engine.ExportToFile(1'000'000, 2, 0, 0, -1, out), -82);
    EXPECT_EQ(engine.ExportToFile(44100, 0, 0, 0, -1, out), -82);
    EXPECT_EQ(engine.ExportToFile(44100, 3, 0, 0, -1, out), -82);
    EXPECT_EQ(engine.ExportToFile(44100, 2, 0, 700, 500, out), code(EngineError::InvalidPosition));
    EXPECT_EQ(engine.ExportToFile(44100, 2, 0, 500, 500, out), -80);
    EXPECT_EQ(engine.ExportToFile(44100, 2, 0, 5000, -1, out), -80);
    EXPECT_EQ(engine.ExportToFile(44100, 2, 0, -3, -1, out), -80);
    engine.EncodeFormats().FormatForExport(5);
    EXPECT_EQ(startExport(out), -82);
    EXPECT_EQ(engine.LastError(), -82);
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(names(), ElementsAre("a.wav"));
    engine.EncodeFormats().FormatForExport(::EncodeFormats::Wav);
    save(out);
}

TEST_F(SoundEditorEngineTest, RefusesEffectsThatItCannotDo)
{
    engine.InitEditor(0);
    load(sineFile("a.wav"));
    EXPECT_EQ(engine.Effects().ApplyTempo(0, 500, 10), code(EngineError::Unsupported));
    EXPECT_EQ(nextEvent(), "effect 10 -24");
    EXPECT_EQ(engine.Effects().ApplyRate(0, -1, std::numeric_limits<float>::quiet_NaN()),
              code(EngineError::ParameterOutOfRange));
    EXPECT_EQ(nextEvent(), "effect 11 -3");
    EXPECT_EQ(engine.Effects().ApplyPitch(0, -1, std::numeric_limits<float>::infinity()), -3);
    EXPECT_EQ(nextEvent(), "effect 12 -3");
    EXPECT_EQ(engine.Effects().ApplyGain(0, -1, 0, std::numeric_limits<float>::quiet_NaN(), 0), -3);
    EXPECT_EQ(nextEvent(), "effect 13 -3");
    // Slower and slower: some time it is enough, and what was refused counts for nothing.
    int result = 0;
    double factor = 1;
    while ((result = engine.Effects().ApplyTempo(0, -1, -50)) == 0) {
        EXPECT_EQ(nextEvent(), "effect 10 0");
        factor /= 2;
        ASSERT_GT(factor, 0.01);
    }
    EXPECT_EQ(result, -3);
    EXPECT_EQ(nextEvent(), "effect 10 -3");
    save(files.path("b.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("b.wav"), 1).size(), static_cast<std::size_t>(44100 / factor));
}

TEST_F(SoundEditorEngineTest, SeveralEffectsMakeWhatOneThatIsAllOfThemMakes)
{
    engine.InitEditor(0);
    const TestSound sound = slideWithNoise(44100, 2, 2 * 44100);
    const QString path = files.make("a.wav", sound);
    load(path);
    change(-20, 2, 0);
    save(files.path("once.wav"));

    load(path);
    ASSERT_EQ(engine.Effects().ApplyPitch(0, -1, 3), 0);
    EXPECT_EQ(nextEvent(), "effect 12 0");
    change(-20, -1, 0);
    save(files.path("oneByOne.wav"));
    const std::vector<float> once = decodedByFfmpeg(files.path("once.wav"), 2);
    EXPECT_EQ(once.size(), 2U * 2 * 55125);
    // Stretched twice, they would differ all over; so only the factor's last bit, and the dither.
    expectClose(decodedByFfmpeg(files.path("oneByOne.wav"), 2), once, 4.0 / 32768, 2, {44100});
}

TEST_F(SoundEditorEngineTest, ALoadBeginsAnewWithoutTheEffectsOfTheSoundBefore)
{
    engine.InitEditor(0);
    const QString path = sineFile("a.wav");
    load(path);
    change(-50, 2, 10);
    load(path);
    save(files.path("b.wav"));
    expectSame(decodedByFfmpeg(files.path("b.wav"), 2), decodedByFfmpeg(path, 2), 2, {44100});
}

TEST_F(SoundEditorEngineTest, ASoundStaysLoadedWithItsEffectsForAnotherExport)
{
    engine.InitEditor(0);
    load(sineFile("a.wav"));
    change(-20, 0, 0);
    save(files.path("b.wav"));
    save(files.path("c.wav"));
    EXPECT_EQ(contentOf(files.path("b.wav")), contentOf(files.path("c.wav")));
    EXPECT_EQ(decodedByFfmpeg(files.path("c.wav"), 2).size(), 2U * 55125);
}

TEST_F(SoundEditorEngineTest, APartIsExportedFromMillisecondToMillisecond)
{
    engine.InitEditor(0);
    const TestSound sound = slideWithNoise(44100, 2, 3 * 44100);
    load(files.make("a.wav", sound));
    ASSERT_EQ(engine.ExportToFile(44100, 2, 0, 500, 1500, files.path("b.wav")), 0);
    EXPECT_EQ(nextEvent(), "export 0");
    const std::vector<float> whole = decodedByFfmpeg(files.path("a.wav"), 2);
    const auto part = std::span(whole).subspan(std::size_t{2} * 22050, std::size_t{2} * 44100);
    expectSame(decodedByFfmpeg(files.path("b.wav"), 2), part, 2, {44100});
    // An end behind the sound's own is that.
    ASSERT_EQ(engine.ExportToFile(44100, 2, 0, 2500, 99'999, files.path("c.wav")), 0);
    EXPECT_EQ(nextEvent(), "export 0");
    expectSame(decodedByFfmpeg(files.path("c.wav"), 2), std::span(whole).last(std::size_t{2} * 22050), 2, {44100});
}

TEST_F(SoundEditorEngineTest, AGainOfFiftyPercentHalvesTheLevel)
{
    engine.InitEditor(0);
    load(sineFile("a.wav"));
    ASSERT_EQ(engine.Effects().ApplyGain(0, -1, 0, 50, 0), 0);
    EXPECT_EQ(nextEvent(), "effect 13 0");
    EXPECT_THAT(effectPercents, ElementsAre(Pair(13, 100)));
    save(files.path("b.wav"));
    const std::vector<float> left = channelOf(decodedByFfmpeg(files.path("b.wav"), 2), 2, 0);
    EXPECT_NEAR(amplitudeAt(left, {44100}, 440), 0.25, 0.0001);
}

TEST_F(SoundEditorEngineTest, AnExportIsToldFromNothingToAllAndNeverBack)
{
    engine.InitEditor(0);
    load(sineFile("a.wav", 4));
    change(-30, 0, 0);
    save(files.path("b.wav"));
    ASSERT_FALSE(exportPercents.empty());
    EXPECT_LT(exportPercents.front(), 50);
    EXPECT_EQ(exportPercents.back(), 100);
    EXPECT_EQ(std::adjacent_find(exportPercents.begin(), exportPercents.end(), std::greater_equal()),
              exportPercents.end());
}

TEST_F(SoundEditorEngineTest, AClosedSoundTellsNothingMoreAndCanBeLoadedAgain)
{
    engine.InitEditor(0);
    const QString path = sineFile("a.wav", 20);
    ASSERT_EQ(engine.LoadSound(path), 0);
    engine.CloseSound();
    EXPECT_EQ(engine.LastError(), 0);
    EXPECT_TRUE(staysQuiet());
    EXPECT_EQ(startExport(files.path("b.wav")), -111);

    load(path);
    ASSERT_EQ(engine.Effects().ApplyTempo(0, -1, -20), 0);
    engine.CloseSound();
    EXPECT_TRUE(staysQuiet());

    load(path);
    change(-50, 0, 0);
    ASSERT_EQ(startExport(files.path("b.wav")), 0);
    engine.CloseSound();
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(names(), ElementsAre("a.wav"));
    load(path);
    save(files.path("b.wav"));
}

TEST_F(SoundEditorEngineTest, WhoeverHearsOfAJobMayStartTheNextOne)
{
    engine.InitEditor(0);
    const QString path = sineFile("a.wav");
    int results = -1;
    QObject::connect(&engine, &EditorEngine::LoadDone, [&] { results = engine.Effects().ApplyTempo(0, -1, -20); });
    QObject::connect(&engine, &EditorEngine::EffectDone, [&] { results += startExport(files.path("b.wav")); });
    ASSERT_EQ(engine.LoadSound(path), 0);
    EXPECT_EQ(nextEvent(), "load 0");
    EXPECT_EQ(nextEvent(), "effect 10 0");
    EXPECT_EQ(nextEvent(), "export 0");
    EXPECT_EQ(results, 0);
}

TEST_F(SoundEditorEngineTest, WhoeverHearsOfAPercentMayCloseTheSound)
{
    engine.InitEditor(0);
    const QString path = sineFile("a.wav");
    const auto close = [&] { engine.CloseSound(); };
    const auto onLoad = QObject::connect(&engine, &EditorEngine::LoadPercent, close);
    ASSERT_EQ(engine.LoadSound(path), 0);
    ASSERT_TRUE(eventually([&] { return !loadPercents.empty(); }));
    EXPECT_TRUE(staysQuiet());
    QObject::disconnect(onLoad);

    load(path);
    const auto onEffect = QObject::connect(&engine, &EditorEngine::EffectPercent, close);
    ASSERT_EQ(engine.Effects().ApplyTempo(0, -1, -20), 0);
    ASSERT_TRUE(eventually([&] { return !effectPercents.empty(); }));
    EXPECT_TRUE(staysQuiet());
    QObject::disconnect(onEffect);

    load(path);
    QObject::connect(&engine, &EditorEngine::ExportPercent, close);
    ASSERT_EQ(startExport(files.path("b.wav")), 0);
    ASSERT_TRUE(eventually([&] { return !exportPercents.empty(); }));
    EXPECT_TRUE(staysQuiet());
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
