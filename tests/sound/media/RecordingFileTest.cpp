#include "sound/media/RecordingFile.h"

#include "sound/ChildProcess.h"
#include "sound/CopyOfProcess.h"
#include "sound/DiscOf.h"
#include "sound/SoundFiles.h"
#include "sound/media/WrittenSounds.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <ostream>

using sound::RecordingFile;
using sound::SampleRate;
using sound::SoundFormat;
using sound::test::contentOf;
using sound::test::DiscOf;
using sound::test::everythingIn;
using sound::test::latenessOf;
using sound::test::readSound;
using sound::test::slideWithNoise;
using sound::test::SoundFiles;
using sound::test::TestSound;

namespace {

struct Recorded
{
    const char* name;
    const char* file;
    SoundFormat format;
    std::int64_t silenceBefore = 0;   // that the format cannot tell from the sound
    std::int64_t silenceWhenCut = 0;  // the same, of a file that was not finished
    double lengthIsGuessed = 0;       // by others, where the format tells it nowhere: within this part of it
};

void PrintTo(const Recorded& recorded, std::ostream* out)
{
    *out << recorded.name;
}

/// Another program's word.
double secondsByFfprobe(const QString& path)
{
    const SoundFiles streams;
    sound::test::ChildProcess ffprobe(
        "ffprobe", {"-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", "file:" + path}, {}, {},
        streams.path("out"), streams.path("err"));
    EXPECT_TRUE(ffprobe.succeeds()) << contentOf(streams.path("err")).toStdString();
    return contentOf(streams.path("out")).trimmed().toDouble();
}

/// How much of it there is to another program, which finds nothing wrong with it.
double secondsByFfmpeg(const QString& path, int rate)
{
    const SoundFiles streams;
    sound::test::ChildProcess ffmpeg(
        "ffmpeg", {"-v", "error", "-nostdin", "-i", "file:" + path, "-ac", "1", "-f", "s16le", "pipe:1"}, {}, {},
        streams.path("out"), streams.path("err"));
    EXPECT_TRUE(ffmpeg.succeeds());
    EXPECT_EQ(contentOf(streams.path("err")), "");
    return static_cast<double>(contentOf(streams.path("out")).size()) / 2 / rate;
}

/// As sound comes from a device: 20 ms at a time.
bool recordAll(RecordingFile& file, const TestSound& sound)
{
    const auto piece = static_cast<std::size_t>(sound.rate / 50 * sound.channels);
    for (std::span<const float> rest(sound.samples); !rest.empty();) {
        const auto next = rest.first(std::min(rest.size(), piece));
        if (!file.write(next))
            return false;
        rest = rest.subspan(next.size());
    }
    return true;
}

EngineError record(const QString& path, const SoundFormat& format, const TestSound& sound)
{
    const auto opened = RecordingFile::create(path, format, SampleRate{sound.rate}, sound.channels);
    EXPECT_EQ(opened.file == nullptr, opened.error != EngineError::None);
    if (!opened.file)
        return opened.error;
    const bool all =
        sound::test::inPieces(sound, [&](std::span<const float> piece) { return opened.file->write(piece); });
    const EngineError error = opened.file->finish();
    EXPECT_TRUE(all || error != EngineError::None);
    return error;
}

/// The names of the boxes that an MP4 file is made of.
QStringList boxesOf(const QByteArray& bytes)
{
    const auto number = [&bytes](qsizetype place, int size) {
        qsizetype value = 0;
        for (int i = 0; i < size; ++i)
            value = value << 8 | static_cast<std::uint8_t>(bytes.at(place + i));
        return value;
    };
    QStringList names;
    for (qsizetype place = 0; place + 16 <= bytes.size();) {
        names << bytes.mid(place + 4, 4);
        const qsizetype size = number(place, 4);
        place += size == 1 ? number(place + 8, 8) : std::max<qsizetype>(size, 8);
        if (place >= bytes.size())
            names << (place == bytes.size() ? "end" : "cut");
    }
    return names;
}

class EveryRecordedFormat : public ::testing::TestWithParam<Recorded>
{
protected:
    SoundFiles files;
    const Recorded& recorded = GetParam();
    QString path = files.path(recorded.file);
};

TEST_P(EveryRecordedFormat, FinishedIsTheSoundThatASoundFileWriterMakes)
{
    const QString written = files.path("written");
    for (const auto& [rate, channels] : {std::pair(48000, 1), std::pair(44100, 2)}) {
        const TestSound made = slideWithNoise(rate, channels, 2 * rate + 777);
        ASSERT_EQ(record(path, recorded.format, made), EngineError::None) << rate;
        ASSERT_EQ(sound::test::writeSound(written, recorded.format, made), EngineError::None);
        const TestSound heard = readSound(path);
        EXPECT_EQ(heard.rate, rate);
        EXPECT_EQ(heard.channels, channels);
        EXPECT_GE(heard.frames(), made.frames());
        EXPECT_TRUE(heard.samples == readSound(written).samples);
    }
    EXPECT_TRUE(sound::test::decodedByFfmpeg(path, 2) == sound::test::decodedByFfmpeg(written, 2));
    EXPECT_NEAR(secondsByFfprobe(path), secondsByFfprobe(written), 0.001 + recorded.lengthIsGuessed);
}

TEST_P(EveryRecordedFormat, AProgramThatIsKilledLeavesAllButTheLastMoment)
{
    constexpr double seconds = 10;
    const TestSound made = slideWithNoise(44100, 2, static_cast<std::int64_t>(seconds * 44100));
    sound::test::doAndBeKilled<std::unique_ptr<RecordingFile>>([&] {
        auto opened = RecordingFile::create(path, recorded.format, SampleRate{44100}, 2);
        return opened.file && recordAll(*opened.file, made) ? std::move(opened.file) : nullptr;
    });
    EXPECT_EQ(everythingIn(files.folder()), QStringList{recorded.file});

    const TestSound heard = readSound(path);
    EXPECT_GE(heard.frames(), 9.3 * 44100);
    for (const std::int64_t from : {0, 4 * 44100, 9 * 44100})
        EXPECT_EQ(latenessOf(made, heard, from, 2500), recorded.silenceWhenCut) << from;

    const double decoded = secondsByFfmpeg(path, 44100);
    EXPECT_GE(decoded, 9.3);
    EXPECT_LE(decoded, seconds + 0.1);
    EXPECT_NEAR(secondsByFfprobe(path), decoded, 0.1 + decoded * recorded.lengthIsGuessed);
}

TEST_P(EveryRecordedFormat, WhileItGrowsItHoldsAllButTheLastMoment)
{
    const TestSound made = slideWithNoise(44100, 2, 3 * 44100);
    const auto opened = RecordingFile::create(path, recorded.format, SampleRate{44100}, 2);
    ASSERT_TRUE(opened.file);
    constexpr std::size_t piece = std::size_t{2} * 5003;
    std::int64_t longestMissing = 0;
    for (std::size_t at = 0; at + piece <= made.samples.size(); at += piece) {
        ASSERT_TRUE(opened.file->write(std::span(made.samples).subspan(at, piece)));
        const auto written = static_cast<std::int64_t>(at + piece) / 2;
        if (written > 44100)
            longestMissing = std::max(longestMissing, written - readSound(path).frames());
    }
    EXPECT_LT(longestMissing, 44100 * 6 / 10);
}

TEST_P(EveryRecordedFormat, AFullDiscEndsItWholeAsFarAsItGot)
{
    const TestSound made = slideWithNoise(44100, 2, 3 * 44100);
    ASSERT_EQ(record(path, recorded.format, made), EngineError::None);
    const auto size = static_cast<rlim_t>(contentOf(path).size());
    for (const rlim_t room : {size - 1, size / 2}) {
        {
            const DiscOf disc(room);
            EXPECT_EQ(record(path, recorded.format, made), EngineError::FileCreationFailed) << room;
        }
        const TestSound heard = readSound(path);
        const double part = static_cast<double>(room) / static_cast<double>(size);
        EXPECT_GE(static_cast<double>(heard.frames()), part * static_cast<double>(made.frames()) - 0.6 * 44100);
        EXPECT_EQ(latenessOf(made, heard, 22050, 2500), recorded.silenceWhenCut) << room;
    }
    const double decoded = secondsByFfmpeg(path, 44100);
    EXPECT_NEAR(decoded, static_cast<double>(readSound(path).frames()) / 44100, 0.1);
    EXPECT_NEAR(secondsByFfprobe(path), decoded, 0.1 + decoded * recorded.lengthIsGuessed);
}

TEST_P(EveryRecordedFormat, OnceTheDiscWasFullTakesNoMore)
{
    const TestSound made = slideWithNoise(44100, 2, 4 * 44100);
    const auto opened = RecordingFile::create(path, recorded.format, SampleRate{44100}, 2);
    ASSERT_TRUE(opened.file);
    {
        const DiscOf disc(20'000);
        EXPECT_FALSE(recordAll(*opened.file, made));
    }
    EXPECT_FALSE(opened.file->write(std::span(made.samples).first(2000)));
    EXPECT_EQ(opened.file->finish(), EngineError::FileCreationFailed);
    EXPECT_LE(contentOf(path).size(), 20'000);
}

TEST_P(EveryRecordedFormat, ADiscThatIsFullFromTheBeginLeavesNothingThatIsNoSound)
{
    const TestSound made = slideWithNoise(44100, 2, 44100);
    for (const rlim_t room : {0, 1, 100, 500, 3000}) {
        const DiscOf disc(room);
        EXPECT_EQ(record(path, recorded.format, made), EngineError::FileCreationFailed) << room;
        if (QFile::exists(path)) {
            EXPECT_LE(contentOf(path).size(), static_cast<qsizetype>(room));
        }
    }
}

TEST_P(EveryRecordedFormat, UnfinishedIsFinishedWhenItGoes)
{
    const TestSound made = slideWithNoise(44100, 2, 44100);
    ASSERT_EQ(record(files.path("finished"), recorded.format, made), EngineError::None);
    {
        const auto opened = RecordingFile::create(path, recorded.format, SampleRate{44100}, 2);
        ASSERT_TRUE(opened.file);
        EXPECT_TRUE(recordAll(*opened.file, made));
    }
    EXPECT_TRUE(contentOf(path) == contentOf(files.path("finished")));
}

TEST_P(EveryRecordedFormat, CanBeEmptyOrShorterThanACodedFrame)
{
    for (const std::int64_t frames : {0, 1, 500, 2000}) {
        EXPECT_EQ(record(path, recorded.format, slideWithNoise(44100, 2, frames)), EngineError::None) << frames;
        EXPECT_GE(readSound(path).frames(), frames == 2000 ? 1000 : 0);
    }
}

TEST_P(EveryRecordedFormat, TakesThePlaceOfAnOlderFileThatWhoPlaysItKeeps)
{
    QFile older(files.write(recorded.file, "what was there before"));
    ASSERT_TRUE(older.open(QIODevice::ReadOnly));
    const TestSound made = slideWithNoise(44100, 2, 44100);
    const auto opened = RecordingFile::create(path, recorded.format, SampleRate{44100}, 2);
    ASSERT_TRUE(opened.file);
    EXPECT_TRUE(recordAll(*opened.file, made));
    EXPECT_GE(readSound(path).frames(), 22050);
    EXPECT_EQ(older.readAll(), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{recorded.file});
}

TEST_P(EveryRecordedFormat, WhereNoFileCanBeMadeThereIsNone)
{
    const QString file = files.write("plain", "a file, no folder");
    const QString pipe = files.path("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(files.path("folder")));
    for (const QString& wrong : {file + "/a", files.path("folder"), pipe, QString("/proc/a"), QString("/dev/full"),
                                 files.path(QString(256, 'x')), QString("a") + QChar::Null + "b", QString()}) {
        const auto opened = RecordingFile::create(wrong, recorded.format, SampleRate{44100}, 2);
        EXPECT_FALSE(opened.file) << wrong.toStdString();
        EXPECT_EQ(opened.error, EngineError::FileCreationFailed) << wrong.toStdString();
    }
    EXPECT_EQ(everythingIn(files.folder()), QStringList({"folder", "pipe", "plain"}));
}

TEST_P(EveryRecordedFormat, MissingFoldersAreMadeAndAnyNameThatAFileCanBearIsGood)
{
    const TestSound made = slideWithNoise(44100, 1, 44100);
    for (const QString& name :
         {QString("new/folder/a"), QString(255, 'x'), QString("line\nbreak \"'%s;:|*?"),
          QString::fromUtf8("\xC3\xA4\xE6\x97\xA5\xF0\x9F\x8E\xBB"), QString("-i"), QString("http:a")}) {
        EXPECT_EQ(record(files.path(name), recorded.format, made), EngineError::None) << name.toStdString();
        EXPECT_GE(readSound(files.path(name)).frames(), made.frames()) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Media, EveryRecordedFormat,
                         ::testing::Values(Recorded{"Wav", "a.wav", sound::wavFormat()},
                                           Recorded{"Mp3", "a.mp3", sound::mp3Format(128'000)},
                                           Recorded{"Wma", "a.wma", sound::wmaFormat(64'000)},
                                           Recorded{"OggVorbis", "a.ogg", sound::oggVorbisFormat(3)},
                                           Recorded{"Aac", "a.aac", sound::aacFormat(100), 1024, 1024, 0.05},
                                           Recorded{"Mp4", "a.mp4", sound::mp4Format(100), 0, 1024}),
                         [](const auto& info) { return info.param.name; });

TEST(RecordingFile, AnMp4IsMadeOfFragmentsWhileItGrowsAndHasOneIndexOfTheWholeThen)
{
    const SoundFiles files;
    const QString path = files.path("a.mp4");
    const auto opened = RecordingFile::create(path, sound::mp4Format(100), SampleRate{44100}, 2);
    ASSERT_TRUE(opened.file);
    EXPECT_TRUE(recordAll(*opened.file, slideWithNoise(44100, 2, 44100 * 13 / 10)));
    EXPECT_EQ(boxesOf(contentOf(path)), QStringList({"ftyp", "moov", "moof", "mdat", "moof", "mdat", "end"}));
    EXPECT_EQ(opened.file->finish(), EngineError::None);
    EXPECT_EQ(boxesOf(contentOf(path)), QStringList({"ftyp", "mdat", "moov", "end"}));
}

TEST(RecordingFile, AFormatThatDoesNotExistLeavesTheOlderFile)
{
    const SoundFiles files;
    const QString path = files.write("a", "what was there before");
    for (const auto& format : {sound::mp3Format(0), sound::wmaFormat(0), sound::oggVorbisFormat(11)}) {
        const auto opened = RecordingFile::create(path, format, SampleRate{44100}, 2);
        EXPECT_FALSE(opened.file);
        EXPECT_EQ(opened.error, EngineError::InvalidExportSettings);
    }
    EXPECT_EQ(RecordingFile::create(path, sound::wavFormat(), SampleRate{44100}, 3).error,
              EngineError::InvalidExportSettings);
    EXPECT_EQ(contentOf(path), "what was there before");
}

}  // namespace
