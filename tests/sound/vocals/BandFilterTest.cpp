#include "sound/vocals/BandFilter.h"

#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <cmath>
#include <numbers>
#include <vector>

using sound::BandFilter;
using sound::test::cdRate;

namespace {

std::vector<float> wave(double hertz, std::size_t samples)
{
    std::vector<float> sound(samples);
    for (std::size_t index = 0; index < samples; ++index)
        sound[index] =
            static_cast<float>(std::sin(2 * std::numbers::pi * hertz * static_cast<double>(index) / cdRate.hertz));
    return sound;
}

struct Filtered
{
    std::vector<float> before;
    std::vector<float> after;
};

Filtered filtered(double hertz, double low, double high)
{
    BandFilter filter(cdRate.hertz, low, high, 2048);
    const std::vector<float> sound = wave(hertz, 2 * filter.reach() + filter.block());
    Filtered result;
    result.before.assign(sound.begin() + static_cast<std::ptrdiff_t>(filter.reach()),
                         sound.end() - static_cast<std::ptrdiff_t>(filter.reach()));
    result.after.resize(filter.block());
    filter.filter(sound, result.after);
    return result;
}

}  // namespace

TEST(BandFilterTest, BetweenTheTwoFrequenciesASoundPassesWithoutAnyShift)
{
    for (const double hertz : {50.0, 60.0, 440.0, 5000.0, 16000.0}) {
        const Filtered sound = filtered(hertz, 50, 16000);
        for (std::size_t index = 0; index < sound.before.size(); ++index)
            ASSERT_NEAR(sound.after[index], sound.before[index], 1e-4) << hertz;
    }
}

TEST(BandFilterTest, AThirdOfAnOctaveOutsideThemAlmostNothingPasses)
{
    for (const double low : {50.0, 200.0, 400.0})
        EXPECT_LT(sound::test::levelOf(filtered(low / std::cbrt(2.0), low, 8000).after), 3e-5) << low;
    for (const double high : {6000.0, 8000.0, 16000.0})
        EXPECT_LT(sound::test::levelOf(filtered(high * std::cbrt(2.0), 200, high).after), 3e-5) << high;
}

TEST(BandFilterTest, ABandUpToHalfTheRateHasNoUpperEnd)
{
    const Filtered sound = filtered(22000, 200, 22050);
    EXPECT_NEAR(sound::test::levelOf(sound.after), sound::test::levelOf(sound.before), 1e-4);
}

TEST(BandFilterTest, BlocksArePowersOfTwoAndNoSmallerThanAskedFor)
{
    EXPECT_EQ(BandFilter(44100, 5000, 8000, 2048).block(), 2048U);
    EXPECT_EQ(BandFilter(44100, 5000, 8000, 2049).block(), 4096U);
    EXPECT_EQ(BandFilter(44100, 200, 8000, 16).block(), 8192U);
}
