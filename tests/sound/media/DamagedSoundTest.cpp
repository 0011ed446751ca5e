#include "sound/media/DecodedSound.h"

#include "sound/Signals.h"
#include "sound/SoundFiles.h"
#include "sound/media/Damage.h"

#include <gtest/gtest.h>
#include <chrono>
#include <ostream>

using sound::DecodedSound;
using sound::FrameCount;
using sound::FramePosition;
using sound::test::Damage;
using sound::test::SoundFiles;

namespace {

constexpr int rate = 44100;
constexpr std::int64_t frames = 2 * rate + 321;

struct Format
{
    const char* name;
    const char* file;
    QStringList arguments;
};

void PrintTo(const Format& format, std::ostream* out)
{
    *out << format.name;
}

class DamagedSound : public ::testing::TestWithParam<Format>
{
protected:
    SoundFiles files;
};

TEST_P(DamagedSound, IsRefusedOrSafeToReadAndNeverLongerThanItsBytesBearOut)
{
    const Format& format = GetParam();
    const QByteArray good = sound::test::contentOf(
        files.make(format.file, sound::test::slideWithNoise(rate, 2, frames), format.arguments));
    int opened = 0;
    for (unsigned number = 0; number < 100; ++number) {
        const QString path = files.write(QStringLiteral("damaged-") + format.file, Damage(number)(good));
        const auto begin = std::chrono::steady_clock::now();
        const auto result = DecodedSound::open(path);
        ASSERT_EQ(result.sound == nullptr, result.error != EngineError::None) << number;
        if (result.sound) {
            ++opened;
            const DecodedSound& sound = *result.sound;
            ASSERT_GT(sound.length().value, 0) << number;
            ASSERT_LT(sound.length().value, 100 * frames) << number;
            ASSERT_TRUE(sound.waitFor(sound.length())) << number;
            EXPECT_EQ(sound.decodeError(), EngineError::None) << number;
            std::vector<float> samples(static_cast<std::size_t>(sound.length().value * sound.channels()));
            sound.read(FramePosition{0}, sound.length(), samples.data());
            ASSERT_TRUE(sound::test::allFinite(samples)) << number;
        }
        ASSERT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20)) << number;
    }
    EXPECT_GT(opened, 20);  // else the damage was such that nothing was tried
}

INSTANTIATE_TEST_SUITE_P(
    Media, DamagedSound,
    ::testing::Values(
        Format{"Wav", "a.wav", {}}, Format{"WavFloat", "a.wav", {"-c:a", "pcm_f32le"}},
        Format{"WavAdpcm", "a.wav", {"-c:a", "adpcm_ima_wav"}}, Format{"Wave64", "a.w64", {}},
        Format{"Rf64", "a.wav", {"-rf64", "always"}}, Format{"Aiff", "a.aiff", {}}, Format{"Mp3", "a.mp3", {}},
        Format{"Mp3WithoutTag", "a.mp3", {"-write_xing", "0", "-q:a", "4"}}, Format{"Mp2", "a.mp2", {}},
        Format{"OggVorbis", "a.ogg", {"-c:a", "libvorbis"}}, Format{"OggOpus", "a.opus", {"-c:a", "libopus"}},
        Format{"OggFlac", "a.ogg", {"-c:a", "flac"}}, Format{"Wma1", "a.wma", {"-c:a", "wmav1"}},
        Format{"Wma2", "a.wma", {"-c:a", "wmav2"}}, Format{"M4aAac", "a.m4a", {}},
        Format{"M4aAlac", "a.m4a", {"-c:a", "alac"}}, Format{"M4aHeadFirst", "a.m4a", {"-movflags", "+faststart"}},
        Format{"M4aFragmented", "a.m4a", {"-movflags", "+frag_keyframe+empty_moov"}}, Format{"Flac", "a.flac", {}},
        Format{"AacAdts", "a.aac", {}}, Format{"Ac3", "a.ac3", {}}, Format{"WavPack", "a.wv", {}}),
    [](const auto& info) { return info.param.name; });

/// A whole file whose header has been told a lie.
class ForgedHeader : public ::testing::Test
{
protected:
    QByteArray make(const char* name, const QStringList& arguments = {}) const
    {
        return sound::test::contentOf(files.make(name, sound::test::slideWithNoise(rate, 2, frames), arguments));
    }

    std::int64_t lengthOf(const char* name, const QByteArray& bytes) const
    {
        const auto opened = DecodedSound::open(files.write(name, bytes));
        return opened.sound ? opened.sound->length().value : 0;
    }

    static QByteArray with(QByteArray bytes, qsizetype place, const QByteArray& lie)
    {
        return bytes.replace(place, lie.size(), lie);
    }

    SoundFiles files;
};

TEST_F(ForgedHeader, WavSizesThatTheFileDoesNotHaveAreCutToWhatItHas)
{
    const QByteArray good = make("a.wav");
    const qsizetype data = good.indexOf("data") + 4;
    EXPECT_EQ(lengthOf("a.wav", with(good, data, "\xF0\xFF\xFF\x7F")), frames);
    EXPECT_EQ(lengthOf("a.wav", with(good, data, QByteArray(4, '\xFF'))), frames);
    EXPECT_EQ(lengthOf("a.wav", with(good, data, QByteArray(4, '\0'))), frames);
    EXPECT_EQ(lengthOf("a.wav", with(good, data, QByteArray("\x28\0\0\0", 4))), 10);
    EXPECT_EQ(lengthOf("a.wav", good.left(good.size() - 4001)), frames - 1001);
}

TEST_F(ForgedHeader, AWavWithoutSamplesIsRefusedAlsoWhereATagStandsBehindThem)
{
    const QByteArray good = make("a.wav");
    const qsizetype data = good.indexOf("data") + 4;
    const QByteArray tag("LIST\x14\0\0\0INFOIART\x08\0\0\0someone\0", 28);
    QByteArray empty = with(good.left(data + 4) + tag, data, QByteArray(4, '\0'));
    empty = with(empty, 4, QByteArray(1, static_cast<char>(empty.size() - 8)) + QByteArray(3, '\0'));
    ASSERT_LT(empty.size(), 128);
    EXPECT_EQ(lengthOf("a.wav", empty), 0);
}

TEST_F(ForgedHeader, AWavWithoutARateOrWithoutOrBeyondAllChannelsIsRefused)
{
    const QByteArray good = make("a.wav");
    const qsizetype format = good.indexOf("fmt ") + 8;
    EXPECT_EQ(lengthOf("a.wav", with(good, format + 4, QByteArray(4, '\0'))), 0);
    EXPECT_EQ(lengthOf("a.wav", with(good, format + 4, QByteArray(4, '\xFF'))), 0);
    EXPECT_EQ(lengthOf("a.wav", with(good, format + 2, QByteArray(2, '\0'))), 0);
    EXPECT_EQ(lengthOf("a.wav", with(good, format + 2, QByteArray(2, '\xFF'))), 0);
}

TEST_F(ForgedHeader, AFileOfAHeaderAloneIsRefused)
{
    const QByteArray wav = make("a.wav");
    EXPECT_EQ(lengthOf("a.wav", wav.left(wav.indexOf("data") + 8)), 0);
    const QByteArray flac = make("a.flac");
    EXPECT_EQ(lengthOf("a.flac", flac.left(flac.indexOf("\xFF\xF8"))), 0);
    EXPECT_EQ(lengthOf("a.wav", {}), 0);
    EXPECT_EQ(lengthOf("a.mp3", "ID3"), 0);
}

TEST_F(ForgedHeader, TheFlacTotalIsNotBelieved)
{
    const QByteArray good = make("a.flac");
    const auto withTotal = [&](const QByteArray& low) { return with(good, 4 + 4 + 14, low); };
    EXPECT_EQ(lengthOf("a.flac", withTotal(QByteArray(4, '\xFF'))), frames);
    EXPECT_EQ(lengthOf("a.flac", withTotal(QByteArray(4, '\0'))), frames);
    EXPECT_EQ(lengthOf("a.flac", withTotal(QByteArray("\0\0\0\x10", 4))), frames);
}

TEST_F(ForgedHeader, AFlacThatHasLostItsEndIsAsLongAsItsWholeBlocks)
{
    const QByteArray good = make("a.flac");
    const std::int64_t length = lengthOf("a.flac", good.left(good.size() / 2));
    EXPECT_GT(length, frames / 2 - 3 * 4608);
    EXPECT_LT(length, frames / 2 + 3 * 4608);
    EXPECT_EQ(length % 4608, 0);
}

TEST_F(ForgedHeader, TheFrameCountInAnMp3TagIsNotBelieved)
{
    const QByteArray good = make("a.mp3");
    const qsizetype count = good.indexOf("Xing") >= 0 ? good.indexOf("Xing") + 8 : good.indexOf("Info") + 8;
    ASSERT_EQ(lengthOf("a.mp3", good), frames);
    // With a wrong count the place of the padding is unknown, so that it stays: less than two coded frames.
    const std::int64_t length = lengthOf("a.mp3", with(good, count, "\x7F\xFF\xFF\xFF"));
    EXPECT_GE(length, frames);
    EXPECT_LT(length, frames + 2 * 1152);
}

TEST_F(ForgedHeader, TheLastPositionOfAnOggFileIsNotBelievedWhereItsSumIsWrong)
{
    const QByteArray good = make("a.ogg", {"-c:a", "libvorbis"});
    ASSERT_EQ(lengthOf("a.ogg", good), frames);
    const std::int64_t length = lengthOf("a.ogg", with(good, good.lastIndexOf("OggS") + 6, "\xFF\xFF\xFF\x7F"));
    EXPECT_GT(length, 0);
    EXPECT_LT(length, frames);
}

TEST_F(ForgedHeader, TheAiffFrameCountIsNotBelieved)
{
    const QByteArray good = make("a.aiff");
    EXPECT_EQ(lengthOf("a.aiff", with(good, good.indexOf("COMM") + 10, QByteArray(4, '\x7F'))), frames);
}

TEST_F(ForgedHeader, TheDurationsOfAnMp4AreNotBelieved)
{
    const QByteArray good = make("a.m4a");
    ASSERT_EQ(lengthOf("a.m4a", good), frames);
    const qsizetype media = good.indexOf("mdhd") + 4 + 16;
    const qsizetype edit = good.indexOf("elst") + 4 + 8;
    const QByteArray huge = "\x7F\xFF\xFF\xFF";
    EXPECT_LE(lengthOf("a.m4a", with(good, media, huge)), frames + 1024);
    EXPECT_EQ(lengthOf("a.m4a", with(good, edit, huge)), frames);
    const qsizetype times = good.indexOf("stts") + 4 + 8;  // count and length of the first run of coded frames
    EXPECT_LE(lengthOf("a.m4a", with(good, times + 4, huge)), frames + 2048);
}

TEST_F(ForgedHeader, AnMp4ThatHasLostItsEndIsAsLongAsTheCodedFramesThatAreLeft)
{
    const QByteArray good = make("a.m4a", {"-movflags", "+faststart"});
    const std::int64_t length = lengthOf("a.m4a", good.left(good.size() * 3 / 4));
    EXPECT_GT(length, frames / 2);
    EXPECT_LT(length, frames * 9 / 10);
}

/// What is lost in the middle must not move what follows.
TEST_F(ForgedHeader, WhatFollowsADamagedPlaceStaysWhereItBelongs)
{
    for (const auto& [name, arguments] :
         {std::pair<const char*, QStringList>("a.flac", {}), std::pair<const char*, QStringList>("a.wv", {}),
          std::pair<const char*, QStringList>("a.ogg", {"-c:a", "flac", "-page_duration", "100000"}),
          std::pair<const char*, QStringList>("a.m4a", {"-c:a", "alac"})}) {
        const QByteArray good = make(name, arguments);
        QByteArray damaged = good;
        damaged.replace(good.size() / 2, 300, QByteArray(300, '\x5A'));
        const auto whole = DecodedSound::open(files.write(name, good));
        const auto broken = DecodedSound::open(files.write(QStringLiteral("broken-") + name, damaged));
        ASSERT_TRUE(whole.sound && broken.sound) << name;
        ASSERT_EQ(broken.sound->length(), whole.sound->length()) << name;
        ASSERT_TRUE(whole.sound->waitFor(whole.sound->length()));
        ASSERT_TRUE(broken.sound->waitFor(broken.sound->length()));
        constexpr std::int64_t tail = 20'000;
        std::vector<float> expected(2 * tail);
        std::vector<float> actual(2 * tail);
        whole.sound->read(FramePosition{frames - tail}, FrameCount{tail}, expected.data());
        broken.sound->read(FramePosition{frames - tail}, FrameCount{tail}, actual.data());
        EXPECT_TRUE(actual == expected) << name;
    }
}

}  // namespace
