#include "sound/dsp/Equalizer.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"
#include "sound/dsp/Limiter.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <random>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::array<float, 10> centres{80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};
constexpr float octave = 12;

EqualizerBands oneBand(float hertz, float gain, bool enabled = true)
{
    EqualizerBands bands;
    bands.band[0] = {hertz, octave, gain};
    bands.count = 1;
    bands.enabled = enabled;
    return bands;
}

EqualizerBands allBands(float gain, bool enabled = true)
{
    EqualizerBands bands;
    for (const float hertz : centres)
        bands.band[bands.count++] = {hertz, octave, gain};
    bands.enabled = enabled;
    return bands;
}

std::vector<float> through(Equalizer& equalizer, std::vector<float> stereo, std::int64_t block = 441)
{
    const auto frames = static_cast<std::int64_t>(stereo.size() / 2);
    for (std::int64_t begin = 0; begin < frames; begin += block)
        equalizer.process(stereo.data() + 2 * begin, {std::min(block, frames - begin)});
    return stereo;
}

Equalizer settledAt(const EqualizerBands& bands, SampleRate rate)
{
    Equalizer equalizer;
    equalizer.prepare(rate);
    equalizer.set(bands);
    equalizer.settle();
    return equalizer;
}

// The gain in decibels of a steady tone.
double gainAt(double hertz, Equalizer& equalizer, SampleRate rate, int side = 0)
{
    const auto sound = sineSound(rate, 2, hertz, 0.6).interleaved();
    const auto heard = channelOf(through(equalizer, sound), 2, side);
    const auto given = channelOf(sound, 2, side);
    const auto begin = static_cast<std::size_t>(rate.hertz / 5);
    return decibels(amplitudeAt(std::span(heard).subspan(begin), rate, hertz),
                    amplitudeAt(std::span(given).subspan(begin), rate, hertz));
}

class EqualizerRateTest : public ::testing::TestWithParam<int>
{
protected:
    const SampleRate rate{GetParam()};
};

std::vector<float> answerOf(const EqualizerBands& bands, SampleRate rate)
{
    Equalizer equalizer = settledAt(bands, rate);
    std::vector<float> impulse(static_cast<std::size_t>(rate.hertz) / 4 * 2, 0.0F);
    impulse.at(0) = impulse.at(1) = 1;
    return channelOf(through(equalizer, impulse), 2, 0);
}

// The analog peaking filter that a band is the image of.
double analogGain(const EqualizerBand& band, double hertz)
{
    const double peak = std::pow(10, band.gain / 20);
    const double edge = std::exp2(band.bandwidth / 24.0);
    const double detuning = hertz / band.frequency - band.frequency / hertz;
    const double width = edge - 1 / edge;
    return 10 *
           std::log10((detuning * detuning + width * width * peak) / (detuning * detuning + width * width / peak));
}

TEST_P(EqualizerRateTest, EachBandHasItsGainAtItsCentre)
{
    for (const float hertz : centres) {
        if (hertz > 0.45 * rate.hertz)
            continue;
        for (const float gain : {15.0F, -15.0F, 6.0F, -3.0F}) {
            for (const int side : {0, 1}) {
                Equalizer equalizer = settledAt(oneBand(hertz, gain), rate);
                EXPECT_NEAR(gainAt(hertz, equalizer, rate, side), gain, 0.02) << hertz << " Hz " << gain << " dB";
            }
        }
    }
}

TEST_P(EqualizerRateTest, EachBandHasItsGainAtItsCentreOverTheWholeRange)
{
    for (const float hertz : centres) {
        if (hertz > 0.45 * rate.hertz)
            continue;
        for (float gain = -15; gain <= 15; gain += 2.5F)
            EXPECT_NEAR(answeredGain(answerOf(oneBand(hertz, gain), rate), rate, hertz), gain, 0.02)
                << hertz << " Hz " << gain << " dB";
    }
}

TEST_P(EqualizerRateTest, HalfTheGainIsLeftHalfTheBandwidthFromTheCentre)
{
    for (const float hertz : centres) {
        if (hertz > 0.45 * rate.hertz)
            continue;
        for (const float gain : {15.0F, -6.0F}) {
            const auto answer = answerOf(oneBand(hertz, gain), rate);
            EXPECT_NEAR(answeredGain(answer, rate, hertz / std::sqrt(2.0)), gain / 2, 0.02)
                << "below " << hertz << " Hz, " << gain << " dB";
            // Above the centre, near half the rate, it is met less exactly.
            const double edge = hertz * std::sqrt(2.0);
            if (edge < 0.5 * rate.hertz) {
                EXPECT_NEAR(answeredGain(answer, rate, edge), gain / 2, std::abs(gain) / 12)
                    << "above " << hertz << " Hz, " << gain << " dB";
            }
        }
    }
}

TEST_P(EqualizerRateTest, EachBandFollowsTheAnalogFilterUpToHalfTheRate)
{
    for (const float hertz : centres) {
        if (hertz > 0.45 * rate.hertz)
            continue;
        for (const float gain : {15.0F, -15.0F, 4.0F}) {
            const auto answer = answerOf(oneBand(hertz, gain), rate);
            for (double share = 0.02; share <= 1; share += 0.02) {
                const double place = share * rate.hertz / 2;
                EXPECT_NEAR(answeredGain(answer, rate, place), analogGain({hertz, octave, gain}, place),
                            std::abs(gain) / 12)
                    << hertz << " Hz " << gain << " dB at " << place << " Hz";
            }
        }
    }
}

TEST_P(EqualizerRateTest, ABandThatTheRateCannotCarryChangesNotABit)
{
    for (const float hertz : centres) {
        if (hertz <= 0.45 * rate.hertz)
            continue;
        Equalizer equalizer = settledAt(oneBand(hertz, 15), rate);
        const auto sound = noiseSound(rate, 2, {4410}).interleaved();
        expectSame(through(equalizer, sound), sound, 2, rate);
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, EqualizerRateTest, ::testing::Values(8000, 22050, 44100, 48000, 192000),
                         [](const auto& row) { return "At" + std::to_string(row.param) + "Hertz"; });

std::vector<float> noise()
{
    return noiseSound(cdRate, 2, {22050}).interleaved();
}

TEST(EqualizerTest, FarFromItsCentreABandDoesNothing)
{
    Equalizer equalizer = settledAt(oneBand(1000, 15), cdRate);
    EXPECT_NEAR(gainAt(50, equalizer, cdRate), 0, 0.1);
    EXPECT_NEAR(gainAt(16000, equalizer, cdRate), 0, 0.1);
}

TEST(EqualizerTest, BandsAddUpInDecibels)
{
    EqualizerBands bands = oneBand(1000, 6);
    bands.band[1] = {1000, octave, -9};
    bands.count = 2;
    Equalizer equalizer = settledAt(bands, cdRate);
    EXPECT_NEAR(gainAt(1000, equalizer, cdRate), -3, 0.1);
}

TEST(EqualizerTest, WithAllGainsAt0NotABitIsChanged)
{
    Equalizer equalizer = settledAt(allBands(0), cdRate);
    expectSame(through(equalizer, noise()), noise(), 2, cdRate);
}

TEST(EqualizerTest, WithoutBandsNotABitIsChanged)
{
    Equalizer equalizer;
    equalizer.prepare(cdRate);
    expectSame(through(equalizer, noise()), noise(), 2, cdRate);
}

TEST(EqualizerTest, SwitchedOffNotABitIsChanged)
{
    Equalizer equalizer = settledAt(allBands(12, false), cdRate);
    expectSame(through(equalizer, noise()), noise(), 2, cdRate);
}

TEST(EqualizerTest, SoonAfterItIsSwitchedOffNotABitIsChanged)
{
    Equalizer equalizer = settledAt(allBands(-12), cdRate);
    const auto changed = through(equalizer, noise());
    EXPECT_NE(changed, noise());
    equalizer.set(allBands(-12, false));
    through(equalizer, std::vector<float>(2 * 2205, 0.1F));
    expectSame(through(equalizer, noise()), noise(), 2, cdRate);
}

TEST(EqualizerTest, BlocksOfAnySizeSoundTheSame)
{
    Equalizer one = settledAt(allBands(9), cdRate);
    Equalizer other = one;
    expectSame(through(one, noise(), 37), through(other, noise(), 4096), 2, cdRate);
}

TEST(EqualizerTest, AGainThatMovesFromEndToEndDoesNotClick)
{
    for (const double hertz : {80.0, 310.0, 1000.0, 6000.0}) {
        const auto band = static_cast<float>(hertz);
        const auto sound = sineSound(cdRate, 2, hertz, 0.5).interleaved();
        Equalizer loud = settledAt(oneBand(band, 15), cdRate);
        const auto steady = channelOf(through(loud, sound), 2, 0);
        const double steadyBend = largestBend(std::span(steady).subspan(11025));

        Equalizer moving = settledAt(oneBand(band, -15), cdRate);
        through(moving, sound);
        moving.set(oneBand(band, 15));
        const auto rising = channelOf(through(moving, sound), 2, 0);
        moving.set(oneBand(band, -15));
        const auto falling = channelOf(through(moving, sound), 2, 0);
        // The tone swells to nearly three times full scale: what the movement adds lies 75 dB below it.
        constexpr double ofTheGlide = 0.0005;
        EXPECT_LT(largestBend(rising), steadyBend + ofTheGlide) << hertz;
        EXPECT_LT(largestBend(falling), steadyBend + ofTheGlide) << hertz;
    }
}

// A tone whose gain is thrown to and fro spreads around its frequency. A click would reach far beyond.
TEST(EqualizerTest, ASliderThatIsSweptFastSpreadsNothingOverTheSpectrum)
{
    for (const double hertz : {80.0, 310.0, 1000.0}) {
        const auto band = static_cast<float>(hertz);
        std::vector<float> sound = sineSound(cdRate, 2, hertz, 2).interleaved();
        for (float& sample : sound)
            sample *= 0.3F;
        Equalizer equalizer = settledAt(oneBand(band, 0), cdRate);
        std::mt19937 random(1);
        std::uniform_real_distribution<float> gain(-15, 15);
        constexpr std::size_t block = 2 * 441;
        for (std::size_t place = 0; place < sound.size(); place += block) {
            equalizer.set(oneBand(band, gain(random)));
            equalizer.process(sound.data() + place, {441});
        }
        const auto heard = channelOf(sound, 2, 0);
        const double tone = amplitudeAt(heard, cdRate, hertz);
        double farthest = 0;
        for (double place = 10 * hertz + 3000; place < 20000; place += 37)
            farthest = std::max(farthest, amplitudeAt(heard, cdRate, place));
        EXPECT_LT(decibels(farthest, tone), -110) << hertz;
    }
}

TEST(EqualizerTest, AGainThatMovesArrivesWithinATwentiethOfASecond)
{
    Equalizer moving = settledAt(oneBand(1000, -15), cdRate);
    moving.set(oneBand(1000, 15));
    through(moving, std::vector<float>(2 * 2205, 0.0F));
    EXPECT_NEAR(gainAt(1000, moving, cdRate), 15, 0.1);
}

TEST(EqualizerTest, SettlingForgetsTheSoundSoFar)
{
    Equalizer equalizer = settledAt(allBands(15), cdRate);
    through(equalizer, noise());
    equalizer.settle();
    const std::vector<float> silence(2 * 441, 0.0F);
    expectSame(through(equalizer, silence), silence, 2, cdRate);
}

TEST(EqualizerTest, AnotherRateKeepsTheGains)
{
    Equalizer equalizer = settledAt(oneBand(1000, 6), {44100});
    equalizer.prepare({96000});
    EXPECT_NEAR(gainAt(1000, equalizer, {96000}), 6, 0.1);
}

TEST(EqualizerTest, ABandMayBeMovedElsewhere)
{
    Equalizer equalizer = settledAt(oneBand(1000, 6), cdRate);
    equalizer.set(oneBand(3000, -6));
    through(equalizer, noise());
    EXPECT_NEAR(gainAt(3000, equalizer, cdRate), -6, 0.1);
    EXPECT_GT(gainAt(1000, equalizer, cdRate), -2);
}

TEST(EqualizerTest, FullScaleWithAllBandsAtTheirTopIsLimitedAndStaysATone)
{
    Equalizer equalizer = settledAt(allBands(15), cdRate);
    Limiter limiter({441});
    limiter.prepare(cdRate);
    auto sound = sineSound(cdRate, 2, 1000, 2).interleaved();
    for (float& sample : sound)
        sample *= 2;
    for (std::size_t place = 0; place < sound.size(); place += 2 * 441) {
        equalizer.process(sound.data() + place, {441});
        limiter.process(sound.data() + place, {441});
    }
    EXPECT_TRUE(std::all_of(sound.begin(), sound.end(), [](float sample) { return std::abs(sample) <= 1; }));
    const auto heard = channelOf(sound, 2, 0);
    const auto steady = std::span(heard).subspan(44100);
    const double tone = amplitudeAt(steady, cdRate, 1000);
    EXPECT_GT(tone, 0.97);
    double harmonics = 0;
    for (int harmonic = 2; harmonic < 20; ++harmonic)
        harmonics += std::pow(amplitudeAt(steady, cdRate, 1000.0 * harmonic), 2);
    // The bands add up to more than 20 dB. A sine that is clipped so far is a square wave: 48%.
    EXPECT_LT(std::sqrt(harmonics) / tone, 0.03);
}

TEST(EqualizerTest, NoiseAtAllGainsStaysFinite)
{
    for (const float gain : {-15.0F, 15.0F}) {
        Equalizer equalizer = settledAt(allBands(gain), cdRate);
        const auto heard = through(equalizer, noise());
        EXPECT_TRUE(allFinite(heard));
    }
}

}  // namespace
