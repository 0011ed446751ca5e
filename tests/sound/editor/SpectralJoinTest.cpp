#include "sound/editor/SpectralJoin.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

using std::numbers::pi;

using Wave = std::function<double(std::int64_t frame, int channel)>;

std::vector<float> framesOf(const Wave& wave, SampleRate rate, int channels)
{
    return MemorySound::of(rate, channels, SpectralJoin::length(rate), wave).interleaved();
}

std::vector<float> joined(const std::vector<float>& leaving, const std::vector<float>& coming, SampleRate rate,
                          int channels)
{
    SpectralJoin join(rate, channels);
    std::vector<float> result(leaving.size());
    join.join(leaving.data(), coming.data(), result.data());
    return result;
}

Wave tone(double hertz, double turned, SampleRate rate, double amplitude = 0.5)
{
    return [=](std::int64_t frame, int) {
        return amplitude * std::sin(2 * pi * hertz * static_cast<double>(frame) / rate.hertz + turned);
    };
}

/// The least and the greatest amplitude of a component, in decibels against @p steady, over short windows that
/// follow each other by half.
std::pair<double, double> swing(std::span<const float> mono, double hertz, double steady, SampleRate rate,
                                double seconds)
{
    const auto window = static_cast<std::size_t>(seconds * rate.hertz);
    double least = HUGE_VAL;
    double greatest = -HUGE_VAL;
    for (std::size_t begin = 0; begin + window <= mono.size(); begin += window / 2) {
        const double level = decibels(amplitudeAt(mono.subspan(begin, window), rate, hertz), steady);
        least = std::min(least, level);
        greatest = std::max(greatest, level);
    }
    return {least, greatest};
}

TEST(SpectralJoinTest, LastsAboutAThirdOfASecondAtEveryRate)
{
    for (const int hertz : {8000, 11025, 22050, 44100, 48000, 96000, 192'000}) {
        const double seconds = static_cast<double>(SpectralJoin::length({hertz}).value) / hertz;
        EXPECT_GT(seconds, 0.2) << hertz;
        EXPECT_LT(seconds, 0.45) << hertz;
    }
}

TEST(SpectralJoinTest, TwoThatAreTheSameComeOutTheSame)
{
    for (const int channels : {1, 2}) {
        const MemorySound noise = noiseSound(cdRate, channels, SpectralJoin::length(cdRate));
        const std::vector<float> out = joined(noise.interleaved(), noise.interleaved(), cdRate, channels);
        expectClose(out, noise.interleaved(), 2e-6, channels, cdRate);
    }
}

TEST(SpectralJoinTest, SilenceStaysSilence)
{
    const std::vector<float> nothing(static_cast<std::size_t>(2 * SpectralJoin::length(cdRate).value));
    expectSame(joined(nothing, nothing, cdRate, 2), nothing, 2, cdRate);
}

TEST(SpectralJoinTest, BeginsAsTheOneAndEndsAsTheOther)
{
    for (const int channels : {1, 2}) {
        const FrameCount length = SpectralJoin::length(cdRate);
        const std::vector<float> leaving = noiseSound(cdRate, channels, length, 1).interleaved();
        const std::vector<float> coming = noiseSound(cdRate, channels, length, 2).interleaved();
        const std::vector<float> out = joined(leaving, coming, cdRate, channels);
        const std::size_t edge = 256 * static_cast<std::size_t>(channels);
        expectClose(std::span(out).first(edge), std::span(leaving).first(edge), 1e-6, channels, cdRate);
        expectClose(std::span(out).last(edge), std::span(coming).last(edge), 1e-6, channels, cdRate);
        expectSame(std::span(out).first(static_cast<std::size_t>(channels)),
                   std::span(leaving).first(static_cast<std::size_t>(channels)), channels, cdRate);
    }
}

TEST(SpectralJoinTest, TheResultMayTakeThePlaceOfWhatWentIn)
{
    const FrameCount length = SpectralJoin::length(cdRate);
    std::vector<float> leaving = noiseSound(cdRate, 2, length, 1).interleaved();
    std::vector<float> coming = noiseSound(cdRate, 2, length, 2).interleaved();
    const std::vector<float> wanted = joined(leaving, coming, cdRate, 2);
    SpectralJoin join(cdRate, 2);
    std::vector<float> inPlaceOfLeaving = leaving;
    join.join(inPlaceOfLeaving.data(), coming.data(), inPlaceOfLeaving.data());
    expectSame(inPlaceOfLeaving, wanted, 2, cdRate);
    join.join(leaving.data(), coming.data(), coming.data());
    expectSame(coming, wanted, 2, cdRate);
}

class JoinAtEveryRateTest : public ::testing::TestWithParam<int>
{
};

TEST_P(JoinAtEveryRateTest, AToneThatIsTurnedByAnyAngleNeitherDipsNorJumps)
{
    const SampleRate rate{GetParam()};
    for (const double hertz : {55.0, 330.0, 997.3, 3300.0}) {
        for (int eighth = 0; eighth < 8; ++eighth) {
            const double turned = eighth * pi / 4;  // at 4 exactly half a turn
            const std::vector<float> leaving = framesOf(tone(hertz, 0, rate), rate, 1);
            const std::vector<float> coming = framesOf(tone(hertz, turned, rate), rate, 1);
            const std::vector<float> out = joined(leaving, coming, rate, 1);
            const auto [least, greatest] = swing(out, hertz, 0.5, rate, std::max(0.02, 3 / hertz));
            EXPECT_GT(least, -0.5) << hertz << " Hz turned by " << turned;
            EXPECT_LT(greatest, 0.5) << hertz << " Hz turned by " << turned;
            EXPECT_LT(largestStep(out), 1.1 * largestStep(leaving)) << hertz << " Hz turned by " << turned;
        }
    }
}

#ifdef LARKSPIN_SANITIZED
INSTANTIATE_TEST_SUITE_P(Rates, JoinAtEveryRateTest, ::testing::Values(8000, 44100));
#else
INSTANTIATE_TEST_SUITE_P(Rates, JoinAtEveryRateTest,
                         ::testing::Values(8000, 11025, 22050, 44100, 48000, 96000, 192'000));
#endif

TEST(SpectralJoinTest, EachPartialOfAChordKeepsItsLevelHoweverItIsTurned)
{
    // A chord of wide steps, each partial with an angle of its own.
    const std::vector<double> partials{110, 220, 277.18, 329.63, 660, 1320, 4186};
    const auto chord = [&](double turns) -> Wave {
        return [&partials, turns](std::int64_t frame, int) {
            double sum = 0;
            for (std::size_t index = 0; index < partials.size(); ++index) {
                const double time = static_cast<double>(frame) / cdRate.hertz;
                const double turned = turns * static_cast<double>(index + 1) * 2.4;
                sum += 0.1 * std::sin(2 * pi * partials[index] * time + turned);
            }
            return sum;
        };
    };
    const std::vector<float> leaving = framesOf(chord(0), cdRate, 1);
    for (const double turns : {0.3, 1.0, 1.9}) {
        const std::vector<float> out = joined(leaving, framesOf(chord(turns), cdRate, 1), cdRate, 1);
        for (const double hertz : partials) {
            const auto [least, greatest] = swing(out, hertz, 0.1, cdRate, 0.09);
            EXPECT_GT(least, -0.5) << hertz << " Hz, turned " << turns;
            EXPECT_LT(greatest, 0.5) << hertz << " Hz, turned " << turns;
        }
    }
}

TEST(SpectralJoinTest, NoiseKeepsItsLevelThroughout)
{
#ifdef LARKSPIN_SANITIZED
    constexpr unsigned joins = 4;
#else
    constexpr unsigned joins = 60;
#endif
    constexpr std::size_t parts = 16;
    const FrameCount length = SpectralJoin::length(cdRate);
    const std::size_t partFrames = static_cast<std::size_t>(length.value) / parts;
    std::vector<double> powers(parts);
    SpectralJoin join(cdRate, 1);
    std::vector<float> out(static_cast<std::size_t>(length.value));
    for (unsigned number = 0; number < joins; ++number) {
        const MemorySound leaving = noiseSound(cdRate, 1, length, 2 * number + 1);
        const MemorySound coming = noiseSound(cdRate, 1, length, 2 * number + 2);
        join.join(leaving.interleaved().data(), coming.interleaved().data(), out.data());
        for (std::size_t part = 0; part < parts; ++part)
            powers[part] += std::pow(levelOf(std::span(out).subspan(part * partFrames, partFrames)), 2) / joins;
    }
    const double level = 0.25 / std::numbers::sqrt3;  // of evenly distributed samples
    for (std::size_t part = 0; part < parts; ++part)
        EXPECT_NEAR(decibels(std::sqrt(powers[part]), level), 0, 0.5) << "part " << part;
}

TEST(SpectralJoinTest, WhatGrowsSofterGoesEvenlyFromOneLevelToTheOther)
{
    const std::vector<float> loud = framesOf(tone(440, 0, cdRate, 0.5), cdRate, 1);
    const std::vector<float> soft = framesOf(tone(440, 1, cdRate, 0.25), cdRate, 1);
    const std::vector<float> out = joined(loud, soft, cdRate, 1);
    double before = 0.505;
    for (std::size_t begin = 0; begin + 2000 <= out.size(); begin += 1000) {
        const double amplitude = amplitudeAt(std::span(out).subspan(begin, 2000), cdRate, 440);
        EXPECT_LT(amplitude, before * 1.01);
        EXPECT_GT(amplitude, 0.245);
        before = amplitude;
    }
    EXPECT_LT(before, 0.26);
}

TEST(SpectralJoinTest, TheStereoImageStays)
{
    // A tone that is louder and earlier on the left; another one that is only on the right.
    const auto stereo = [](double turned) -> Wave {
        return [turned](std::int64_t frame, int channel) {
            const double time = static_cast<double>(frame) / cdRate.hertz;
            const double both = 2 * pi * 440 * time + turned;
            const double right = 2 * pi * 2000 * time - 2 * turned;
            return channel == 0 ? 0.4 * std::sin(both) : 0.2 * std::sin(both - 0.7) + 0.3 * std::sin(right);
        };
    };
    for (const double turned : {0.5, 1.5, pi, 4.0}) {
        const std::vector<float> out =
            joined(framesOf(stereo(0), cdRate, 2), framesOf(stereo(turned), cdRate, 2), cdRate, 2);
        const std::vector<float> left = channelOf(out, 2, 0);
        const std::vector<float> right = channelOf(out, 2, 1);
        std::vector<double> phases;
        for (std::size_t frame = 0; frame < left.size(); ++frame)
            phases.push_back(2 * pi * 440 * static_cast<double>(frame) / cdRate.hertz);
        constexpr std::size_t window = 2205;
        const std::vector<double> leftTurns = turnedAgainst(left, phases, window);
        const std::vector<double> rightTurns = turnedAgainst(right, phases, window);
        for (std::size_t index = 0; index < leftTurns.size(); ++index)
            EXPECT_NEAR(std::remainder(leftTurns[index] - rightTurns[index], 2 * pi), 0.7, 0.05) << turned;
        for (std::size_t begin = 0; begin + window <= left.size(); begin += window / 2) {
            const auto here = [&](const std::vector<float>& channel) {
                return std::span(channel).subspan(begin, window);
            };
            EXPECT_NEAR(decibels(amplitudeAt(here(left), cdRate, 440), 0.4), 0, 0.5) << turned;
            EXPECT_NEAR(decibels(amplitudeAt(here(right), cdRate, 440), 0.2), 0, 0.5) << turned;
            EXPECT_NEAR(decibels(amplitudeAt(here(right), cdRate, 2000), 0.3), 0, 0.5) << turned;
            EXPECT_LT(amplitudeAt(here(left), cdRate, 2000), 0.003) << turned;
        }
    }
}

}  // namespace
