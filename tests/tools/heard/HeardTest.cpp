#include "heard/Difference.h"
#include "heard/Gaps.h"
#include "heard/LoopPeriod.h"
#include "heard/Pitch.h"
#include "heard/Tempo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace {

constexpr int kRate = 44100;

// Plucked notes at uneven times, played straight at the speed and pitch that are wanted: what a perfect stretcher
// would make of the line at speed 1 and pitch 0. With @p phases the partials of each note begin elsewhere in their
// wave, as they do behind a real one.
StereoSound line(double seconds, double speed, double semitones, std::uint32_t phases = 0)
{
    std::mt19937 melody(17);  // the same notes in every call
    std::mt19937 turned(phases);
    const auto upTo = [](std::mt19937& numbers, double top) { return top * numbers() / 4294967296.0; };

    const auto frames = static_cast<std::size_t>(seconds / speed * kRate);
    StereoSound sound{kRate, std::vector<float>(frames), {}};
    for (double begin = 0; begin < seconds; begin += .12 + upTo(melody, .3)) {
        const double key = 45 + std::floor(upTo(melody, 36));
        const double hertz = 440 * std::exp2((key - 69 + semitones) / 12);
        const auto first = static_cast<std::size_t>(begin / speed * kRate);
        for (int partial = 1; partial <= 5; ++partial) {
            const double phase = phases == 0 ? 0 : upTo(turned, 2 * std::numbers::pi);
            for (std::size_t i = first; i < frames && i < first + kRate / 2; ++i) {
                const double second = static_cast<double>(i - first) / kRate;
                sound.left[i] +=
                    static_cast<float>(.1 / partial * std::exp(-6 * second * speed) *
                                       std::sin(2 * std::numbers::pi * hertz * partial * second + phase));
            }
        }
    }
    sound.right = sound.left;
    return sound;
}

StereoSound repeated(const StereoSound& pass, int times)
{
    StereoSound sound{pass.rate, {}, {}};
    for (int i = 0; i < times; ++i) {
        sound.left.insert(sound.left.end(), pass.left.begin(), pass.left.end());
        sound.right.insert(sound.right.end(), pass.right.begin(), pass.right.end());
    }
    return sound;
}

struct Played
{
    const char* name;
    double speed;
    double semitones;
};

class HeardTest : public ::testing::TestWithParam<Played>
{
};

TEST_P(HeardTest, SpeedAndPitchOfAPartAreFoundAgainstTheWhole)
{
    const auto& [name, speed, semitones] = GetParam();
    const StereoSound original = line(30, 1, 0);
    const StereoSound stretch = stretchOf(line(30, speed, semitones), 6 / speed, 14 / speed);

    const std::optional<heard::TempoMatch> tempo = heard::tempoOf(stretch, original);
    ASSERT_TRUE(tempo.has_value());
    EXPECT_NEAR(tempo->ratio, speed, .001 * speed);

    const heard::PitchMatch pitch = heard::pitchOf(stretch, original, *tempo);
    EXPECT_NEAR(pitch.cents, 100 * semitones, 2);
    EXPECT_NEAR(pitch.originalSecond, 6, .02);
}

INSTANTIATE_TEST_SUITE_P(Played, HeardTest,
                         ::testing::Values(Played{"Unchanged", 1, 0}, Played{"Slower", .8, 0},
                                           Played{"SlowerAndHigher", .8, 2}, Played{"Lower", 1, -5.37},
                                           Played{"MuchSlower", .4, 0}, Played{"FasterAndAnOctaveUp", 1.6, 12},
                                           Played{"AsOnATurntable", 1.25, 12 * .32192809}),
                         [](const auto& test) { return test.param.name; });

TEST(HeardTest, NoiseMatchesNoTempo)
{
    std::mt19937 numbers(5);
    StereoSound noise{kRate, std::vector<float>(8 * kRate), {}};
    for (float& sample : noise.left) {
        sample = static_cast<float>(numbers() / 4294967296.0 - .5);
    }
    noise.right = noise.left;
    EXPECT_FALSE(heard::tempoOf(noise, line(30, 1, 0)).has_value());
}

TEST(HeardTest, TheSamePassAgainIsFoundToTheFrame)
{
    const StereoSound pass = stretchOf(line(30, 1, 0), 7, 9.345);
    ASSERT_EQ(pass.frames(), 103415U);  // 2.345 s are 103414.5 frames

    const std::optional<heard::LoopPeriod> period = heard::loopPeriodOf(repeated(pass, 8));
    ASSERT_TRUE(period.has_value());
    EXPECT_TRUE(period->byWaves);
    EXPECT_NEAR(period->frames, 103415, .01);
}

TEST(HeardTest, PassesOfOtherPhasesAreFoundByTheirNotes)
{
    StereoSound sound{kRate, {}, {}};
    for (std::uint32_t pass = 1; pass <= 6; ++pass) {
        const StereoSound next = stretchOf(line(12, .8, 2, pass), 5, 5 + 2.345 / .8);
        sound.left.insert(sound.left.end(), next.left.begin(), next.left.end());
        sound.right.insert(sound.right.end(), next.right.begin(), next.right.end());
    }
    const double wanted = std::round(2.345 / .8 * kRate);

    const std::optional<heard::LoopPeriod> period = heard::loopPeriodOf(sound);
    ASSERT_TRUE(period.has_value());
    EXPECT_NEAR(period->frames, wanted, 20);  // half a millisecond
}

TEST(HeardTest, SoundThatNeverComesBackHasNoPeriod)
{
    EXPECT_FALSE(heard::loopPeriodOf(line(20, 1, 0)).has_value());
}

TEST(HeardTest, ACopyDiffersByNothing)
{
    const StereoSound original = line(12, 1, 0);
    const heard::Difference difference = heard::differenceOf(stretchOf(original, 3.5, 8), original);
    EXPECT_EQ(difference.largest, 0);
    EXPECT_DOUBLE_EQ(difference.originalSecond, 3.5);
}

TEST(HeardTest, OneWrongSampleIsNoticed)
{
    const StereoSound original = line(12, 1, 0);
    StereoSound stretch = stretchOf(original, 3.5, 8);
    stretch.right[1000] += .25F;
    EXPECT_NEAR(heard::differenceOf(stretch, original).largest, .25, 1e-6);
}

TEST(HeardTest, SilenceInTheMiddleIsAGapAndSilenceAroundIsNot)
{
    StereoSound sound{kRate, std::vector<float>(kRate, .5F), std::vector<float>(kRate, .5F)};
    const auto silence = [&sound](std::size_t from, std::size_t count) {
        std::fill_n(sound.left.begin() + static_cast<std::ptrdiff_t>(from), count, 0.0F);
        std::fill_n(sound.right.begin() + static_cast<std::ptrdiff_t>(from), count, 0.0F);
    };
    silence(0, 1000);
    silence(5000, 44);
    silence(7000, 43);  // less than a millisecond
    silence(9000, 3000);
    silence(44000, 100);
    EXPECT_EQ(heard::gapsIn(sound), 2);
}

}  // namespace
