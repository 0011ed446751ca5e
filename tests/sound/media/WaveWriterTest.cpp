#include "sound/media/WaveWriter.h"

#include "sound/DiscOf.h"
#include "sound/SoundFiles.h"
#include "sound/media/DecodedSound.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <cmath>
#include <limits>

using sound::DecodedSound;
using sound::FrameCount;
using sound::SampleRate;
using sound::waveHead;
using sound::WaveSamples;
using sound::WaveWriter;
using sound::test::DiscOf;
using sound::test::everythingIn;
using sound::test::SoundFiles;

namespace {

QByteArray headBytes(WaveSamples samples, int channels, std::int64_t frames)
{
    const auto head = waveHead(SampleRate{44100}, channels, samples, FrameCount{frames});
    return {reinterpret_cast<const char*>(head.data()), static_cast<qsizetype>(head.size())};
}

std::uint64_t numberAt(const QByteArray& bytes, int place, int size)
{
    std::uint64_t number = 0;
    for (int i = size - 1; i >= 0; --i)
        number = number << 8 | static_cast<std::uint8_t>(bytes[place + i]);
    return number;
}

TEST(WaveHead, TellsTheSizesOfAShortFileInItsRiffChunks)
{
    const QByteArray head = headBytes(WaveSamples::Pcm16, 2, 1000);
    EXPECT_EQ(head.left(4), "RIFF");
    EXPECT_EQ(numberAt(head, 4, 4), static_cast<std::uint64_t>(head.size()) - 8 + 4000);
    EXPECT_EQ(head.mid(8, 8), "WAVEJUNK");
    EXPECT_EQ(head.mid(48, 4), "fmt ");
    EXPECT_EQ(numberAt(head, 56, 2), 1U);  // integers
    EXPECT_EQ(numberAt(head, 58, 2), 2U);
    EXPECT_EQ(numberAt(head, 60, 4), 44100U);
    EXPECT_EQ(numberAt(head, 64, 4), 176400U);
    EXPECT_EQ(numberAt(head, 68, 2), 4U);
    EXPECT_EQ(numberAt(head, 70, 2), 16U);
    EXPECT_EQ(head.mid(head.size() - 8, 4), "data");
    EXPECT_EQ(numberAt(head, static_cast<int>(head.size()) - 4, 4), 4000U);
}

TEST(WaveHead, BecomesRf64WhereTheSizesNeedMoreThan32Bits)
{
    constexpr std::int64_t frames = 1'000'000'000;
    const QByteArray head = headBytes(WaveSamples::Float32, 2, frames);
    EXPECT_EQ(head.size(), headBytes(WaveSamples::Float32, 2, 1).size());
    EXPECT_EQ(head.left(4), "RF64");
    EXPECT_EQ(numberAt(head, 4, 4), 0xFFFFFFFFU);
    EXPECT_EQ(head.mid(12, 4), "ds64");
    EXPECT_EQ(numberAt(head, 20, 8), static_cast<std::uint64_t>(head.size()) - 8 + 8'000'000'000U);
    EXPECT_EQ(numberAt(head, 28, 8), 8'000'000'000U);
    EXPECT_EQ(numberAt(head, 36, 8), 1'000'000'000U);
    EXPECT_EQ(numberAt(head, static_cast<int>(head.size()) - 4, 4), 0xFFFFFFFFU);
}

TEST(WaveHead, StaysPlainUpToTheLastSizeThatFits)
{
    const std::int64_t overhead = headBytes(WaveSamples::Pcm16, 1, 0).size() - 8;
    const std::int64_t mostFrames = (0xFFFFFFFFLL - overhead) / 2;
    EXPECT_EQ(headBytes(WaveSamples::Pcm16, 1, mostFrames).left(4), "RIFF");
    EXPECT_EQ(headBytes(WaveSamples::Pcm16, 1, mostFrames + 1).left(4), "RF64");
}

TEST(WaveWriter, WhatIsWrittenAsFloatsIsReadBackBitForBitByAnotherProgram)
{
    const SoundFiles files;
    const auto made = sound::test::slideWithNoise(48000, 2, 100'000);
    const QString path = files.path("new/folders/a.wav");
    const auto writer = WaveWriter::create(path, SampleRate{48000}, 2, WaveSamples::Float32);
    ASSERT_TRUE(writer);
    const std::span samples(made.samples);
    ASSERT_TRUE(writer->write(samples.first(70'002)));
    ASSERT_TRUE(writer->write(samples.subspan(70'002)));
    EXPECT_FALSE(QFile::exists(path));
    ASSERT_EQ(writer->finish(), EngineError::None);
    EXPECT_EQ(sound::test::decodedByFfmpeg(path, 2), made.samples);
    EXPECT_EQ(everythingIn(files.path("new/folders")), QStringList{"a.wav"});
}

TEST(WaveWriter, SixteenBitsAreRoundedToTheNearestStepAndCutAtFullScale)
{
    const SoundFiles files;
    const QString path = files.path("a.wav");
    const auto writer = WaveWriter::create(path, SampleRate{44100}, 1, WaveSamples::Pcm16);
    ASSERT_TRUE(writer);
    constexpr float step = 1.0F / 32768.0F;
    const std::vector<float> samples = {0.0F,
                                        0.4F * step,
                                        0.6F * step,
                                        -0.6F * step,
                                        1.0F,
                                        -1.0F,
                                        7.0F,
                                        -7.0F,
                                        0.25F,
                                        std::numeric_limits<float>::quiet_NaN(),
                                        std::numeric_limits<float>::infinity()};
    ASSERT_TRUE(writer->write(samples));
    ASSERT_EQ(writer->finish(), EngineError::None);
    const std::vector<float> expected = {0.0F,         0.0F,  step,  -step, 32767 * step, -1.0F,
                                         32767 * step, -1.0F, 0.25F, 0.0F,  32767 * step};
    EXPECT_EQ(sound::test::decodedByFfmpeg(path, 1), expected);
}

TEST(WaveWriter, EveryFormIsReadBackByAnotherProgram)
{
    const SoundFiles files;
    const QString path = files.path("a.wav");
    const std::vector<float> samples = {0.0F, 0.5F, -0.5F, -1.0F, 0.25F};
    for (const WaveSamples kind :
         {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24, WaveSamples::Pcm32, WaveSamples::Float32}) {
        const auto writer = WaveWriter::create(path, SampleRate{44100}, 1, kind);
        ASSERT_TRUE(writer);
        ASSERT_TRUE(writer->write(samples));
        ASSERT_EQ(writer->finish(), EngineError::None);
        EXPECT_EQ(sound::test::decodedByFfmpeg(path, 1), samples);
        EXPECT_EQ(sound::test::contentOf(path).size() % 2, 0);
    }
}

TEST(WaveWriter, AnUnfinishedFileLeavesNothingBehindAndTheOldOneUntouched)
{
    const SoundFiles files;
    const QString path = files.write("a.wav", "what was there before");
    {
        const auto writer = WaveWriter::create(path, SampleRate{44100}, 2, WaveSamples::Float32);
        ASSERT_TRUE(writer);
        ASSERT_TRUE(writer->write(std::vector<float>(200'000)));
    }
    EXPECT_EQ(sound::test::contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.wav"});
}

TEST(WaveWriter, AFullDiscIsToldAndLeavesTheOldFileUntouched)
{
    const SoundFiles files;
    const QString path = files.write("a.wav", "what was there before");
    {
        const auto writer = WaveWriter::create(path, SampleRate{44100}, 2, WaveSamples::Float32);
        ASSERT_TRUE(writer);
        const DiscOf full(600'000);
        const std::vector<float> second(88'200);
        int written = 0;
        while (written < 10 && writer->write(second))
            ++written;
        EXPECT_LT(written, 10);
        EXPECT_EQ(writer->finish(), EngineError::FileCreationFailed);
    }
    EXPECT_EQ(sound::test::contentOf(path), "what was there before");
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.wav"});
}

TEST(WaveWriter, ADiscThatFillsUpWithTheLastBytesIsToldAsWell)
{
    const SoundFiles files;
    const auto writer = WaveWriter::create(files.path("a.wav"), SampleRate{44100}, 1, WaveSamples::Pcm16);
    ASSERT_TRUE(writer);
    const DiscOf full(1000);
    EXPECT_TRUE(writer->write(std::vector<float>(5000)));  // still gathered
    EXPECT_EQ(writer->finish(), EngineError::FileCreationFailed);
    EXPECT_FALSE(QFile::exists(files.path("a.wav")));
}

TEST(WaveWriter, WhereNoFileCanBeMadeThereIsNoWriter)
{
    const SoundFiles files;
    const QString file = files.write("plain", "a file, no folder");
    EXPECT_FALSE(WaveWriter::create(file + "/a.wav", SampleRate{44100}, 2, WaveSamples::Float32));
    EXPECT_FALSE(WaveWriter::create(files.folder(), SampleRate{44100}, 2, WaveSamples::Float32));
    EXPECT_FALSE(WaveWriter::create("/proc/a.wav", SampleRate{44100}, 2, WaveSamples::Float32));
    EXPECT_FALSE(WaveWriter::create("/proc/new/a.wav", SampleRate{44100}, 2, WaveSamples::Float32));
    EXPECT_FALSE(WaveWriter::create("", SampleRate{44100}, 2, WaveSamples::Float32));
    EXPECT_FALSE(
        WaveWriter::create(files.path(QString(300, 'x') + "/a.wav"), SampleRate{44100}, 2, WaveSamples::Pcm16));
    EXPECT_FALSE(WaveWriter::create(files.path("a.wav"), SampleRate{44100}, 3, WaveSamples::Pcm16));
}

TEST(WaveWriter, AFolderThatTakesTheNameMeanwhileMakesFinishingFail)
{
    const SoundFiles files;
    const QString path = files.path("a.wav");
    auto writer = WaveWriter::create(path, SampleRate{44100}, 1, WaveSamples::Pcm16);
    ASSERT_TRUE(writer);
    ASSERT_TRUE(QDir().mkpath(path + "/inside"));
    EXPECT_EQ(writer->finish(), EngineError::FileCreationFailed);
    writer.reset();
    EXPECT_EQ(everythingIn(files.folder()), QStringList{"a.wav"});
}

}  // namespace
