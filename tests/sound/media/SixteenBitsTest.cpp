#include "sound/media/SixteenBits.h"

#include <gtest/gtest.h>
#include <cmath>
#include <complex>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

using sound::SixteenBits;

namespace {

constexpr int count = 1 << 17;

/// What becomes of the samples @p wave(i), which are told in steps of 16 bits.
std::vector<double> steps(const std::function<double(int)>& wave)
{
    SixteenBits toSixteenBits;
    std::vector<double> made;
    for (int i = 0; i < count; ++i)
        made.push_back(toSixteenBits(static_cast<float>(wave(i) / 32768.0)));
    return made;
}

double mean(const std::vector<double>& values)
{
    double sum = 0;
    for (const double value : values)
        sum += value;
    return sum / static_cast<double>(values.size());
}

/// The amplitude of what repeats so many times in all of the values.
double amplitudeOf(const std::vector<double>& values, int turns)
{
    std::complex<double> sum;
    for (std::size_t i = 0; i < values.size(); ++i)
        sum += values[i] * std::polar(1.0, -2.0 * std::numbers::pi * turns * static_cast<double>(i) / count);
    return 2.0 * std::abs(sum) / static_cast<double>(values.size());
}

TEST(SixteenBits, EveryStepStaysWhatItIs)
{
    SixteenBits toSixteenBits;
    for (int step = -32768; step <= 32767; ++step)
        ASSERT_EQ(toSixteenBits(static_cast<float>(step) / 32768.0F), step);
}

TEST(SixteenBits, WhatIsBeyondFullScaleIsCutThere)
{
    SixteenBits toSixteenBits;
    for (const float above : {1.0F, 1.00001F, 7.0F, std::numeric_limits<float>::max()}) {
        EXPECT_EQ(toSixteenBits(above), 32767);
        EXPECT_EQ(toSixteenBits(-above), -32768);
    }
    for (int i = 0; i < 100; ++i)  // where dither alone would lead beyond
        EXPECT_GE(toSixteenBits(32766.9F / 32768.0F), 32765);
}

TEST(SixteenBits, WhatIsNoNumberIsSilence)
{
    SixteenBits toSixteenBits;
    EXPECT_EQ(toSixteenBits(std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(toSixteenBits(std::numeric_limits<float>::infinity()), 0);
    EXPECT_EQ(toSixteenBits(-std::numeric_limits<float>::infinity()), 0);
}

/// Of n values whose variance is v, the mean lies within 5 times the root of v/n; here that is 0.007.
constexpr double fiveDeviations = 5 * 0.5 / 362;

TEST(SixteenBits, AValueBetweenTwoStepsIsKeptInTheMean)
{
    for (const double between : {0.01, 0.25, 0.5, 0.75, 0.99, -0.3, 1000.3, -20000.6}) {
        EXPECT_NEAR(mean(steps([between](int) { return between; })), between, fiveDeviations + 0.001) << between;
    }
}

TEST(SixteenBits, TheHissIsTheSameWhereverBetweenTwoStepsTheValueLies)
{
    // Triangular dither and rounding make noise of 2/12 + 1/12 of a step squared.
    for (const double between : {0.01, 0.25, 0.5, 0.9, 77.4}) {
        std::vector<double> squares;
        for (const double value : steps([between](int) { return between; }))
            squares.push_back((value - between) * (value - between));
        EXPECT_NEAR(mean(squares), 0.25, 0.005) << between;
    }
}

TEST(SixteenBits, ASineOfOneStepKeepsItsLevelAndGetsNoOvertones)
{
    constexpr int turns = 3001;
    const double amplitude = std::pow(10.0, -90.0 / 20.0) * 32768.0;  // 1.04 steps
    const auto sine = [amplitude](int i) {
        return amplitude * std::sin(2.0 * std::numbers::pi * turns * i / count);
    };
    const auto dithered = steps(sine);
    EXPECT_NEAR(amplitudeOf(dithered, turns), amplitude, 2 * fiveDeviations);
    EXPECT_NEAR(mean(dithered), 0, fiveDeviations);
    std::vector<double> rounded;
    for (int i = 0; i < count; ++i)
        rounded.push_back(std::round(sine(i)));
    EXPECT_GT(amplitudeOf(rounded, 5 * turns), 0.2);  // what rounding alone would make of it
    for (const int overtone : {2, 3, 4, 5, 6, 7, 9, 11, 13})
        EXPECT_LT(amplitudeOf(dithered, overtone * turns), 2 * fiveDeviations) << overtone;
}

TEST(SixteenBits, TheSameSamplesBecomeTheSame)
{
    const auto wave = [](int i) { return 100.0 * std::sin(0.01 * i); };
    EXPECT_EQ(steps(wave), steps(wave));
}

}  // namespace
