#include "vocalmixes/Mix.h"

#include "vocalmixes/IdealMask.h"
#include "vocalmixes/Measures.h"
#include "wave/WavFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vocalmixes {
namespace {

constexpr int kRate = 44100;

// Seconds of a tone, with silence around it.
std::vector<float> tone(double hertz, double amplitude, double from, double to, double seconds)
{
    std::vector<float> samples(static_cast<std::size_t>(seconds * kRate));
    for (auto i = static_cast<std::size_t>(from * kRate); i < static_cast<std::size_t>(to * kRate); ++i) {
        samples[i] =
            static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / kRate));
    }
    return samples;
}

double energy(const std::vector<float>& samples)
{
    double sum = 0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * sample;
    }
    return sum;
}

class VocalMixTest : public ::testing::Test
{
protected:
    VocalMixTest()
    {
        std::filesystem::create_directories(folder / "song" / "instruments");
        std::filesystem::create_directories(folder / "song" / "voices");
        const std::vector<float> low = tone(220, .3, 0, 4, 4);
        const std::vector<float> high = tone(3520, .1, 0, 3, 3);  // has come to its end before
        writeFloatWav(folder / "song" / "instruments" / "low.wav", {kRate, low, low});
        writeFloatWav(folder / "song" / "instruments" / "high.wav", {kRate, high, high});
        const std::vector<float> voice = tone(880, .01, 1, 2, 4);
        writeFloatWav(folder / "song" / "voices" / "singer.wav", {kRate, voice, voice});
    }

    ~VocalMixTest() override { std::filesystem::remove_all(folder); }

    Mix mix(const Recipe& recipe) const { return mixOf(folder, recipe).value_or(Mix{}); }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vocalmixtest-" + std::to_string(::getpid()));
};

TEST_F(VocalMixTest, PartsAddUp)
{
    const Mix made = mix({"song", "singer", 0, false, .5, 3});
    ASSERT_EQ(made.instruments.size(), 2U);
    EXPECT_EQ(made.instruments[0].name, "high");
    EXPECT_EQ(made.instruments[1].name, "low");
    ASSERT_EQ(made.sum.frames(), 3U * kRate);
    for (std::size_t i = 0; i < made.sum.frames(); i += 100) {
        const float instruments = made.instruments[0].sound.left[i] + made.instruments[1].sound.left[i];
        ASSERT_NEAR(made.accompaniment.left[i], instruments, 1e-6);
        ASSERT_NEAR(made.sum.left[i], instruments + made.voice.left[i], 1e-6);
    }
}

TEST_F(VocalMixTest, TheVoiceHasTheEnergyOfAllInstrumentsWhereItSounds)
{
    const Mix made = mix({"song", "singer", 0, false, 0, 4});
    // Both instruments sound all through that second.
    EXPECT_NEAR(energy(made.voice.left) + energy(made.voice.right),
                (energy(made.instruments[0].sound.left) / 3 + energy(made.instruments[1].sound.left) / 4) * 2,
                energy(made.voice.left) * .001);
}

TEST_F(VocalMixTest, TheVoiceStandsAtItsPlaceWithEqualPower)
{
    const Mix left = mix({"song", "singer", -100, false, 0, 4});
    EXPECT_NEAR(energy(left.voice.right), 0, 1e-9);
    const Mix near = mix({"song", "singer", 60, false, 0, 4});
    EXPECT_NEAR(std::sqrt(energy(near.voice.right) / energy(near.voice.left)), std::tan(.4 * std::numbers::pi),
                1e-3);
}

TEST_F(VocalMixTest, ItsPeakIsJustBelowFullScale)
{
    const Mix made = mix({"song", "singer", 30, false, 0, 4});
    float peak = 0;
    for (std::size_t i = 0; i < made.sum.frames(); ++i) {
        peak = std::max({peak, std::abs(made.sum.left[i]), std::abs(made.sum.right[i])});
    }
    EXPECT_NEAR(peak, .9, 1e-6);
}

TEST_F(VocalMixTest, ARoomAnswersFromBothSides)
{
    const Mix made = mix({"song", "singer", -100, true, 0, 4});
    const double answer = energy(made.voice.right) / energy(made.voice.left);
    EXPECT_GT(answer, .005);
    EXPECT_LT(answer, .1);
    EXPECT_GT(energy({made.voice.right.begin() + 2 * kRate, made.voice.right.end()}), 0);  // after the last word
}

TEST_F(VocalMixTest, WhoKnowsThePartsTakesAVoiceBetweenTheCutOffsFromTonesOfOtherPitches)
{
    const Mix made = mix({"song", "singer", 0, false, 0, 4});
    EXPECT_GT(signalToDistortion(made.accompaniment, idealResult(made, 300, 8000)), 25);
    EXPECT_GT(signalToDistortion(made.sum, idealResult(made, 6000, 8000)), 50);
}

TEST_F(VocalMixTest, AMixWithoutAllOfItsPartsIsNone)
{
    EXPECT_FALSE(mixOf(folder, {"song", "speaker", 0, false, 0, 4}).has_value());
    EXPECT_FALSE(mixOf(folder, {"other", "singer", 0, false, 0, 4}).has_value());
    writeWav(folder / "song" / "instruments" / "slow.wav", {22050, {0, 0}, {0, 0}});
    EXPECT_FALSE(mixOf(folder, {"song", "singer", 0, false, 0, 4}).has_value());
}

}  // namespace
}  // namespace vocalmixes
