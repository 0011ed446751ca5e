#include "sound/editor/PhaseContinuation.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"
#include "sound/editor/SpectralJoin.h"

#include <gtest/gtest.h>
#include <cmath>
#include <functional>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

using std::numbers::pi;
constexpr double seconds = 2;

using PieceWave = std::function<double(double time, int channel)>;

std::vector<float> pieceOf(const PieceWave& wave, SampleRate rate, int channels)
{
    const FrameCount length{static_cast<std::int64_t>(seconds * rate.hertz)};
    return MemorySound::of(rate, channels, length,
                           [&](std::int64_t frame, int channel) {
                               return wave(static_cast<double>(frame) / rate.hertz, channel);
                           })
        .interleaved();
}

/// The coming piece as it goes on after the leaving one; of that the beginning is what both have in common.
std::vector<float> carriedOn(const PieceWave& leaving, const PieceWave& coming, SampleRate rate = cdRate,
                             int channels = 1)
{
    std::vector<float> piece = pieceOf(coming, rate, channels);
    PhaseContinuation(rate, channels).carryOn(pieceOf(leaving, rate, channels).data(), piece);
    return piece;
}

PieceWave toneTurned(double hertz, double turned)
{
    return [=](double time, int) { return 0.5 * std::sin(2 * pi * hertz * time + turned); };
}

/// All but the edges, where a tone that begins of a sudden has other frequencies too.
std::span<const float> insideOf(const std::vector<float>& mono, SampleRate rate)
{
    const auto edge = static_cast<std::size_t>(rate.hertz) / 8;
    return std::span(mono).subspan(edge, mono.size() - 2 * edge);
}

class PhaseAtEveryRateTest : public ::testing::TestWithParam<int>
{
};

TEST_P(PhaseAtEveryRateTest, AToneGoesOnAtThePhaseThatItHas)
{
    const SampleRate rate{GetParam()};
    for (const double hertz : {41.2, 330.0, 1900.0}) {
        for (const double turned : {0.4, 1.7, pi, -2.5}) {
            const std::vector<float> out = carriedOn(toneTurned(hertz, 0), toneTurned(hertz, turned), rate);
            const std::vector<float> wanted = pieceOf(toneTurned(hertz, 0), rate, 1);
            expectClose(insideOf(out, rate), insideOf(wanted, rate), 0.005, 1, rate);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, PhaseAtEveryRateTest, ::testing::Values(8000, 44100, 96000));

TEST(PhaseContinuationTest, EachPartialOfABassHasItsOwnAngle)
{
    const auto bass = [](double turns) -> PieceWave {
        return [turns](double time, int) {
            double sum = 0;
            for (int partial = 1; partial <= 6; ++partial)
                sum += 0.2 / partial * std::sin(2 * pi * 41.2 * partial * time + turns * 2.4 * partial * partial);
            return sum;
        };
    };
    const std::vector<float> out = carriedOn(bass(0), bass(1));
    expectClose(insideOf(out, cdRate), insideOf(pieceOf(bass(0), cdRate, 1), cdRate), 0.005, 1, cdRate);
}

TEST(PhaseContinuationTest, BothChannelsTurnAlike)
{
    // Louder and earlier on the left; another tone is only on the right.
    const auto stereo = [](double turned) -> PieceWave {
        return [turned](double time, int channel) {
            const double both = 2 * pi * 440 * time + turned;
            const double right = 2 * pi * 1320 * time - 2 * turned;
            return channel == 0 ? 0.4 * std::sin(both) : 0.2 * std::sin(both - 0.7) + 0.3 * std::sin(right);
        };
    };
    const std::vector<float> out = carriedOn(stereo(0), stereo(2.2), cdRate, 2);
    const std::vector<float> wanted = pieceOf(stereo(0), cdRate, 2);
    for (const int channel : {0, 1}) {
        expectClose(insideOf(channelOf(out, 2, channel), cdRate), insideOf(channelOf(wanted, 2, channel), cdRate),
                    0.005, 1, cdRate);
    }
}

TEST(PhaseContinuationTest, ANoteThatIsStruckAgainHasItsOwnAttack)
{
    constexpr double attack = 1.2;
    const auto struckAgain = [](double turned) -> PieceWave {
        return [turned](double time, int) {
            const double since = time - attack;
            const double level = since < 0 ? 0.15 : 0.15 + 0.4 * std::exp(-since * 3);
            return level * std::sin(2 * pi * 110 * time + turned);
        };
    };
    const std::vector<float> out = carriedOn(struckAgain(0), struckAgain(2.5));
    const std::vector<float> before = pieceOf(struckAgain(0), cdRate, 1);
    const std::vector<float> after = pieceOf(struckAgain(2.5), cdRate, 1);
    const auto frameOf = [](double time) { return static_cast<std::size_t>(time * cdRate.hertz); };
    const auto stretch = [&](const std::vector<float>& sound, double from, double to) {
        return std::span(sound).subspan(frameOf(from), frameOf(to) - frameOf(from));
    };
    expectClose(stretch(out, 0.125, 0.6), stretch(before, 0.125, 0.6), 0.005, 1, cdRate);
    expectClose(stretch(out, attack - 0.02, attack + 0.05), stretch(after, attack - 0.02, attack + 0.05), 0.02, 1,
                cdRate);
    expectSame(stretch(out, attack + 0.05, seconds), stretch(after, attack + 0.05, seconds), 1, cdRate);
    // On the way back it grows no softer.
    for (double time = 0.6; time < attack - 0.1; time += 0.02)
        EXPECT_NEAR(decibels(amplitudeAt(stretch(out, time, time + 0.04), cdRate, 110), 0.15), 0, 0.5) << time;
}

TEST(PhaseContinuationTest, WhatHasDiedAwayIsLeftAsItIs)
{
    const auto dying = [](double turned) -> PieceWave {
        return [turned](double time, int) {
            return 0.5 * std::exp(-time * 6) * std::sin(2 * pi * 220 * time + turned);
        };
    };
    const std::vector<float> out = carriedOn(dying(0), dying(1.5));
    const std::vector<float> wanted = pieceOf(dying(1.5), cdRate, 1);
    const std::size_t silent = 3 * 44100 / 2;
    expectSame(std::span(out).subspan(silent), std::span(wanted).subspan(silent), 1, cdRate);
}

TEST(PhaseContinuationTest, TrebleIsLeftAsItIs)
{
    expectSame(carriedOn(toneTurned(2500, 0), toneTurned(2500, 1)), pieceOf(toneTurned(2500, 1), cdRate, 1), 1,
               cdRate);
}

TEST(PhaseContinuationTest, SilenceStaysSilence)
{
    const PieceWave silence = [](double, int) { return 0.0; };
    expectSame(carriedOn(silence, silence, cdRate, 2), pieceOf(silence, cdRate, 2), 2, cdRate);
}

// Two renderings of noise have no angle that stays.
TEST(PhaseContinuationTest, NoiseKeepsItsLevel)
{
    const FrameCount length{static_cast<std::int64_t>(seconds * cdRate.hertz)};
    const std::vector<float> leaving = noiseSound(cdRate, 1, length, 1).interleaved();
    const std::vector<float> coming = noiseSound(cdRate, 1, length, 2).interleaved();
    std::vector<float> out = coming;
    PhaseContinuation(cdRate, 1).carryOn(leaving.data(), out);
    EXPECT_NEAR(decibels(levelOf(out), levelOf(coming)), 0, 0.1);
    const std::size_t whole = 44100;
    expectSame(std::span(out).subspan(whole), std::span(coming).subspan(whole), 1, cdRate);
}

}  // namespace
