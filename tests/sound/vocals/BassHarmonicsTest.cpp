#include "sound/vocals/BassHarmonics.h"

#include <gtest/gtest.h>
#include <cmath>
#include <vector>

using sound::BassHarmonics;

namespace {

constexpr double binWidth = 10;

// The power of a partial as a window shows it: a summit and its flanks.
std::vector<float> peakAt(double bin, std::size_t bins, float power)
{
    std::vector<float> low(bins);
    for (std::size_t index = 0; index < bins; ++index)
        low[index] = power * static_cast<float>(std::exp(-std::pow(static_cast<double>(index) - bin, 2)));
    return low;
}

std::vector<float> raised(const BassHarmonics& harmonics, const std::vector<float>& low)
{
    std::vector<float> power(harmonics.end());
    harmonics.raise(low.data(), power.data());
    return power;
}

}  // namespace

TEST(BassHarmonicsTest, EachHarmonicIsWeakerByTheSquareOfItsNumber)
{
    const BassHarmonics harmonics(binWidth, 200);
    const std::vector<float> power = raised(harmonics, peakAt(8, harmonics.bins(), 1000));
    EXPECT_NEAR(power[24], 1000.0 / 9, 0.1);
    EXPECT_NEAR(power[32], 1000.0 / 16, 0.1);
    EXPECT_NEAR(power[64], 1000.0 / 64, 0.1);
}

TEST(BassHarmonicsTest, AFundamentalBetweenTwoBinsHasItsHarmonicsWhereTheyAre)
{
    const BassHarmonics harmonics(binWidth, 200);
    const std::vector<float> power = raised(harmonics, peakAt(8.25, harmonics.bins(), 1000));
    EXPECT_NEAR(power[33], 1000.0 / 16, 0.1);
    EXPECT_LT(power[31], power[32]);
    EXPECT_NEAR(power[32], power[34], 0.5);
}

TEST(BassHarmonicsTest, BelowTheLowestFrequencyAndBetweenHarmonicsNothingIsRaised)
{
    const BassHarmonics harmonics(binWidth, 200);
    const std::vector<float> power = raised(harmonics, peakAt(8, harmonics.bins(), 1000));
    for (std::size_t bin = 0; bin < 20; ++bin)
        EXPECT_EQ(power[bin], 0) << bin;
    for (const std::size_t between : {28U, 36U, 44U, 66U, 90U})
        EXPECT_LT(power[between], 1e-6) << between;
}

TEST(BassHarmonicsTest, WhatIsRaisedAlreadyIsNotLowered)
{
    const BassHarmonics harmonics(binWidth, 200);
    std::vector<float> power(harmonics.end(), 500);
    harmonics.raise(peakAt(8, harmonics.bins(), 1000).data(), power.data());
    EXPECT_EQ(power[24], 500);
}

TEST(BassHarmonicsTest, SilenceAndASlopeWithoutASummitHaveNone)
{
    const BassHarmonics harmonics(binWidth, 200);
    EXPECT_EQ(raised(harmonics, std::vector<float>(harmonics.bins())), std::vector<float>(harmonics.end()));
    std::vector<float> slope(harmonics.bins());
    for (std::size_t bin = 0; bin < slope.size(); ++bin)
        slope[bin] = static_cast<float>(bin + 1);
    EXPECT_EQ(raised(harmonics, slope), std::vector<float>(harmonics.end()));
}

TEST(BassHarmonicsTest, ABandThatBeginsHighTakesNoVoiceForABass)
{
    const BassHarmonics harmonics(binWidth, 400);
    EXPECT_LE(harmonics.bins(), 21U);
}
