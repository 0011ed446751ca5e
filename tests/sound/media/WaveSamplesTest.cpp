#include "sound/media/WaveSamples.h"

#include <gtest/gtest.h>
#include <bit>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace sound;

namespace {

using Packed = std::vector<std::uint8_t>;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();

std::vector<float> unpacked(WaveSamples kind, const Packed& packed)
{
    std::vector<float> samples(packed.size() / static_cast<std::size_t>(bytesPerSample(kind)));
    unpackSamples(kind, packed, samples);
    return samples;
}

Packed packed(WaveSamples kind, const std::vector<float>& samples)
{
    Packed bytes(samples.size() * static_cast<std::size_t>(bytesPerSample(kind)));
    packSamples(kind, samples, bytes);
    return bytes;
}

Packed changed(WaveSamples kind, Packed bytes, const std::vector<float>& after)
{
    changeSamples(kind, unpacked(kind, bytes), after, bytes);
    return bytes;
}

Packed randomBytes(std::size_t count)
{
    std::minstd_rand random(1);
    Packed bytes(count);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random() >> 8);
    return bytes;
}

TEST(WaveSamples, IntegersAreDividedByTheirFullScale)
{
    EXPECT_EQ(unpacked(WaveSamples::Pcm8, {0x80, 0xFF, 0x00, 0xC0}),
              (std::vector<float>{0, 127.0F / 128, -1, 0.5F}));
    EXPECT_EQ(unpacked(WaveSamples::Pcm16, {0, 0, 0xFF, 0x7F, 0x00, 0x80, 0xFF, 0xFF}),
              (std::vector<float>{0, 32767.0F / 32768, -1, -1.0F / 32768}));
    EXPECT_EQ(unpacked(WaveSamples::Pcm24, {0, 0, 0, 0xFF, 0xFF, 0x7F, 0, 0, 0x80, 0xFF, 0xFF, 0xFF}),
              (std::vector<float>{0, 8388607.0F / 8388608, -1, -1.0F / 8388608}));
    EXPECT_EQ(unpacked(WaveSamples::Pcm32, {0, 0, 0, 0, 0, 0, 0, 0x40, 0, 0, 0, 0x80, 0xFF, 0xFF, 0xFF, 0xFF}),
              (std::vector<float>{0, 0.5F, -1, -1.0F / 2147483648.0F}));
}

TEST(WaveSamples, FloatsAreWhatTheyAreAndSilenceWhereTheyAreNoFiniteNumber)
{
    const std::vector<float> samples = {0.0F, 1e-40F, -7.5F, 1e30F, infinity, -infinity, noNumber};
    EXPECT_EQ(unpacked(WaveSamples::Float32, packed(WaveSamples::Float32, samples)),
              (std::vector<float>{0.0F, 1e-40F, -7.5F, 1e30F, 0, 0, 0}));
}

TEST(WaveSamples, IntegersThatAFloatHoldsComeBackToTheBit)
{
    for (const WaveSamples kind : {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24}) {
        const Packed bytes = randomBytes(60'000);
        EXPECT_EQ(packed(kind, unpacked(kind, bytes)), bytes);
    }
}

TEST(WaveSamples, IntegersAreRoundedToTheNearestStepAndCutAtFullScale)
{
    const std::vector<float> beyond = {1.0F, 7.0F, infinity, -1.0F, -7.0F, -infinity, noNumber};
    EXPECT_EQ(packed(WaveSamples::Pcm8, beyond), (Packed{0xFF, 0xFF, 0xFF, 0, 0, 0, 0x80}));
    EXPECT_EQ(packed(WaveSamples::Pcm16, beyond),
              (Packed{0xFF, 0x7F, 0xFF, 0x7F, 0xFF, 0x7F, 0, 0x80, 0, 0x80, 0, 0x80, 0, 0}));
    EXPECT_EQ(packed(WaveSamples::Pcm32, {1.0F, -7.0F}), (Packed{0xFF, 0xFF, 0xFF, 0x7F, 0, 0, 0, 0x80}));
    EXPECT_EQ(packed(WaveSamples::Pcm24, {1.0F, -7.0F}), (Packed{0xFF, 0xFF, 0x7F, 0, 0, 0x80}));

    const auto steps = [](double count, double fullScale) { return static_cast<float>(count / fullScale); };
    EXPECT_EQ(packed(WaveSamples::Pcm8, {steps(0.4, 128), steps(0.6, 128), steps(-0.6, 128), steps(-1.4, 128)}),
              (Packed{128, 129, 127, 127}));
    EXPECT_EQ(packed(WaveSamples::Pcm16, {steps(0.4, 32768), steps(0.6, 32768), steps(-0.6, 32768)}),
              (Packed{0, 0, 1, 0, 0xFF, 0xFF}));
    EXPECT_EQ(packed(WaveSamples::Pcm24, {steps(0.4, 8388608), steps(0.6, 8388608), steps(-0.6, 8388608)}),
              (Packed{0, 0, 0, 1, 0, 0, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(packed(WaveSamples::Pcm32, {steps(0.4, 2147483648.0), steps(-0.6, 2147483648.0)}),
              (Packed{0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(WaveSamples, WhatHasNotChangedStaysTheSameToTheBitInEveryForm)
{
    for (const WaveSamples kind : {WaveSamples::Pcm8, WaveSamples::Pcm16, WaveSamples::Pcm24, WaveSamples::Pcm32}) {
        Packed bytes = randomBytes(60'000);
        for (const Packed& extreme : {Packed(12, 0x00), Packed(12, 0x7F), Packed(12, 0x80), Packed(12, 0xFF),
                                      Packed{0xFF, 0xFF, 0xFF, 0x7F, 0xC0, 0xFF, 0xFF, 0x7F, 0, 0, 0, 0x80}})
            bytes.insert(bytes.end(), extreme.begin(), extreme.end());
        EXPECT_EQ(changed(kind, bytes, unpacked(kind, bytes)), bytes);
    }
}

TEST(WaveSamples, AChangeOfSoManyStepsIsOneOfSoMany)
{
    // 1000 and -1000, by 24 and by half as much.
    EXPECT_EQ(changed(WaveSamples::Pcm16, {0xE8, 0x03, 0x18, 0xFC}, {1024.0F / 32768, -988.0F / 32768}),
              (Packed{0x00, 0x04, 0x24, 0xFC}));
    // What of 32 bits no float holds is kept beside the change: 0x12345678 less 0x10000000.
    constexpr std::uint32_t before = 0x12345678;
    constexpr std::uint32_t change = 0x10000000;
    Packed bytes(4);
    std::memcpy(bytes.data(), &before, 4);
    const float after = unpacked(WaveSamples::Pcm32, bytes)[0] - static_cast<float>(change) / 2147483648.0F;
    const Packed less = changed(WaveSamples::Pcm32, bytes, {after});
    EXPECT_EQ(less, (Packed{0x78, 0x56, 0x34, 0x02}));
}

TEST(WaveSamples, AChangeGoesNoFurtherThanFullScale)
{
    EXPECT_EQ(changed(WaveSamples::Pcm8, {0xC0, 0x40}, {9.0F, -9.0F}), (Packed{0xFF, 0x00}));
    EXPECT_EQ(changed(WaveSamples::Pcm16, {1, 0, 1, 0}, {1e30F, -1e30F}), (Packed{0xFF, 0x7F, 0x00, 0x80}));
}

TEST(WaveSamples, AChangeToNoFiniteNumberIsOneToSilence)
{
    EXPECT_EQ(changed(WaveSamples::Pcm16, {1, 2, 3, 4}, {noNumber, infinity}), Packed(4, 0));
    EXPECT_EQ(changed(WaveSamples::Pcm8, {1, 2}, {noNumber, -infinity}), Packed(2, 0x80));
    EXPECT_EQ(changed(WaveSamples::Float32, Packed(8, 0x11), {noNumber, infinity}), Packed(8, 0));
    EXPECT_EQ(changed(WaveSamples::Float32, Packed(4, 0x11), {1.5F}), packed(WaveSamples::Float32, {1.5F}));
}

}  // namespace
