// What an export leaves in the file system, however it ends.

#include "sound/ChildProcess.h"
#include "sound/Comparison.h"
#include "sound/DiscOf.h"
#include "sound/NamelessFiles.h"
#include "sound/Signals.h"
#include "sound/editor/EditorOnFiles.h"
#include "sound/media/OpenedFrames.h"
#include "sound/media/SoundTags.h"

#include <QCoreApplication>
#include <QFile>
#include <cmath>
#include <iostream>
#include <ostream>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;
using SoundFiles = sound::test::SoundFiles;
using Formats = ::EncodeFormats;

namespace {

constexpr const char* saveSlowlyOption = "--save-slowly";

struct Format
{
    const char* file;
    Formats::Format number;
    bool mp4 = false;
    std::int64_t padding = 0;  // that the format cannot tell from the sound
    bool lossless = false;
};

void PrintTo(const Format& format, std::ostream* out)
{
    *out << format.file;
}

class SavedFormatTest : public EditorOnFiles, public ::testing::WithParamInterface<Format>
{
protected:
    void choose(const Format& format)
    {
        Formats& formats = engine.EncodeFormats();
        formats.FormatForExport(format.number);
        formats.Mp3Settings().Mode(1);
        formats.Mp3Settings().BitRate(128000);
        formats.WmaSettings().Mode(1);
        formats.WmaSettings().BitRate(128000);
        formats.AacSettings().Mode(0);
        formats.AacSettings().Mp4Container(format.mp4);
        formats.AacSettings().Quality(100);
        formats.OggSettings().Mode(0);
        formats.OggSettings().Quality(4);
        formats.WavSettings().Mode(1);
    }
};

TEST_P(SavedFormatTest, HasTheLengthThePitchAndTheTagsThatItShould)
{
    const Format format = GetParam();
    engine.InitEditor(0);
    load(files.make("source.flac", sine(440, 48000, 2, std::int64_t{4} * 48000),
                    {"-metadata", "title=Étude", "-metadata", "artist=A. Player", "-metadata", "album=Practice"}));
    choose(format);
    change(-20, 2, 0);
    save(files.path(format.file));

    // Four seconds by 0.8, as this program reads it and as the ffmpeg program does.
    constexpr std::int64_t frames = 5 * 44100;
    const OpenedFrames opened = openFrames(files.path(format.file));
    ASSERT_TRUE(opened.stream);
    EXPECT_EQ(opened.stream->rate().hertz, 44100);
    EXPECT_EQ(opened.stream->channels(), 2);
    EXPECT_GE(opened.stream->length().value, frames);
    EXPECT_LE(opened.stream->length().value, frames + format.padding);
    const std::vector<float> left = channelOf(decodedByFfmpeg(files.path(format.file), 2), 2, 0);
    EXPECT_NEAR(static_cast<double>(left.size()), frames, format.lossless ? 0 : 4096);

    const double heard = 440 * std::exp2(2.0 / 12);
    const auto steady = std::span(left).subspan(22050, left.size() - 44100);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(steady, {44100}, heard), heard)), 0.1);
    EXPECT_NEAR(decibels(amplitudeAt(steady, {44100}, heard), 0.5), 0, 0.5);

    if (format.number != Formats::Aac || format.mp4) {
        const SoundTags tags = readSoundTags(files.path(format.file));
        EXPECT_EQ(tags.title, QStringLiteral("\u00C9tude"));
        EXPECT_EQ(tags.artist, "A. Player");
        EXPECT_EQ(tags.album, "Practice");
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SavedFormatTest,
                         ::testing::Values(Format{"out.wav", Formats::Wav, false, 0, true},
                                           Format{"out.flac", Formats::Flac, false, 0, true},
                                           Format{"out.mp3", Formats::Mp3}, Format{"out.ogg", Formats::OggVorbis},
                                           Format{"out.mp4", Formats::Aac, true},
                                           Format{"out.aac", Formats::Aac, false, 2048},
                                           Format{"out.wma", Formats::Wma, false, 4095}),
                         [](const auto& info) { return QString(info.param.file).mid(4).toStdString(); });

class SavedFilesTest : public EditorOnFiles
{
protected:
    SavedFilesTest() { engine.InitEditor(0); }

    /// A sound whose export takes long enough to be broken off.
    QString longFile() { return sineFile("source.wav", 20); }

    QString oldFile() { return files.write("out.wav", "what was there before"); }

    void expectOldFileAndNoLitter()
    {
        EXPECT_EQ(contentOf(files.path("out.wav")), "what was there before");
        EXPECT_THAT(names(), ElementsAre("out.wav", "source.wav"));
    }
};

TEST_F(SavedFilesTest, UnchangedStereoIsSavedBitForBit)
{
    const QString source = files.make("source.wav", slideWithNoise(44100, 2, 70'001), {"-c:a", "pcm_s16le"});
    load(source);
    change(0, 0, 0);
    save(files.path("out.wav"));
    expectSame(decodedByFfmpeg(files.path("out.wav"), 2), decodedByFfmpeg(source, 2), 2, {44100});
}

TEST_F(SavedFilesTest, AnOldFileIsReplacedOnlyWhenTheNewOneIsWhole)
{
    load(sineFile("source.wav"));
    const QString out = oldFile();
    ASSERT_EQ(startExport(out), 0);
    EXPECT_EQ(contentOf(out), "what was there before");
    EXPECT_EQ(nextEvent(), "export 0");
    EXPECT_EQ(decodedByFfmpeg(out, 2).size(), 2U * 44100);
    EXPECT_THAT(names(), ElementsAre("out.wav", "source.wav"));
}

TEST_F(SavedFilesTest, AFolderThatIsMissingIsMade)
{
    load(sineFile("source.wav"));
    save(files.path("Larkspin Recordings/new/out.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("Larkspin Recordings/new/out.wav"), 2).size(), 2U * 44100);
}

TEST_F(SavedFilesTest, WhereNoFileCanBeTheExportDoesNotStart)
{
    load(sineFile("source.wav"));
    EXPECT_EQ(startExport("/proc/out.wav"), code(EngineError::FileCreationFailed));
    EXPECT_EQ(engine.LastError(), -8);
    EXPECT_EQ(startExport(files.path("source.wav/out.wav")), -8);
    QDir(files.folder()).mkdir("folder");
    EXPECT_EQ(startExport(files.path("folder")), -8);
    EXPECT_TRUE(staysQuiet());
    // The sound is still there to be saved elsewhere.
    save(files.path("out.wav"));
}

TEST_F(SavedFilesTest, AFullDiscEndsTheExportAndLeavesWhatWasThere)
{
    load(sineFile("source.wav", 3));
    oldFile();
    {
        const DiscOf small(100'000);
        ASSERT_EQ(startExport(files.path("out.wav")), 0);
        EXPECT_EQ(nextEvent(), "export -8");
        EXPECT_EQ(engine.LastError(), -8);
    }
    expectOldFileAndNoLitter();
    save(files.path("out.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("out.wav"), 2).size(), 2U * 3 * 44100);
}

TEST_F(SavedFilesTest, ASourceThatIsRemovedAfterItsLoadIsStillSavedOnce)
{
    load(sineFile("source.wav"));
    QFile::remove(files.path("source.wav"));
    change(-20, 0, 0);
    save(files.path("out.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("out.wav"), 2).size(), 2U * 55125);
    EXPECT_NE(startExport(files.path("again.wav")), 0);
    EXPECT_NE(engine.LastError(), 0);
    EXPECT_TRUE(staysQuiet());
    EXPECT_THAT(names(), ElementsAre("out.wav"));
}

TEST_F(SavedFilesTest, ASourceThatIsCutWhileItIsReadIsNotSavedAsSilence)
{
    load(longFile());
    oldFile();
    QFile(files.path("source.wav")).resize(1'000'000);
    ASSERT_EQ(startExport(files.path("out.wav")), 0);
    EXPECT_EQ(nextEvent(), "export -6");
    EXPECT_EQ(engine.LastError(), code(EngineError::InvalidSoundFile));
    expectOldFileAndNoLitter();
}

TEST_F(SavedFilesTest, ADamagedSourceIsSavedAsLongAsItIs)
{
    const QString whole = files.make("whole.flac", slideWithNoise(44100, 2, 4 * 44100), {"-sample_fmt", "s16"});
    QByteArray scratched = contentOf(whole);
    scratched.replace(scratched.size() / 2, 3000, QByteArray(3000, '\x55'));
    load(files.write("scratched.flac", scratched));
    save(files.path("out.wav"));
    EXPECT_EQ(decodedByFfmpeg(files.path("out.wav"), 2).size(), 2U * 4 * 44100);
    // What comes before the scratch is not touched by it.
    const std::size_t second = std::size_t{2} * 44100;
    const std::vector<float> saved = decodedByFfmpeg(files.path("out.wav"), 2);
    const std::vector<float> all = decodedByFfmpeg(whole, 2);
    expectSame(std::span(saved).first(second), std::span(all).first(second), 2, {44100});
}

TEST_F(SavedFilesTest, ASourceThatWasCutOffIsSavedAsFarAsItGoes)
{
    const QString whole = files.make("whole.flac", slideWithNoise(44100, 2, 4 * 44100), {"-sample_fmt", "s16"});
    const QByteArray bytes = contentOf(whole);
    load(files.write("cut.flac", bytes.left(bytes.size() / 2)));
    save(files.path("out.wav"));
    const std::vector<float> saved = decodedByFfmpeg(files.path("out.wav"), 2);
    EXPECT_GT(saved.size(), 2U * 44100);
    EXPECT_LT(saved.size(), 2U * 3 * 44100);
    const std::vector<float> all = decodedByFfmpeg(whole, 2);
    const std::size_t sure = saved.size() - std::size_t{2} * 4608;  // less than the FLAC frame that was cut through
    expectSame(std::span(saved).first(sure), std::span(all).first(sure), 2, {44100});
}

TEST_F(SavedFilesTest, TheSourceItselfMayBeReplaced)
{
    const QString path = sineFile("source.wav", 2);
    load(path);
    change(-20, 0, 0);
    save(path);
    EXPECT_EQ(decodedByFfmpeg(path, 2).size(), 2U * 2 * 55125);
    EXPECT_THAT(names(), ElementsAre("source.wav"));
    // What was loaded is no longer there.
    EXPECT_EQ(startExport(path), code(EngineError::InvalidSoundFile));
    EXPECT_EQ(decodedByFfmpeg(path, 2).size(), 2U * 2 * 55125);
}

TEST_F(SavedFilesTest, ASoundThatIsClosedInTheMiddleLeavesWhatWasThere)
{
    load(longFile());
    change(-50, 0, 0);
    oldFile();
    ASSERT_EQ(startExport(files.path("out.wav")), 0);
    ASSERT_TRUE(eventually([this] { return !exportPercents.empty() && exportPercents.back() > 2; }));
    engine.CloseSound();
    EXPECT_TRUE(staysQuiet());
    expectOldFileAndNoLitter();
}

TEST_F(SavedFilesTest, AnEditorThatGoesInTheMiddleLeavesWhatWasThere)
{
    const QString source = longFile();
    oldFile();
    {
        SoundEditorEngine other;
        short percent = 0;
        QObject::connect(&other, &EditorEngine::ExportPercent, [&](short now) { percent = now; });
        bool loaded = false;
        QObject::connect(&other, &EditorEngine::LoadDone, [&] { loaded = true; });
        other.InitEditor(0);
        ASSERT_EQ(other.LoadSound(source), 0);
        ASSERT_TRUE(eventually([&] { return loaded; }));
        ASSERT_EQ(other.Effects().ApplyTempo(0, -1, -50), 0);
        ASSERT_TRUE(eventually([&] { return other.ExportToFile(44100, 2, 0, 0, -1, files.path("out.wav")) == 0; }));
        ASSERT_TRUE(eventually([&] { return percent > 2; }));
    }
    EXPECT_TRUE(staysQuiet());
    expectOldFileAndNoLitter();
}

TEST_F(SavedFilesTest, AProgramThatIsKilledInTheMiddleLeavesWhatWasThere)
{
    if (!knowsNamelessFiles(files.folder()))
        GTEST_SKIP() << "this file system knows no files without a name";
    const QString source = longFile();
    oldFile();
    const SoundFiles streams;
    {
        ChildProcess program(QCoreApplication::applicationFilePath(),
                             {saveSlowlyOption, source, files.path("out.wav")}, {}, {}, streams.path("said"), {});
        ASSERT_TRUE(eventually([&] { return contentOf(streams.path("said")).contains("writes"); }));
        program.signal(SIGKILL);
        EXPECT_FALSE(program.succeeds());
    }
    expectOldFileAndNoLitter();
}

// Slows a sound down and saves it, and tells when a part of that is done: to be killed.
int saveSlowly(const QString& source, const QString& path)
{
    SoundEditorEngine engine;
    engine.InitEditor(0);
    QObject::connect(&engine, &EditorEngine::LoadDone, [&] { engine.Effects().ApplyTempo(0, -1, -60); });
    QObject::connect(&engine, &EditorEngine::EffectDone, [&] { engine.ExportToFile(44100, 2, 0, 0, -1, path); });
    QObject::connect(&engine, &EditorEngine::ExportPercent, [](short percent) {
        if (percent > 5)
            std::cout << "writes" << std::endl;
    });
    QObject::connect(&engine, &EditorEngine::ExportDone, qApp, &QCoreApplication::quit);
    return engine.LoadSound(source) == 0 ? QCoreApplication::exec() : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && arguments[1] == saveSlowlyOption)
        return saveSlowly(arguments[2], arguments[3]);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
