#include "sound/dsp/Crossfade.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

std::vector<float> wave(std::size_t samples, double cycles, double phase, double amplitude = 0.5)
{
    std::vector<float> made;
    for (std::size_t index = 0; index < samples; ++index) {
        const double turns = cycles * static_cast<double>(index) / static_cast<double>(samples);
        made.push_back(static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * turns + phase)));
    }
    return made;
}

std::vector<float> noise(std::size_t samples, unsigned seed)
{
    return noiseSound(cdRate, 1, {static_cast<std::int64_t>(samples)}, seed).interleaved();
}

TEST(CrossfadeTest, TheWeightsKeepThePowerAtEverySimilarity)
{
    for (const double alike : {0.0, 0.25, 0.5, 0.9, 1.0}) {
        for (double progress = 0; progress <= 1; progress += 1.0 / 64) {
            const FadeWeights weights = fadeWeights(progress, alike);
            const double leaving = weights.leaving;
            const double coming = weights.coming;
            // The power of a sum of two sounds of power 1 and this correlation.
            EXPECT_NEAR(leaving * leaving + coming * coming + 2 * alike * leaving * coming, 1, 1e-6)
                << "similarity " << alike << " progress " << progress;
        }
    }
}

TEST(CrossfadeTest, AFadeBeginsWithTheOneAloneAndEndsWithTheOther)
{
    for (const double alike : {0.0, 0.5, 1.0}) {
        EXPECT_FLOAT_EQ(fadeWeights(0, alike).leaving, 1);
        EXPECT_NEAR(fadeWeights(0, alike).coming, 0, 1e-9);
        EXPECT_NEAR(fadeWeights(1, alike).leaving, 0, 1e-9);
        EXPECT_FLOAT_EQ(fadeWeights(1, alike).coming, 1);
    }
}

TEST(CrossfadeTest, HalfWayUnrelatedSoundsAreTurnedDownBy3DecibelsAndLikeOnesBy6)
{
    EXPECT_NEAR(fadeWeights(0.5, 0).leaving, std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(fadeWeights(0.5, 0).coming, std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(fadeWeights(0.5, 1).leaving, 0.5, 1e-6);
    EXPECT_NEAR(fadeWeights(0.5, 1).coming, 0.5, 1e-6);
}

TEST(CrossfadeTest, TheOneOnlyFallsAndTheOtherOnlyRises)
{
    for (const double alike : {0.0, 0.5, 1.0}) {
        FadeWeights before = fadeWeights(0, alike);
        for (int step = 1; step <= 100; ++step) {
            const FadeWeights weights = fadeWeights(step / 100.0, alike);
            EXPECT_LE(weights.leaving, before.leaving);
            EXPECT_GE(weights.coming, before.coming);
            before = weights;
        }
    }
}

TEST(CrossfadeTest, SimilarityIsTheCosineOfThePhaseBetweenTwoSines)
{
    const auto reference = wave(1000, 5, 0);
    EXPECT_NEAR(similarity(reference.data(), wave(1000, 5, 0).data(), 1000), 1, 1e-6);
    EXPECT_NEAR(similarity(reference.data(), wave(1000, 5, std::numbers::pi / 3).data(), 1000), 0.5, 1e-6);
    EXPECT_NEAR(similarity(reference.data(), wave(1000, 5, std::numbers::pi / 2).data(), 1000), 0, 1e-6);
    EXPECT_NEAR(similarity(reference.data(), wave(1000, 8, 0).data(), 1000), 0, 1e-6);
}

TEST(CrossfadeTest, SimilarityDoesNotMindTheLevel)
{
    const auto loud = wave(1000, 5, 0, 1);
    const auto soft = wave(1000, 5, 0, 0.001);
    EXPECT_NEAR(similarity(loud.data(), soft.data(), 1000), 1, 1e-6);
}

TEST(CrossfadeTest, OpposedSoundsAndSilenceAreLikeNothing)
{
    const auto reference = wave(1000, 5, 0);
    const std::vector<float> silence(1000, 0.0F);
    EXPECT_EQ(similarity(reference.data(), wave(1000, 5, std::numbers::pi).data(), 1000), 0);
    EXPECT_EQ(similarity(reference.data(), silence.data(), 1000), 0);
    EXPECT_EQ(similarity(silence.data(), silence.data(), 1000), 0);
}

TEST(CrossfadeTest, AFadeBetweenTwoOfTheSameLeavesIt)
{
    const auto sound = noise(882, 1);
    auto faded = sound;
    crossfade(sound.data(), faded.data(), {441}, 2);
    for (std::size_t index = 0; index < sound.size(); ++index)
        EXPECT_NEAR(faded[index], sound[index], 4 * std::numeric_limits<float>::epsilon() * std::abs(sound[index]));
}

TEST(CrossfadeTest, AFadeBetweenUnrelatedNoisesKeepsTheirLevelAllTheWay)
{
    constexpr std::size_t samples = 60'000;
    const auto leaving = noise(samples, 1);
    auto coming = noise(samples, 2);
    const double level = levelOf(leaving);
    crossfade(leaving.data(), coming.data(), {samples}, 1);
    for (std::size_t begin = 0; begin < samples; begin += samples / 6) {
        const auto part = std::span(coming).subspan(begin, samples / 6);
        EXPECT_NEAR(decibels(levelOf(part), level), 0, 0.15) << "from frame " << begin;
    }
}

TEST(CrossfadeTest, BothSidesOfAFrameFadeAlike)
{
    constexpr std::int64_t frames = 100;
    const std::vector<float> leaving(2 * frames, 0.8F);
    std::vector<float> coming(2 * frames, 0.2F);
    crossfade(leaving.data(), coming.data(), {frames}, 2);
    const auto left = channelOf(coming, 2, 0);
    EXPECT_EQ(left, channelOf(coming, 2, 1));
    EXPECT_TRUE(std::is_sorted(left.rbegin(), left.rend()));
    EXPECT_NEAR(left.front(), 0.8, 1e-3);
    EXPECT_NEAR(left.back(), 0.2, 1e-3);
}

TEST(CrossfadeTest, AFadeOutFallsEvenlyToSilenceAndStaysThere)
{
    std::vector<float> sound(2 * 300, 1.0F);
    fadeOut(sound.data(), {200}, {300}, 2);
    const auto left = channelOf(sound, 2, 0);
    EXPECT_EQ(left, channelOf(sound, 2, 1));
    EXPECT_NEAR(left.front(), 1, 1e-4);
    EXPECT_NEAR((left[99] + left[100]) / 2, 0.5, 1e-6);
    EXPECT_NEAR(left[199], 0, 1e-4);
    EXPECT_TRUE(std::is_sorted(left.rbegin(), left.rend()));
    for (std::size_t frame = 200; frame < 300; ++frame)
        EXPECT_EQ(left[frame], 0);
}

TEST(CrossfadeTest, AFadeInRisesEvenlyAndLeavesTheRest)
{
    std::vector<float> sound(2 * 300, 1.0F);
    fadeIn(sound.data(), {200}, 2);
    const auto left = channelOf(sound, 2, 0);
    EXPECT_EQ(left, channelOf(sound, 2, 1));
    EXPECT_NEAR(left.front(), 0, 1e-4);
    EXPECT_NEAR((left[99] + left[100]) / 2, 0.5, 1e-6);
    EXPECT_NEAR(left[199], 1, 1e-4);
    EXPECT_TRUE(std::is_sorted(left.begin(), left.end()));
    for (std::size_t frame = 200; frame < 300; ++frame)
        EXPECT_EQ(left[frame], 1);
}

TEST(CrossfadeTest, AFadeOutLongerThanTheSoundEndsWithIt)
{
    std::vector<float> sound(50, 1.0F);
    fadeOut(sound.data(), {200}, {50}, 1);
    EXPECT_NEAR(sound.front(), 1, 1e-2);
    EXPECT_NEAR(sound.back(), 0, 1e-2);
}

TEST(CrossfadeTest, NoFramesAreNoFade)
{
    std::vector<float> sound(2, 1.0F);
    crossfade(sound.data(), sound.data(), {0}, 2);
    fadeIn(sound.data(), {0}, 2);
    fadeOut(sound.data(), {0}, {0}, 2);
    expectSame(sound, std::vector<float>(2, 1.0F), 2, cdRate);
    fadeOut(sound.data(), {0}, {1}, 2);
    expectSame(sound, std::vector<float>(2, 0.0F), 2, cdRate);
}

}  // namespace
