#include "sound/media/SoundTags.h"

#include "sound/SoundFiles.h"
#include "sound/media/Damage.h"
#include "sound/media/SoundFileWriter.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <QFile>
#include <ostream>

using sound::readSoundTags;
using sound::SampleRate;
using sound::SoundFileWriter;
using sound::SoundFormat;
using sound::SoundTags;
using sound::test::contentOf;
using sound::test::Damage;
using sound::test::SoundFiles;

namespace {

QByteArray picture(const QString& name, const QString& size = "300x200")
{
    const SoundFiles files;
    EXPECT_TRUE(
        sound::test::runFfmpeg({"-f", "lavfi", "-i", "testsrc=d=1:s=" + size, "-frames:v", "1", files.path(name)}));
    return contentOf(files.path(name));
}

SoundTags everyTag()
{
    return {QStringLiteral("\u00C9tude \u266B \u7DF4\u7FD2"),
            "A. Player & Friends",
            "Practice = joy; \"loud\"",
            "Various",
            "3/12",
            "1999",
            "Jazz",
            picture("cover.png")};
}

QString write(const QString& path, const SoundFormat& format, const SoundTags& tags, std::int64_t frames = 30'000)
{
    const auto opened = SoundFileWriter::create(path, format, SampleRate{44100}, 2, tags);
    EXPECT_TRUE(opened.writer);
    if (opened.writer) {
        EXPECT_TRUE(opened.writer->write(sound::test::slideWithNoise(44100, 2, frames).samples));
        EXPECT_EQ(opened.writer->finish(), EngineError::None);
    }
    return path;
}

struct Tagged
{
    const char* name;
    const char* file;
    SoundFormat format;
    bool holdsCover = false;
    bool holdsAlbumArtist = true;
};

void PrintTo(const Tagged& tagged, std::ostream* out)
{
    *out << tagged.name;
}

class EveryTaggedFormat : public ::testing::TestWithParam<Tagged>
{
protected:
    SoundFiles files;
};

TEST_P(EveryTaggedFormat, KeepsWhatItHolds)
{
    const Tagged& format = GetParam();
    SoundTags expected = everyTag();
    const QString path = write(files.path(format.file), format.format, expected);
    if (!format.holdsCover)
        expected.cover.clear();
    if (!format.holdsAlbumArtist)
        expected.albumArtist.clear();
    EXPECT_EQ(readSoundTags(path), expected);
}

TEST_P(EveryTaggedFormat, IsReadByAnotherProgram)
{
    const Tagged& format = GetParam();
    const SoundTags tags = everyTag();
    const QString path = write(files.path(format.file), format.format, tags);
    QByteArray told;
    ASSERT_TRUE(sound::test::runFfmpeg(
        {"-i", "file:" + path, "-map_metadata:g",
         format.format.family == SoundFormat::Family::OggVorbis ? "0:s:a" : "0:g", "-f", "ffmetadata", "pipe:1"},
        {}, &told));
    EXPECT_TRUE(told.contains("title=" + tags.title.toUtf8())) << told.data();
    EXPECT_TRUE(told.contains("artist=" + tags.artist.toUtf8())) << told.data();
    EXPECT_TRUE(told.contains("album=Practice \\= joy\\; \"loud\"")) << told.data();
    EXPECT_TRUE(told.contains("genre=Jazz")) << told.data();
    if (format.holdsCover) {
        QByteArray pixels;
        QByteArray expected;
        const QStringList raw = {"-map", "0:v", "-f", "rawvideo", "-pix_fmt", "rgb24", "pipe:1"};
        ASSERT_TRUE(sound::test::runFfmpeg(QStringList{"-i", "file:" + path} + raw, {}, &pixels));
        ASSERT_TRUE(sound::test::runFfmpeg(QStringList{"-i", "file:" + files.write("cover.png", tags.cover)} + raw,
                                           {}, &expected));
        EXPECT_TRUE(pixels == expected);
    }
}

TEST_P(EveryTaggedFormat, SoundsTheSameWithTagsAndWithout)
{
    const Tagged& format = GetParam();
    const QString plain = write(files.path(QStringLiteral("plain-") + format.file), format.format, {});
    const QString tagged = write(files.path(QStringLiteral("tagged-") + format.file), format.format, everyTag());
    EXPECT_TRUE(sound::test::decodedByFfmpeg(plain, 2) == sound::test::decodedByFfmpeg(tagged, 2));
    EXPECT_EQ(readSoundTags(plain), SoundTags());
}

TEST_P(EveryTaggedFormat, ACoverThatIsBrokenOrTooLargeIsLeftOutAndTheRestKept)
{
    const Tagged& format = GetParam();
    const QByteArray png = picture("a.png");
    const QByteArray jpeg = picture("a.jpg");
    QByteArray huge = png;
    huge.insert(png.indexOf("IDAT") - 4, QByteArray::fromHex("01000000") + "huGe" + QByteArray(0x1000004, 'x'));
    for (const QByteArray& cover :
         {QByteArray("no picture"), png.left(20), png.left(png.size() / 2), jpeg.left(30),
          jpeg.left(jpeg.size() / 2), QByteArray("GIF89a") + QByteArray(100, 'x'), huge}) {
        SoundTags tags;
        tags.title = "Title";
        tags.cover = cover;
        const SoundTags kept = readSoundTags(write(files.path(format.file), format.format, tags));
        tags.cover.clear();
        EXPECT_EQ(kept, tags) << cover.size();
    }
}

INSTANTIATE_TEST_SUITE_P(Media, EveryTaggedFormat,
                         ::testing::Values(Tagged{"Wav", "a.wav", sound::wavFormat(), false, false},
                                           Tagged{"Mp3", "a.mp3", sound::mp3Format(128'000), true},
                                           Tagged{"Wma", "a.wma", sound::wmaFormat(128'000)},
                                           Tagged{"OggVorbis", "a.ogg", sound::oggVorbisFormat(4), true},
                                           Tagged{"Aac", "a.aac", sound::aacFormat(100)},
                                           Tagged{"Mp4", "a.mp4", sound::mp4Format(100), true},
                                           Tagged{"Flac", "a.flac", sound::flacFormat(), true}),
                         [](const auto& info) { return info.param.name; });

TEST(SoundTags, AJpegCoverIsKeptToTheByte)
{
    const SoundFiles files;
    SoundTags tags;
    tags.cover = picture("a.jpg", "1000x1000");
    for (const auto& [name, format] :
         {std::pair("a.mp3", sound::mp3Format(128'000)), std::pair("a.ogg", sound::oggVorbisFormat(4)),
          std::pair("a.mp4", sound::mp4Format(100)), std::pair("a.flac", sound::flacFormat())})
        EXPECT_TRUE(readSoundTags(write(files.path(name), format, tags)) == tags) << name;
}

TEST(SoundTags, AreReadFromTheFilesOfOtherPrograms)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 44'100);
    const QStringList texts = {"-metadata", "title=T", "-metadata", "artist=A", "-metadata", "album=B"};
    for (const char* name : {"a.mp3", "a.flac", "a.m4a", "a.wav", "a.wma", "a.ogg", "a.opus", "a.wv"}) {
        const SoundTags tags = readSoundTags(files.make(name, made, texts));
        EXPECT_EQ(tags.title, "T") << name;
        EXPECT_EQ(tags.artist, "A") << name;
        EXPECT_EQ(tags.album, "B") << name;
    }
}

TEST(SoundTags, OfSeveralPicturesTheFrontIsTheCover)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 44'100);
    const QByteArray back = picture("back.png", "64x64");
    const QByteArray front = picture("front.png", "32x32");
    const QString path =
        files.make("a.flac", made,
                   {"-i", files.write("back.png", back), "-i", files.write("front.png", front), "-map", "0:a",
                    "-map", "1:v", "-map", "2:v", "-c:v", "copy", "-disposition:v", "attached_pic",
                    "-metadata:s:v:0", "comment=Cover (back)", "-metadata:s:v:1", "comment=Cover (front)"});
    EXPECT_EQ(readSoundTags(path).cover, front);
}

TEST(SoundTags, WhatIsNoUtf8IsTakenForLatin1)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 44'100);
    QByteArray bytes = contentOf(files.make("a.wav", made, {"-metadata", "title=Xtude"}));
    bytes[bytes.indexOf("Xtude")] = '\xC9';
    EXPECT_EQ(readSoundTags(files.write("a.wav", bytes)).title, QStringLiteral("\u00C9tude"));
}

TEST(SoundTags, ALongTextEndsAfterAThousandCharacters)
{
    const SoundFiles files;
    SoundTags tags;
    tags.title = QString(5000, 'x');
    EXPECT_EQ(readSoundTags(write(files.path("a.flac"), sound::flacFormat(), tags)).title, QString(1000, 'x'));
}

TEST(SoundTags, WhatIsNoSoundHasNone)
{
    const SoundFiles files;
    ASSERT_EQ(::mkfifo(QFile::encodeName(files.path("pipe.mp3")).constData(), 0600), 0);
    EXPECT_EQ(readSoundTags(files.path("missing.mp3")), SoundTags());
    EXPECT_EQ(readSoundTags(files.path("pipe.mp3")), SoundTags());
    EXPECT_EQ(readSoundTags(files.folder()), SoundTags());
    EXPECT_EQ(readSoundTags(files.write("Track01.cda", "RIFF")), SoundTags());
    EXPECT_EQ(readSoundTags(files.write("a.mp3", "ID3\3\0\0\0\0\x7F\x7F")), SoundTags());
    EXPECT_EQ(readSoundTags(""), SoundTags());
}

TEST_P(EveryTaggedFormat, DamagedTagsAreSafeToReadAndToWriteAgain)
{
    const Tagged& format = GetParam();
    SoundTags all = everyTag();
    all.cover = picture("small.jpg", "32x32");
    // Little sound, so that most of the damage meets the tags.
    const QByteArray good = contentOf(write(files.path(format.file), format.format, all, 3000));
    int told = 0;
    for (unsigned number = 0; number < 100; ++number) {
        const QByteArray bytes = Damage(number)(good);
        const SoundTags tags = readSoundTags(files.write(QStringLiteral("damaged-") + format.file, bytes));
        told += tags != SoundTags() ? 1 : 0;
        for (const QString& text : {tags.title, tags.artist, tags.album, tags.albumArtist, tags.track, tags.date})
            ASSERT_LE(text.size(), 1000) << number;
        const SoundTags kept = readSoundTags(write(files.path("again.flac"), sound::flacFormat(), tags, 100));
        ASSERT_EQ(kept.cover.size(), tags.cover.size()) << number;
    }
    EXPECT_GT(told, 3);  // the pages of an Ogg file are sealed, so that almost all damage takes them away
}

}  // namespace
