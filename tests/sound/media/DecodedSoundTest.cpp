#include "sound/media/DecodedSound.h"

#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstring>
#include <ostream>
#include <random>

using sound::DecodedSound;
using sound::FrameCount;
using sound::FramePosition;
using sound::testing::SoundFiles;
using sound::testing::TestSound;

namespace {

std::vector<float> framesOf(const DecodedSound& sound, std::int64_t from, std::int64_t count)
{
    std::vector<float> samples(static_cast<std::size_t>(count * sound.channels()));
    sound.read(FramePosition{from}, FrameCount{count}, samples.data());
    return samples;
}

bool sameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

struct Format
{
    const char* name;
    const char* file;
    QStringList arguments;
    int rate = 44100;
    int channels = 2;
    int ratePlayed = 0;         // where the encoder decides it: Opus is always 48 kHz
    std::int64_t cutAtEnd = 0;  // frames that the linear decode has more than the container says there are
};

void PrintTo(const Format& format, std::ostream* out)
{
    *out << format.name;
}

class EveryFormat : public ::testing::TestWithParam<Format>
{
protected:
    SoundFiles files;
};

TEST_P(EveryFormat, HoldsEveryFrameOfTheLinearDecodeWhereverItIsRead)
{
    const Format& format = GetParam();
    const TestSound made = sound::testing::slideWithNoise(format.rate, format.channels, 7 * format.rate + 1234);
    const QString path = files.make(format.file, made, format.arguments);
    const int channels = std::min(format.channels, 2);
    std::vector<float> linear = sound::testing::decodedByFfmpeg(path, channels);
    linear.resize(linear.size() - static_cast<std::size_t>(format.cutAtEnd * channels));
    ASSERT_GE(linear.size(), made.samples.size() / static_cast<std::size_t>(format.channels) / 2);

    const auto opened = DecodedSound::open(path);
    ASSERT_TRUE(opened.sound);
    EXPECT_EQ(opened.error, EngineError::None);
    const DecodedSound& sound = *opened.sound;
    EXPECT_EQ(sound.rate().hertz, format.ratePlayed != 0 ? format.ratePlayed : format.rate);
    EXPECT_EQ(sound.channels(), channels);
    const auto frames = static_cast<std::int64_t>(linear.size()) / channels;
    ASSERT_EQ(sound.length().value, frames);

    ASSERT_TRUE(sound.waitFor(sound.length()));
    EXPECT_TRUE(sameBits(framesOf(sound, 0, frames), linear));
    std::minstd_rand places(7);
    for (int i = 0; i < 1000; ++i) {
        const auto from = static_cast<std::int64_t>(places() % static_cast<unsigned>(frames - 300));
        const std::int64_t count = 1 + static_cast<std::int64_t>(places() % 300);
        const auto begin = linear.begin() + from * channels;
        ASSERT_TRUE(sameBits(framesOf(sound, from, count), {begin, begin + count * channels})) << "from " << from;
    }
}

INSTANTIATE_TEST_SUITE_P(Media, EveryFormat,
                         ::testing::Values(Format{"Wav16", "a.wav", {}},
                                           Format{"WavFloat", "a.wav", {"-c:a", "pcm_f32le"}},
                                           Format{"Mp3", "a.mp3", {"-b:a", "192k"}}, Format{"Flac", "a.flac", {}},
                                           Format{"M4aAac", "a.m4a", {}}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
