#include "sound/media/SoundFileWriter.h"

#include "sound/SoundFiles.h"
#include "sound/media/WrittenSounds.h"

#include <gtest/gtest.h>
#include <QDir>
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <span>

using sound::SampleRate;
using sound::SoundFileWriter;
using sound::SoundFormat;
using sound::test::contentOf;
using sound::test::readSound;
using sound::test::slideWithNoise;
using sound::test::SoundFiles;
using sound::test::TestSound;
using sound::test::writeSound;

namespace {

/// All steps that there are, at random.
TestSound sixteenBitNoise()
{
    TestSound made{44100, 2, {}};
    std::minstd_rand random(5);
    for (int i = 0; i < 300'000; ++i)
        made.samples.push_back(static_cast<float>(static_cast<int>(random() % 65536) - 32768) / 32768.0F);
    return made;
}

TEST(WrittenFormats, ASoundOfSixteenBitsIsKeptBitForBit)
{
    const SoundFiles files;
    const TestSound made = sixteenBitNoise();
    for (const auto& [name, format] :
         {std::pair("a.wav", sound::wavFormat()), std::pair("a.flac", sound::flacFormat())}) {
        ASSERT_EQ(writeSound(files.path(name), format, made), EngineError::None);
        EXPECT_TRUE(readSound(files.path(name)).samples == made.samples) << name;
        EXPECT_TRUE(sound::test::decodedByFfmpeg(files.path(name), 2) == made.samples) << name;
    }
}

TEST(WrittenFormats, SilenceStaysSilence)
{
    const SoundFiles files;
    const TestSound made{44100, 2, std::vector<float>(88'200)};
    for (const auto& [name, format] :
         {std::pair("a.wav", sound::wavFormat()), std::pair("a.flac", sound::flacFormat())}) {
        ASSERT_EQ(writeSound(files.path(name), format, made), EngineError::None);
        EXPECT_EQ(readSound(files.path(name)).samples, made.samples) << name;
    }
}

TEST(WrittenFormats, TheEndIsExactWhereverInACodedFrameItLies)
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
            ASSERT_EQ(writeSound(files.path(name), format, made), EngineError::None);
            ASSERT_EQ(readSound(files.path(name)).frames(), frames) << name;
        }
    }
}

TEST(WrittenFormats, WhatIsBeyondFullScaleIsCutInSixteenBitsTurnedDownInAacAndElseKept)
{
    const SoundFiles files;
    const TestSound loud = sound::test::sine(440, 44100, 2, 44'100, 1.5);
    const auto loudestIn = [&](const SoundFormat& format) {
        EXPECT_EQ(writeSound(files.path("a"), format, loud), EngineError::None);
        const TestSound heard = readSound(files.path("a"));
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

TEST(WrittenFormats, AShortOggIsWholeWhereItsBlocksEndWithTheSoundToo)
{
    const SoundFiles files;
    for (const std::int64_t frames : {6400, 12'800, 44'032, 44'100}) {
        const TestSound made = sound::test::sine(440, 44100, 2, frames);
        ASSERT_EQ(writeSound(files.path("a.ogg"), sound::oggVorbisFormat(4), made), EngineError::None);
        EXPECT_EQ(readSound(files.path("a.ogg")).frames(), frames);
    }
}

std::int64_t bitsASecond(const SoundFormat& format, int channels)
{
    const SoundFiles files;
    constexpr int seconds = 20;
    EXPECT_EQ(writeSound(files.path("a"), format, slideWithNoise(44100, channels, seconds * 44100)),
              EngineError::None);
    return contentOf(files.path("a")).size() * 8 / seconds;
}

TEST(WrittenFormats, BitRatesAreThoseAskedFor)
{
    for (const int rate : {32'000, 64'000, 128'000, 192'000}) {
        EXPECT_NEAR(static_cast<double>(bitsASecond(sound::mp3Format(rate), 2)), rate, 0.02 * rate);
        EXPECT_NEAR(static_cast<double>(bitsASecond(sound::wmaFormat(rate), 2)), rate, 0.05 * rate + 2000);
    }
}

TEST(WrittenFormats, AnAacOfQuality100Takes96KilobitsAChannelAndOfQuality25HalfOfThat)
{
    for (const auto format : {&sound::aacFormat, &sound::mp4Format}) {
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(100), 2)), 192'000, 10'000);
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(100), 1)), 96'000, 5'000);
        EXPECT_NEAR(static_cast<double>(bitsASecond(format(25), 2)), 96'000, 5'000);
    }
}

TEST(WrittenFormats, AnOggOfHigherQualityIsLarger)
{
    const auto low = bitsASecond(sound::oggVorbisFormat(1), 2);
    const auto usual = bitsASecond(sound::oggVorbisFormat(4), 2);
    EXPECT_GT(usual, low * 5 / 4);
    EXPECT_GT(bitsASecond(sound::oggVorbisFormat(8), 2), usual * 5 / 4);
}

TEST(WrittenFormats, WhatAFormatCannotHoldIsRefusedAndLeavesNothing)
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
    EXPECT_TRUE(QDir(files.folder()).isEmpty());
}

}  // namespace
