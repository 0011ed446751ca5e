#include "sound/media/DecodedSound.h"

#include "sound/SoundFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <array>
#include <chrono>

using sound::DecodedSound;
using sound::FrameCount;
using sound::FramePosition;
using sound::test::SoundFiles;

namespace {

EngineError errorOf(const QString& path)
{
    const auto opened = DecodedSound::open(path);
    EXPECT_EQ(opened.sound == nullptr, opened.error != EngineError::None);
    return opened.error;
}

/// Tells whether any file of a folder has been opened since.
class OpenWatch
{
public:
    explicit OpenWatch(const QString& folder)
        : watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        EXPECT_GE(::inotify_add_watch(watch, QFile::encodeName(folder).constData(), IN_OPEN | IN_ACCESS), 0);
    }
    ~OpenWatch() { ::close(watch); }

    bool sawSomething() const
    {
        std::array<char, 4096> events;
        return ::read(watch, events.data(), events.size()) > 0;
    }

private:
    int watch;
};

TEST(Opening, WhatIsNotThereOrNoSoundIsNoSoundFile)
{
    const SoundFiles files;
    EXPECT_EQ(errorOf(files.path("missing.wav")), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(""), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.write("empty.mp3", "")), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.write("text.mp3", QByteArray(10'000, 'a'))), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.write("zeros.mp3", QByteArray(100'000, '\0'))), EngineError::InvalidSoundFile);
}

TEST(Opening, AVideoWithoutASoundIsNoSoundFile)
{
    const SoundFiles files;
    const QString path = files.path("silent.mp4");
    ASSERT_TRUE(sound::test::runFfmpeg({"-f", "lavfi", "-i", "color=s=64x64:d=1", "-c:v", "mpeg4", path}));
    EXPECT_EQ(errorOf(path), EngineError::InvalidSoundFile);
}

TEST(Opening, OnlyRegularFilesAreOpenedAndNothingIsWaitedFor)
{
    const SoundFiles files;
    const QString pipe = files.path("pipe.wav");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QDir().mkpath(files.path("folder.wav")));
    ASSERT_TRUE(QFile::link(pipe, files.path("link.wav")));
    ASSERT_TRUE(QFile::link("/dev/zero", files.path("zero.wav")));
    const auto begin = std::chrono::steady_clock::now();
    for (const char* name : {"pipe.wav", "folder.wav", "link.wav", "zero.wav"})
        EXPECT_EQ(errorOf(files.path(name)), EngineError::InvalidSoundFile) << name;
    for (const char* device : {"/dev/zero", "/dev/null", "/dev/full", "/dev/tty", "/proc", "/"})
        EXPECT_EQ(errorOf(device), EngineError::InvalidSoundFile) << device;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

TEST(Opening, ANameIsANameWhateverItLooksLike)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(8000, 1, 1000);
    const QByteArray wave = sound::test::contentOf(files.make("a.wav", made, {"-c:a", "pcm_f32le"}));
    for (const QString& name :
         {QString("with space.wav"), QString("100%.wav"), QString("a%03d.wav"), QString("http:x.mp3"),
          QString("pipe:0"), QString("concat:a.wav|a.wav"), QString("line\nbreak.wav"), QString("-i.wav"),
          QString("*?[a].wav"), QString("\u00DCbung \u266B.wav"), QString("noextension"), QString(250, 'n')}) {
        const auto opened = DecodedSound::open(files.write(name, wave));
        ASSERT_TRUE(opened.sound) << name.toStdString();
        ASSERT_EQ(opened.sound->length().value, 1000) << name.toStdString();
        ASSERT_TRUE(opened.sound->waitFor(opened.sound->length()));
        std::vector<float> samples(1000);
        opened.sound->read(FramePosition{0}, FrameCount{1000}, samples.data());
        EXPECT_EQ(samples, made.samples) << name.toStdString();
    }
}

TEST(Opening, ANameThatNoFileCanBearIsNoSoundFile)
{
    const SoundFiles files;
    files.make("a.wav", sound::test::slideWithNoise(8000, 1, 1000));
    EXPECT_EQ(errorOf(files.path(QString(4096, 'n'))), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf("/" + QString(100'000, 'n')), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.path("a.wav") + QChar(0) + ".mp3"), EngineError::InvalidSoundFile);
    EXPECT_EQ(errorOf(files.path(QString(QChar(0xD800)) + ".wav")), EngineError::InvalidSoundFile);
}

TEST(Opening, APlaylistThatPosesAsASoundIsRefusedAndOpensNothing)
{
    const SoundFiles elsewhere;
    const QString target = elsewhere.make("target.mp3", sound::test::slideWithNoise(44100, 2, 88'200));
    const QString stream =
        elsewhere.make("target.ts", sound::test::slideWithNoise(44100, 2, 88'200), {"-c:a", "mp2"});
    const QByteArray name = target.toUtf8();
    const std::vector<QByteArray> lists = {
        "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\n" + name + "\n#EXT-X-ENDLIST\n",
        "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:2\n#EXTINF:2,\nfile://" + stream.toUtf8() +
            "\n#EXT-X-ENDLIST\n",
        "ffconcat version 1.0\nfile '" + name + "'\n",
        "<asx version=\"3.0\"><entry><ref href=\"" + name + "\"/></entry></asx>\n",
        "[playlist]\nFile1=" + name + "\nNumberOfEntries=1\n",
        "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\"><Period><AdaptationSet>"
        "<Representation id=\"1\" mimeType=\"audio/mp4\"><BaseURL>" +
            name +
            "</BaseURL></Representation>"
            "</AdaptationSet></Period></MPD>\n",
        "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nm=audio 5004 RTP/AVP 14\n",
    };
    const SoundFiles files;
    const OpenWatch watch(elsewhere.folder());
    for (const QByteArray& list : lists) {
        for (const char* poser : {"list.mp3", "list.m4a", "list.wav", "list.m3u8", "list.ffconcat"})
            EXPECT_EQ(errorOf(files.write(poser, list)), EngineError::InvalidSoundFile) << poser << '\n'
                                                                                        << list.data();
    }
    EXPECT_FALSE(watch.sawSomething());
    EXPECT_EQ(errorOf(target), EngineError::None);
    EXPECT_TRUE(watch.sawSomething());
}

TEST(Opening, AnMp4ThatRefersToAnotherFileOpensNothing)
{
    const SoundFiles elsewhere;
    const SoundFiles files;
    const QString whole = files.make("a.m4a", sound::test::slideWithNoise(44100, 2, 44'100), {"-c:a", "alac"});
    QByteArray bytes = sound::test::contentOf(whole);
    // The reference "the sound is in this file" becomes one to elsewhere.
    const qsizetype reference = bytes.indexOf("url ");
    ASSERT_GT(reference, 0);
    bytes[reference + 7] = '\0';
    elsewhere.write("a.m4a", bytes);
    const OpenWatch watch(elsewhere.folder());
    DecodedSound::open(files.write("referring.m4a", bytes));
    EXPECT_FALSE(watch.sawSomething());
}

TEST(Opening, ASoundCanBeClosedWhileItIsStillBeingDecoded)
{
    const SoundFiles files;
    const QString path = files.make("a.flac", sound::test::slideWithNoise(44100, 2, 60 * 44100));
    for (int i = 0; i < 10; ++i) {
        auto opened = DecodedSound::open(path);
        ASSERT_TRUE(opened.sound);
        const auto begin = std::chrono::steady_clock::now();
        opened.sound.reset();
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(500));
    }
}

TEST(Opening, TheBeginningCanBeWaitedForWithoutTheRest)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(44100, 2, 10 * 44100);
    const auto opened = DecodedSound::open(files.make("a.wav", made, {"-c:a", "pcm_f32le"}));
    ASSERT_TRUE(opened.sound);
    ASSERT_TRUE(opened.sound->waitFor(FrameCount{1000}));
    EXPECT_GE(opened.sound->available().value, 1000);
    std::vector<float> samples(2000);
    opened.sound->read(FramePosition{0}, FrameCount{1000}, samples.data());
    EXPECT_TRUE(std::equal(samples.begin(), samples.end(), made.samples.begin()));
    EXPECT_FALSE(opened.sound->waitFor(opened.sound->length() + FrameCount{1}));
    EXPECT_TRUE(opened.sound->finished());
    EXPECT_EQ(opened.sound->available(), opened.sound->length());
}

}  // namespace
