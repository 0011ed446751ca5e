#include "sound/media/SoundFileWriter.h"

#include "sound/CopyOfProcess.h"
#include "sound/DiscOf.h"
#include "sound/NamelessFiles.h"
#include "sound/SoundFiles.h"
#include "sound/media/WrittenSounds.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

using sound::SampleRate;
using sound::SoundFileWriter;
using sound::SoundFormat;
using sound::test::contentOf;
using sound::test::DiscOf;
using sound::test::everythingIn;
using sound::test::latenessOf;
using sound::test::readSound;
using sound::test::slideWithNoise;
using sound::test::SoundFiles;
using sound::test::TestSound;
using sound::test::writeAll;
using sound::test::writeSound;

namespace {

struct Written
{
    const char* name;
    const char* file;
    SoundFormat format;
    std::int64_t silenceBefore = 0;  // that the format cannot tell from the sound
    std::int64_t silenceBehind = 0;
    std::int64_t block = 1;        // of which it holds whole ones only
    bool paddingIsPlayed = false;  // by the ffmpeg program, though the container tells where the sound ends
};

void PrintTo(const Written& written, std::ostream* out)
{
    *out << written.name;
}

class EveryWrittenFormat : public ::testing::TestWithParam<Written>
{
protected:
    SoundFiles files;
};

TEST_P(EveryWrittenFormat, HoldsAllFramesEachInItsPlace)
{
    const Written& written = GetParam();
    const QString path = files.path(written.file);
    for (const auto& [rate, channels] : {std::pair(44100, 2), std::pair(48000, 1), std::pair(22050, 2)}) {
        const TestSound made = slideWithNoise(rate, channels, 3 * rate + 777);
        ASSERT_EQ(writeSound(path, written.format, made), EngineError::None) << rate;
        const TestSound heard = readSound(path);
        EXPECT_EQ(heard.rate, rate);
        ASSERT_EQ(heard.channels, channels);
        // Up to that rate a coded frame of WMA is half as long.
        const bool halved = written.format.family == SoundFormat::Family::Wma && rate == 22050;
        const std::int64_t block = halved ? written.block / 2 : written.block;
        const std::int64_t around =
            written.silenceBefore + (halved ? written.silenceBehind / 2 : written.silenceBehind);
        EXPECT_EQ(heard.frames(), (made.frames() + around + block - 1) / block * block) << rate;
        constexpr std::int64_t looked = 2500;
        for (const std::int64_t from : {std::int64_t{0}, made.frames() / 2, made.frames() - looked})
            EXPECT_EQ(latenessOf(made, heard, from, looked), written.silenceBefore) << rate << " from " << from;
    }
}

TEST_P(EveryWrittenFormat, IsTheSameSoundToAnotherProgram)
{
    const Written& written = GetParam();
    const QString path = files.path(written.file);
    ASSERT_EQ(writeSound(path, written.format, slideWithNoise(44100, 2, 100'001)), EngineError::None);
    auto expected = sound::test::decodedByFfmpeg(path, 2);
    const TestSound heard = readSound(path);
    if (written.paddingIsPlayed) {
        EXPECT_LT(expected.size(), heard.samples.size() + 2 * 1024);
        expected.resize(heard.samples.size());
    }
    EXPECT_TRUE(heard.samples == expected);
}

TEST_P(EveryWrittenFormat, IsTheSameFileEachTime)
{
    const Written& written = GetParam();
    const TestSound made = slideWithNoise(44100, 2, 50'000);
    ASSERT_EQ(writeSound(files.path("1"), written.format, made), EngineError::None);
    ASSERT_EQ(writeSound(files.path("2"), written.format, made), EngineError::None);
    EXPECT_TRUE(contentOf(files.path("1")) == contentOf(files.path("2")));
}

TEST_P(EveryWrittenFormat, CanBeEmptyOrShorterThanACodedFrame)
{
    const Written& written = GetParam();
    for (const std::int64_t frames : {0, 1, 2, 500, 1151})
        EXPECT_EQ(writeSound(files.path(written.file), written.format, slideWithNoise(44100, 2, frames)),
                  EngineError::None)
            << frames;
    EXPECT_EQ(everythingIn(files.folder()), QStringList{written.file});
}

TEST_P(EveryWrittenFormat, WhatIsNoNumberOrAbsurdlyLoudDoesNotSpoilTheRest)
{
    const Written& written = GetParam();
    TestSound made = slideWithNoise(44100, 2, 3 * 44100);
    const TestSound good = made;
    using Limits = std::numeric_limits<float>;
    const std::array<float, 6> bad = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                                      Limits::max(),       -Limits::max(),     Limits::denorm_min()};
    for (std::size_t i = 0; i < 2000; ++i)
        made.samples[88'200 + i] = bad[i % bad.size()];
    const QString path = files.path(written.file);
    ASSERT_EQ(writeSound(path, written.format, made), EngineError::None);
    const TestSound heard = readSound(path);
    EXPECT_TRUE(std::ranges::all_of(heard.samples, [](float sample) { return std::isfinite(sample); }));
    EXPECT_EQ(latenessOf(good, heard, 10'000, 2500), written.silenceBefore);
    EXPECT_EQ(latenessOf(good, heard, 100'000, 2500), written.silenceBefore);
}

TEST_P(EveryWrittenFormat, AFullDiscIsToldWhereverItFillsUpAndLeavesTheOldFile)
{
    const Written& written = GetParam();
    const TestSound made = slideWithNoise(44100, 2, 2 * 44100);
    const QString path = files.path(written.file);
    ASSERT_EQ(writeSound(path, written.format, made), EngineError::None);
    const auto size = static_cast<rlim_t>(contentOf(path).size());
    files.write(written.file, "what was there before");
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{500}, size / 2, size - 1}) {
        {
            const DiscOf disc(room);
            EXPECT_EQ(writeSound(path, written.format, made), EngineError::FileCreationFailed) << room;
        }
        EXPECT_EQ(contentOf(path), "what was there before");
        EXPECT_EQ(everythingIn(files.folder()), QStringList{written.file}) << room;
    }
    const DiscOf disc(size);
    EXPECT_EQ(writeSound(path, written.format, made), EngineError::None);
}

TEST_P(EveryWrittenFormat, UnfinishedLeavesNothing)
{
    const Written& written = GetParam();
    const TestSound made = slideWithNoise(44100, 2, 88'200);
    {
        const auto opened = SoundFileWriter::create(files.path(written.file), written.format, SampleRate{44100}, 2);
        ASSERT_TRUE(opened.writer);
        EXPECT_TRUE(writeAll(*opened.writer, made));
    }
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
}

TEST_P(EveryWrittenFormat, AProgramThatIsKilledLeavesTheFolderAsItWas)
{
    if (!sound::test::knowsNamelessFiles(files.folder()))
        GTEST_SKIP() << "the file system of " << files.folder().toStdString() << " knows no files without a name";
    const Written& written = GetParam();
    const TestSound made = slideWithNoise(44100, 2, 88'200);
    const QString path = files.write(written.file, "what was there before");
    sound::test::doAndBeKilled<std::unique_ptr<SoundFileWriter>>([&] {
        auto opened = SoundFileWriter::create(path, written.format, SampleRate{44100}, 2);
        return opened.writer && writeAll(*opened.writer, made) ? std::move(opened.writer) : nullptr;
    });
    EXPECT_EQ(contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{written.file});
}

TEST_P(EveryWrittenFormat, WhereNoFileCanBeMadeThereIsNoWriter)
{
    const Written& written = GetParam();
    const QString file = files.write("plain", "a file, no folder");
    for (const QString& path : {file + "/a", files.folder(), QString("/proc/a"), QString("/dev/full"), QString()}) {
        const auto opened = SoundFileWriter::create(path, written.format, SampleRate{44100}, 2);
        EXPECT_FALSE(opened.writer) << path.toStdString();
        EXPECT_EQ(opened.error, EngineError::FileCreationFailed) << path.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Media, EveryWrittenFormat,
                         ::testing::Values(Written{"Wav", "a.wav", sound::wavFormat()},
                                           Written{"Mp3", "a.mp3", sound::mp3Format(128'000)},
                                           Written{"Wma", "a.wma", sound::wmaFormat(128'000), 0, 2048, 2048},
                                           Written{"OggVorbis", "a.ogg", sound::oggVorbisFormat(4)},
                                           Written{"Aac", "a.aac", sound::aacFormat(100), 1024, 0, 1024},
                                           Written{"Mp4", "a.mp4", sound::mp4Format(100), 0, 0, 1, true},
                                           Written{"Flac", "a.flac", sound::flacFormat()}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
