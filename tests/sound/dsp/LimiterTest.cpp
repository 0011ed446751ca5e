#include "sound/dsp/Limiter.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

constexpr double overdrive = 5.6234;  // 15 dB

class LimiterTest : public ::testing::Test
{
protected:
    LimiterTest() { limiter.prepare(cdRate); }

    std::vector<float> through(std::vector<float> stereo)
    {
        const auto frames = static_cast<std::int64_t>(stereo.size() / 2);
        for (std::int64_t begin = 0; begin < frames; begin += hundredth.value)
            limiter.process(stereo.data() + 2 * begin, {std::min(hundredth.value, frames - begin)});
        return stereo;
    }

    Limiter limiter{hundredth};
};

std::vector<float> amplified(std::vector<float> sound, double factor)
{
    for (float& sample : sound)
        sample = static_cast<float>(sample * factor);
    return sound;
}

std::vector<float> sine(double hertz, double amplitude, double seconds)
{
    return amplified(sineSound(cdRate, 2, hertz, seconds).interleaved(), 2 * amplitude);
}

std::vector<float> noise(double amplitude)
{
    return amplified(noiseSound(cdRate, 2, {22050}).interleaved(), 4 * amplitude);
}

TEST_F(LimiterTest, UpToFullScaleNotABitIsChanged)
{
    auto sound = noise(1);
    sound[1000] = 1;
    sound[2001] = -1;
    expectSame(through(sound), sound, 2, cdRate);
}

TEST_F(LimiterTest, NothingEverLeavesFullScaleOrChangesItsSign)
{
    for (const auto& sound :
         {sine(1000, overdrive, 0.5), sine(50, overdrive, 0.5), noise(overdrive), noise(1000)}) {
        const auto limited = through(sound);
        for (std::size_t index = 0; index < sound.size(); ++index) {
            ASSERT_LE(std::abs(limited[index]), 1.0F);
            ASSERT_LE(std::abs(limited[index]), std::abs(sound[index]));
            ASSERT_GE(limited[index] * sound[index], 0.0F);
        }
    }
}

TEST_F(LimiterTest, ALoudSineFillsFullScale)
{
    const auto limited = channelOf(through(sine(1000, overdrive, 1)), 2, 0);
    EXPECT_GT(*std::max_element(limited.begin() + 22050, limited.end()), 0.999F);
}

TEST_F(LimiterTest, ASecondBehindAPeakEveryBitPassesAgain)
{
    through(noise(overdrive));
    through(sine(440, 0.5, 1.2));
    const auto sound = noise(1);
    expectSame(through(sound), sound, 2, cdRate);
}

TEST_F(LimiterTest, TheGainFallsBeforeThePeakAndComesBackSlowlyBehindIt)
{
    std::vector<float> sound(2 * 441, 0.5F);
    constexpr std::size_t peak = 200;
    sound[2 * peak] = 2;
    const auto left = channelOf(through(sound), 2, 0);

    EXPECT_NEAR(left[peak], 1, 1e-6);
    // A millisecond before nothing has begun, from there on it only falls, to half.
    const std::size_t before = peak - 45;
    for (std::size_t frame = 0; frame <= before; ++frame)
        ASSERT_EQ(left[frame], 0.5F);
    EXPECT_TRUE(std::is_sorted(left.rend() - peak, left.rend() - static_cast<std::ptrdiff_t>(before)));
    EXPECT_NEAR(left[peak - 1], 0.25, 0.02);
    EXPECT_LT(0.5 - left[peak - 15], 0.5 - left[peak - 5]);
    // Behind it the gap closes as e to the power of -t over a tenth of a second.
    for (const std::size_t behind : {44U, 100U, 200U})
        EXPECT_NEAR(left[peak + behind], 0.5 * (1 - 0.5 * std::exp(-static_cast<double>(behind) / 4410)), 1e-3);
}

TEST_F(LimiterTest, BothSidesAreTurnedDownTogether)
{
    auto sound = noise(0.5);
    for (std::size_t frame = 0; frame < sound.size() / 2; ++frame)
        sound[2 * frame + 1] = 4 * sound[2 * frame];
    const auto limited = through(sound);
    for (std::size_t frame = 0; frame < sound.size() / 2; ++frame)
        ASSERT_NEAR(limited[2 * frame + 1], 4 * limited[2 * frame], 1e-5);
}

TEST_F(LimiterTest, ATooLoudToneStaysATone)
{
    struct Case
    {
        double hertz;
        double mostDistortion;
    };
    // What the gain recovers within a half wave is what distorts; a clipped sine of 3 dB has 15%.
    for (const auto& [hertz, mostDistortion] : {Case{1000, 0.005}, Case{100, 0.02}}) {
        limiter.reset();
        const auto limited = channelOf(through(sine(hertz, 1.4142, 2)), 2, 0);
        const auto steady = std::span(limited).subspan(44100);
        double harmonics = 0;
        for (int harmonic = 2; harmonic < 10; ++harmonic)
            harmonics += std::pow(amplitudeAt(steady, cdRate, hertz * harmonic), 2);
        const double tone = amplitudeAt(steady, cdRate, hertz);
        EXPECT_NEAR(tone, 1, 0.03);
        EXPECT_LT(std::sqrt(harmonics) / tone, mostDistortion) << hertz;
    }
}

TEST_F(LimiterTest, ResettingForgetsThePeak)
{
    through(noise(overdrive));
    limiter.reset();
    const auto sound = noise(1);
    expectSame(through(sound), sound, 2, cdRate);
}

TEST_F(LimiterTest, ABlockOfNoFramesIsNothing)
{
    through(noise(overdrive));
    limiter.process(nullptr, {0});
    const auto limited = through(noise(overdrive));
    EXPECT_LE(*std::max_element(limited.begin(), limited.end()), 1.0F);
}

}  // namespace
