#include "sound/player/EqualizerPresets.h"

#include "sound/Signals.h"
#include "sound/dsp/Equalizer.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::array<float, 10> centres{80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};

std::array<float, 10> gainsOf(int preset)
{
    std::array<float, 10> gains{};
    std::transform(centres.begin(), centres.end(), gains.begin(),
                   [preset](float hertz) { return presetGain(preset, hertz); });
    return gains;
}

/// The gain in decibels at frequencies a third of a semitone apart, from the answer to an impulse.
std::vector<double> response(int preset, SampleRate rate)
{
    EqualizerBands bands;
    for (const float hertz : centres)
        bands.band[bands.count++] = {hertz, 12, presetGain(preset, hertz)};
    bands.enabled = true;
    Equalizer equalizer;
    equalizer.prepare(rate);
    equalizer.set(bands);
    equalizer.settle();
    std::vector<float> impulse(2 * 16384, 0.0F);
    impulse[0] = 1;
    equalizer.process(impulse.data(), {16384});

    std::vector<double> decibels;
    for (double hertz = 20; hertz < 20000; hertz *= std::exp2(1.0 / 36)) {
        std::complex<double> sum = 0;
        const std::complex<double> turn = std::polar(1.0, -2 * std::numbers::pi * hertz / rate.hertz);
        std::complex<double> phase = 1;
        for (std::size_t frame = 0; frame < impulse.size() / 2; ++frame) {
            sum += static_cast<double>(impulse[2 * frame]) * phase;
            phase *= turn;
        }
        decibels.push_back(20 * std::log10(std::abs(sum)));
    }
    return decibels;
}

class EachPreset : public ::testing::TestWithParam<int>
{
};

TEST_P(EachPreset, StaysWithinTheRangeOfABandInWholeHalvesOfADecibel)
{
    for (const float gain : gainsOf(GetParam())) {
        EXPECT_LE(std::abs(gain), EqualizerBand::greatestGain);
        EXPECT_EQ(gain * 2, std::round(gain * 2));
    }
}

TEST_P(EachPreset, IsNeitherFlatNorAnyOther)
{
    EXPECT_NE(gainsOf(GetParam()), (std::array<float, 10>{}));
    for (int other = 0; other < GetParam(); ++other)
        EXPECT_NE(gainsOf(GetParam()), gainsOf(other)) << other;
}

TEST_P(EachPreset, LeavesTheLimiterLittleToDo)
{
    for (const SampleRate rate : {SampleRate{44100}, SampleRate{48000}}) {
        const std::vector<double> gains = response(GetParam(), rate);
        EXPECT_LT(*std::max_element(gains.begin(), gains.end()), 6);
        // Music has about the same power in each octave, as these frequencies have.
        double power = 0;
        for (const double gain : gains)
            power += std::pow(10, gain / 10);
        EXPECT_LT(10 * std::log10(power / static_cast<double>(gains.size())), 2);
    }
}

INSTANTIATE_TEST_SUITE_P(Presets, EachPreset, ::testing::Range(0, equalizerPresets));

TEST(EqualizerPresets, DoWhatTheirNamesSay)
{
    enum Number
    {
        FullBass = 2,
        FullBassTreble = 3,
        FullTreble = 4,
        LaptopSpeakers = 5,
        Soft = 13
    };
    EXPECT_GE(presetGain(FullBass, 80), 5);
    EXPECT_LT(presetGain(FullBass, 6000), 0);
    EXPECT_GE(presetGain(FullBassTreble, 80), 5);
    EXPECT_LT(presetGain(FullBassTreble, 1000), 0);
    EXPECT_GE(presetGain(FullBassTreble, 6000), 3);
    EXPECT_LT(presetGain(FullTreble, 80), 0);
    EXPECT_GE(presetGain(FullTreble, 6000), 4);
    EXPECT_LE(presetGain(LaptopSpeakers, 80), -6);  // what such a speaker can only distort
    EXPECT_GT(presetGain(LaptopSpeakers, 310), 0);
    EXPECT_LT(presetGain(Soft, 3000), 0);
}

TEST(EqualizerPresets, BetweenTheirBandsAreStraightOverOctavesAndBeyondThemLevel)
{
    for (int preset = 0; preset < equalizerPresets; ++preset) {
        const auto gains = gainsOf(preset);
        EXPECT_EQ(presetGain(preset, 20), gains.front());
        EXPECT_EQ(presetGain(preset, 19999), gains.back());
        // 3000 to 6000 Hz is an octave.
        const float middle = 3000 * std::sqrt(2.0F);
        EXPECT_NEAR(presetGain(preset, middle), (gains[5] + gains[6]) / 2, 1e-5);
        const float quarter = 3000 * std::exp2(0.25F);
        EXPECT_NEAR(presetGain(preset, quarter), 0.75 * gains[5] + 0.25 * gains[6], 1e-5);
    }
}

}  // namespace
