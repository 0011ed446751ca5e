#include "vocalmixes/Measures.h"

#include "vocalmixes/Levels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace vocalmixes {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Lt;

constexpr std::size_t kFrames = 5 * 44100;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

StereoSound tone(double hertz, double left, double right)
{
    StereoSound sound{44100, std::vector<float>(kFrames), std::vector<float>(kFrames)};
    for (std::size_t i = 0; i < kFrames; ++i) {
        const double value = std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 44100);
        sound.left[i] = static_cast<float>(left * value);
        sound.right[i] = static_cast<float>(right * value);
    }
    return sound;
}

StereoSound noise(unsigned seed, double left, double right)
{
    StereoSound sound{44100, std::vector<float>(kFrames), std::vector<float>(kFrames)};
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> value(-1, 1);
    for (std::size_t i = 0; i < kFrames; ++i) {
        const double sample = value(random);
        sound.left[i] = static_cast<float>(left * sample);
        sound.right[i] = static_cast<float>(right * sample);
    }
    return sound;
}

StereoSound sum(const StereoSound& a, const StereoSound& b, double gainOfB = 1)
{
    StereoSound both = a;
    for (std::size_t i = 0; i < both.frames(); ++i) {
        both.left[i] += static_cast<float>(gainOfB * b.left[i]);
        both.right[i] += static_cast<float>(gainOfB * b.right[i]);
    }
    return both;
}

Mix mixOfNoises()
{
    Mix mix;
    mix.instruments = {{"left", noise(1, 1, .2)}, {"right", noise(2, .1, .5)}, {"centre", noise(3, .6, .6)}};
    mix.accompaniment = sum(sum(mix.instruments[0].sound, mix.instruments[1].sound), mix.instruments[2].sound);
    mix.voice = noise(4, .7, .7);
    mix.sum = sum(mix.accompaniment, mix.voice);
    return mix;
}

TEST(VocalMeasures, WhatIsTenTimesSofterThanTheSoundDistortsItBy20Decibels)
{
    EXPECT_NEAR(signalToDistortion(tone(441, 1, .5), sum(tone(441, 1, .5), tone(882, .1, .05))), 20, .001);
}

TEST(VocalMeasures, WhatIsMissingDistortsAsWhatIsTooMuch)
{
    EXPECT_NEAR(signalToDistortion(tone(441, 1, .5), tone(441, .9, .45)), 20, .001);
    EXPECT_NEAR(signalToDistortion(tone(441, 1, .5), tone(441, 1.1, .55)), 20, .001);
}

TEST(VocalMeasures, ACopyIsNotDistorted)
{
    EXPECT_EQ(signalToDistortion(tone(441, 1, .5), tone(441, 1, .5)), kInfinity);
}

TEST(VocalMeasures, ChannelsAreAsAlikeAsTheyHaveSoundInCommon)
{
    EXPECT_NEAR(channelCorrelation(tone(441, 1, .3)), 1, 1e-6);
    EXPECT_NEAR(channelCorrelation(tone(441, 1, -.3)), -1, 1e-6);
    EXPECT_NEAR(channelCorrelation(sum(tone(441, 1, 0), tone(882, 0, 1))), 0, 1e-6);
    EXPECT_NEAR(channelCorrelation(sum(sum(tone(441, 1, 0), tone(882, 0, 1)), tone(1764, 1, 1))), .5, 1e-6);
}

TEST(VocalMeasures, NothingMayDifferBeyondTheCutOffs)
{
    const StereoSound sound = sum(tone(100, .1, .1), tone(1000, .7, .7));
    const Null null = nullOutside(sound, sum(sound, tone(140, 1e-4, 1e-4)), 200, 8000);
    EXPECT_NEAR(null.ofThere, -60, .1);
    EXPECT_NEAR(null.ofSound, -77, .1);
}

TEST(VocalMeasures, TheWorseSideCounts)
{
    const StereoSound sound = sum(tone(100, .1, .1), tone(12000, .01, .01));
    EXPECT_NEAR(nullOutside(sound, sum(sound, tone(11000, 1e-4, 1e-4)), 200, 8000).ofThere, -40, .1);
    EXPECT_NEAR(nullOutside(sound, sum(sound, tone(50, 1e-4, 1e-4)), 200, 8000).ofThere, -60, .1);
}

TEST(VocalMeasures, BetweenTheCutOffsAnythingMayDiffer)
{
    const StereoSound sound = sum(tone(100, .1, .1), tone(12000, .01, .01));
    EXPECT_LT(nullOutside(sound, sum(sound, sum(tone(175, .1, -.1), tone(9000, .1, 0))), 200, 8000).ofThere, -110);
    EXPECT_EQ(nullOutside(sound, sound, 200, 8000).ofThere, -kInfinity);
}

TEST(VocalMeasures, RoundingWhereTheSoundHasNothingIsNoDifference)
{
    const StereoSound sound = sum(tone(100, .1, .1), tone(1000, .7, .7));
    StereoSound rounded = sound;
    for (float& sample : rounded.left) {
        sample = std::nextafter(sample, 1.0F);
    }
    EXPECT_LT(nullOutside(sound, rounded, 200, 8000).ofThere, -80);
}

TEST(VocalMeasures, AShortDifferenceIsNotSpreadOverTheSound)
{
    const StereoSound sound = noise(5, .5, .5);
    StereoSound clicks = sound;
    clicks.left[100000] += 1;
    const double once = nullOutside(sound, clicks, 200, 8000).ofThere;
    for (std::size_t i = 10000; i < kFrames; i += 65536) {
        clicks.left[i] += 1;
    }
    EXPECT_NEAR(nullOutside(sound, clicks, 200, 8000).ofThere, once, 6);
}

TEST(VocalLevels, EachPartIsFoundInASoundOfAllOfThem)
{
    const Mix mix = mixOfNoises();
    StereoSound heard = sum(mix.instruments[0].sound, mix.instruments[1].sound, std::sqrt(.5));
    heard = sum(sum(heard, mix.instruments[2].sound, 1.1), mix.voice, .1);

    const auto levels = levelsIn(heard, mix);
    ASSERT_TRUE(levels.has_value());
    EXPECT_THAT(levels->instruments,
                ElementsAre(DoubleNear(0, .001), DoubleNear(-3.01, .001), DoubleNear(.828, .001)));
    EXPECT_NEAR(levels->voice, -20, .001);
}

TEST(VocalLevels, AnotherSoundInAPartsPlaceIsNotThePart)
{
    const Mix mix = mixOfNoises();
    const auto levels = levelsIn(sum(mix.sum, sum(noise(9, 1, .2), mix.instruments[0].sound, -1)), mix);
    ASSERT_TRUE(levels.has_value());
    EXPECT_THAT(levels->instruments, ElementsAre(Lt(-35), DoubleNear(0, .1), DoubleNear(0, .1)));
}

TEST(VocalLevels, OnlyWhatSoundsTogetherWithTheVoiceCounts)
{
    Mix mix = mixOfNoises();
    std::fill(mix.voice.left.begin(), mix.voice.left.begin() + kFrames / 2, 0.0F);
    std::fill(mix.voice.right.begin(), mix.voice.right.begin() + kFrames / 2, 0.0F);
    StereoSound heard = sum(mix.accompaniment, mix.voice);
    std::fill(heard.left.begin(), heard.left.begin() + kFrames / 2, 0.0F);
    std::fill(heard.right.begin(), heard.right.begin() + kFrames / 2, 0.0F);

    const auto levels = levelsIn(heard, mix);
    ASSERT_TRUE(levels.has_value());
    EXPECT_THAT(levels->instruments, ElementsAre(DoubleNear(0, .01), DoubleNear(0, .01), DoubleNear(0, .01)));
}

TEST(VocalLevels, PartsThatAreTheSameCannotBeTold)
{
    Mix mix = mixOfNoises();
    mix.instruments[1].sound = mix.instruments[0].sound;
    EXPECT_FALSE(levelsIn(mix.sum, mix).has_value());
}

TEST(VocalLevels, ASoundStandsWhereItsChannelsPutIt)
{
    EXPECT_NEAR(placeOf(tone(441, .5, .5)), 0, 1e-6);
    EXPECT_NEAR(placeOf(tone(441, .5, 0)), -100, 1e-6);
    EXPECT_NEAR(placeOf(tone(441, std::cos(.4 * std::numbers::pi), std::sin(.4 * std::numbers::pi))), 60, 1e-4);
}

}  // namespace
}  // namespace vocalmixes
