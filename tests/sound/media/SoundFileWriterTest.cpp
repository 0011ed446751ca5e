#include "sound/media/SoundFileWriter.h"

#include "sound/CopyOfProcess.h"
#include "sound/DiscOf.h"
#include "sound/NamelessFiles.h"
#include "sound/SoundFiles.h"
#include "sound/media/OpenedFrames.h"

#include <gtest/gtest.h>
#include <QDir>
#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

using sound::SampleRate;
using sound::SoundFileWriter;
using sound::SoundFormat;
using sound::test::contentOf;
using sound::test::DiscOf;
using sound::test::slideWithNoise;
using sound::test::SoundFiles;
using sound::test::TestSound;

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

QStringList everythingIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// In pieces of many sizes, as they come.
bool writeAll(SoundFileWriter& writer, const TestSound& sound)
{
    std::minstd_rand sizes(3);
    for (std::span<const float> rest(sound.samples); !rest.empty();) {
        const std::size_t frames = 1 + sizes() % 9000;
        const auto piece = rest.first(std::min(rest.size(), frames * static_cast<std::size_t>(sound.channels)));
        if (!writer.write(piece))
            return false;
        rest = rest.subspan(piece.size());
    }
    return true;
}

EngineError write(const QString& path, const SoundFormat& format, const TestSound& sound)
{
    const auto opened = SoundFileWriter::create(path, format, SampleRate{sound.rate}, sound.channels);
    EXPECT_EQ(opened.writer == nullptr, opened.error != EngineError::None);
    if (!opened.writer)
        return opened.error;
    const bool all = writeAll(*opened.writer, sound);
    const EngineError error = opened.writer->finish();
    EXPECT_TRUE(all || error != EngineError::None);
    return error;
}

TestSound read(const QString& path)
{
    const auto opened = sound::openFrames(path);
    if (!opened.stream)
        return {};
    TestSound sound{opened.stream->rate().hertz, opened.stream->channels(), {}};
    while (opened.stream->next(sound.samples)) {
    }
    EXPECT_EQ(opened.stream->length().value, sound.frames()) << path.toStdString();
    return sound;
}

double likeness(std::span<const float> one, std::span<const float> other)
{
    double product = 0;
    double ones = 1e-30;
    double others = 1e-30;
    for (std::size_t i = 0; i < one.size(); ++i) {
        product += double{one[i]} * other[i];
        ones += double{one[i]} * one[i];
        others += double{other[i]} * other[i];
    }
    return product / std::sqrt(ones * others);
}

/// How many frames late the frames from @p from on come in @p heard: where they are most like.
std::int64_t latenessOf(const TestSound& made, const TestSound& heard, std::int64_t from, std::int64_t frames)
{
    constexpr std::int64_t farthest = 2100;
    const auto stretch = [](const TestSound& sound, std::int64_t begin, std::int64_t count) {
        return std::span(sound.samples)
            .subspan(static_cast<std::size_t>(begin * sound.channels),
                     static_cast<std::size_t>(count * sound.channels));
    };
    double best = -1;
    std::int64_t lateness = -farthest;
    const std::int64_t first = std::max(-farthest, -from);
    const std::int64_t last = std::min(farthest, heard.frames() - frames - from);
    for (std::int64_t late = first; late <= last; ++late) {
        const double like = likeness(stretch(made, from, frames), stretch(heard, from + late, frames));
        if (like > best) {
            best = like;
            lateness = late;
        }
    }
    EXPECT_GT(best, 0.98);
    return lateness;
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
        ASSERT_EQ(write(path, written.format, made), EngineError::None) << rate;
        const TestSound heard = read(path);
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
    ASSERT_EQ(write(path, written.format, slideWithNoise(44100, 2, 100'001)), EngineError::None);
    auto expected = sound::test::decodedByFfmpeg(path, 2);
    const TestSound heard = read(path);
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
    ASSERT_EQ(write(files.path("1"), written.format, made), EngineError::None);
    ASSERT_EQ(write(files.path("2"), written.format, made), EngineError::None);
    EXPECT_TRUE(contentOf(files.path("1")) == contentOf(files.path("2")));
}

TEST_P(EveryWrittenFormat, CanBeEmptyOrShorterThanACodedFrame)
{
    const Written& written = GetParam();
    for (const std::int64_t frames : {0, 1, 2, 500, 1151})
        EXPECT_EQ(write(files.path(written.file), written.format, slideWithNoise(44100, 2, frames)),
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
    ASSERT_EQ(write(path, written.format, made), EngineError::None);
    const TestSound heard = read(path);
    EXPECT_TRUE(std::ranges::all_of(heard.samples, [](float sample) { return std::isfinite(sample); }));
    EXPECT_EQ(latenessOf(good, heard, 10'000, 2500), written.silenceBefore);
    EXPECT_EQ(latenessOf(good, heard, 100'000, 2500), written.silenceBefore);
}

TEST_P(EveryWrittenFormat, AFullDiscIsToldWhereverItFillsUpAndLeavesTheOldFile)
{
    const Written& written = GetParam();
    const TestSound made = slideWithNoise(44100, 2, 2 * 44100);
    const QString path = files.path(written.file);
    ASSERT_EQ(write(path, written.format, made), EngineError::None);
    const auto size = static_cast<rlim_t>(contentOf(path).size());
    files.write(written.file, "what was there before");
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{500}, size / 2, size - 1}) {
        {
            const DiscOf disc(room);
            EXPECT_EQ(write(path, written.format, made), EngineError::FileCreationFailed) << room;
        }
        EXPECT_EQ(contentOf(path), "what was there before");
        EXPECT_EQ(everythingIn(files.folder()), QStringList{written.file}) << room;
    }
    const DiscOf disc(size);
    EXPECT_EQ(write(path, written.format, made), EngineError::None);
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

/// All steps that there are, at random.
TestSound sixteenBitNoise()
{
    TestSound made{44100, 2, {}};
    std::minstd_rand random(5);
    for (int i = 0; i < 300'000; ++i)
        made.samples.push_back(static_cast<float>(static_cast<int>(random() % 65536) - 32768) / 32768.0F);
    return made;
}

TEST(SoundFileWriter, ASoundOfSixteenBitsIsKeptBitForBit)
{
    const SoundFiles files;
    const TestSound made = sixteenBitNoise();
    for (const auto& [name, format] :
         {std::pair("a.wav", sound::wavFormat()), std::pair("a.flac", sound::flacFormat())}) {
        ASSERT_EQ(write(files.path(name), format, made), EngineError::None);
        EXPECT_TRUE(read(files.path(name)).samples == made.samples) << name;
        EXPECT_TRUE(sound::test::decodedByFfmpeg(files.path(name), 2) == made.samples) << name;
    }
}

TEST(SoundFileWriter, SilenceStaysSilence)
{
    const SoundFiles files;
    const TestSound made{44100, 2, std::vector<float>(88'200)};
    for (const auto& [name, format] :
         {std::pair("a.wav", sound::wavFormat()), std::pair("a.flac", sound::flacFormat())}) {
        ASSERT_EQ(write(files.path(name), format, made), EngineError::None);
        EXPECT_EQ(read(files.path(name)).samples, made.samples) << name;
    }
}

TEST(SoundFileWriter, TheEndIsExactWhereverInACodedFrameItLies)
{
    const SoundFiles files;
    constexpr std::int64_t longestCodedFrame = 1152;
    const TestSound longest = slideWithNoise(44100, 1, 50'000 + longestCodedFrame);
    for (const auto& [name, format] :
         {std::pair("a.mp3", sound::mp3Format(128'000)), std::pair("a.ogg", sound::oggVorbisFormat(4)),
          std::pair("a.mp4", sound::mp4Format(100)), std::pair("a.flac", sound::flacFormat())}) {
        for (std::int64_t frames = 50'000; frames < longest.frames(); frames += 29) {
            TestSound made = longest;
            made.samples.resize(static_cast<std::size_t>(frames));
            ASSERT_EQ(write(files.path(name), format, made), EngineError::None);
            ASSERT_EQ(read(files.path(name)).frames(), frames) << name;
        }
    }
}

TEST(SoundFileWriter, WhatIsBeyondFullScaleIsCutInSixteenBitsTurnedDownInAacAndElseKept)
{
    const SoundFiles files;
    const TestSound loud = sound::test::sine(440, 44100, 2, 44'100, 1.5);
    const auto loudestIn = [&](const SoundFormat& format) {
        EXPECT_EQ(write(files.path("a"), format, loud), EngineError::None);
        const TestSound heard = read(files.path("a"));
        // In the middle, where no encoder still starts up.
        const auto middle = std::span(heard.samples).subspan(40'000, 20'000);
        return std::abs(*std::ranges::max_element(middle, {}, [](float sample) { return std::abs(sample); }));
    };
    for (const auto& format : {sound::wavFormat(), sound::flacFormat()})
        EXPECT_EQ(loudestIn(format), 1.0F);
    for (const auto& format : {sound::mp3Format(128'000), sound::wmaFormat(128'000), sound::oggVorbisFormat(4)})
        EXPECT_NEAR(loudestIn(format), 1.5F, 0.1F);
    for (const auto& format : {sound::aacFormat(100), sound::mp4Format(100)})  // whose encoder turns it down
        EXPECT_NEAR(loudestIn(format), 0.95F, 0.02F);
}

TEST(SoundFileWriter, AShortOggIsWholeWhereItsBlocksEndWithTheSoundToo)
{
    const SoundFiles files;
    for (const std::int64_t frames : {6400, 12'800, 44'032, 44'100}) {
        const TestSound made = sound::test::sine(440, 44100, 2, frames);
        ASSERT_EQ(write(files.path("a.ogg"), sound::oggVorbisFormat(4), made), EngineError::None);
        EXPECT_EQ(read(files.path("a.ogg")).frames(), frames);
    }
}

std::int64_t bitsASecond(const SoundFormat& format, int channels)
{
    const SoundFiles files;
    constexpr int seconds = 20;
    EXPECT_EQ(write(files.path("a"), format, slideWithNoise(44100, channels, seconds * 44100)), EngineError::None);
    return contentOf(files.path("a")).size() * 8 / seconds;
}

TEST(SoundFileWriter, BitRatesAreThoseAskedFor)
{
    for (const int rate : {32'000, 64'000, 128'000, 192'000}) {
        EXPECT_NEAR(static_cast<double>(bitsASecond(sound::mp3Format(rate), 2)), rate, 0.02 * rate);
        EXPECT_NEAR(static_cast<double>(bitsASecond(sound::wmaFormat(rate), 2)), rate, 0.05 * rate + 2000);
    }
}

TEST(SoundFileWriter, AnAacOfQuality100Takes96KilobitsAChannelAndOfQuality25HalfOfThat)
{
    for (const auto format : {&sound::aacFormat, &sound::mp4Format}) {
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(100), 2)), 192'000, 10'000);
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(100), 1)), 96'000, 5'000);
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(25), 2)), 96'000, 5'000);
    }
}

TEST(SoundFileWriter, AnOggOfHigherQualityIsLarger)
{
    const auto low = bitsASecond(sound::oggVorbisFormat(1), 2);
    const auto usual = bitsASecond(sound::oggVorbisFormat(4), 2);
    EXPECT_GT(usual, low * 5 / 4);
    EXPECT_GT(bitsASecond(sound::oggVorbisFormat(8), 2), usual * 5 / 4);
}

TEST(SoundFileWriter, WhatAFormatCannotHoldIsRefusedAndLeavesNothing)
{
    const SoundFiles files;
    const auto errorOf = [&files](const SoundFormat& format, int rate, int channels) {
        return SoundFileWriter::create(files.path("new/a"), format, SampleRate{rate}, channels).error;
    };
    for (const auto& format :
         {sound::wavFormat(), sound::mp3Format(128'000), sound::wmaFormat(128'000), sound::oggVorbisFormat(4),
          sound::aacFormat(100), sound::mp4Format(100), sound::flacFormat()}) {
        EXPECT_EQ(errorOf(format, 44100, 0), EngineError::InvalidExportSettings);
        EXPECT_EQ(errorOf(format, 44100, 3), EngineError::InvalidExportSettings);
        EXPECT_EQ(errorOf(format, 0, 2), EngineError::InvalidExportSettings);
        EXPECT_EQ(errorOf(format, -44100, 2), EngineError::InvalidExportSettings);
    }
    EXPECT_EQ(errorOf(sound::mp3Format(128'000), 22500, 2), EngineError::InvalidExportSettings);
    EXPECT_EQ(errorOf(sound::wmaFormat(128'000), 96000, 2), EngineError::InvalidExportSettings);
    for (const int rate : {0, -1, 1'000'000'000}) {
        EXPECT_EQ(errorOf(sound::mp3Format(rate), 44100, 2), EngineError::InvalidExportSettings) << rate;
        EXPECT_EQ(errorOf(sound::wmaFormat(rate), 44100, 2), EngineError::InvalidExportSettings) << rate;
    }
    for (const double quality : {-1.0, 11.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(errorOf(sound::oggVorbisFormat(quality), 44100, 2), EngineError::InvalidExportSettings)
            << quality;
    for (const double quality : {-1.0, 0.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(errorOf(sound::aacFormat(quality), 44100, 2), EngineError::InvalidExportSettings) << quality;
    EXPECT_EQ(everythingIn(files.folder()), QStringList());
}

}  // namespace
