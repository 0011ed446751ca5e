#include "heard/Onsets.h"
#include "practicetrack/Score.h"
#include "practicetrack/Track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

class PracticeTrackTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { sound = practice::track(); }

    static float peakOf(const std::vector<float>& samples)
    {
        float peak = 0;
        for (const float sample : samples) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    }

    static StereoSound sound;
};

StereoSound PracticeTrackTest::sound;

TEST_F(PracticeTrackTest, PlayingItAgainGivesTheSameSamples)
{
    const StereoSound again = practice::track();
    EXPECT_EQ(again.left, sound.left);
    EXPECT_EQ(again.right, sound.right);
}

TEST_F(PracticeTrackTest, LastsSixteenBarsOfTwoSecondsAndTheLastChord)
{
    EXPECT_EQ(sound.rate, 44100);
    EXPECT_EQ(sound.frames(), 34U * 44100U);
    EXPECT_EQ(sound.left.size(), sound.right.size());
}

TEST_F(PracticeTrackTest, IsLoudAndNeverReachesFullScale)
{
    const float peak = std::max(peakOf(sound.left), peakOf(sound.right));
    EXPECT_LT(peak, .85F);
    EXPECT_GT(peak, .83F);
}

TEST_F(PracticeTrackTest, EndsInSilence)
{
    EXPECT_LT(peakOf(stretchOf(sound, 33.99, 34).left), .002F);
}

TEST_F(PracticeTrackTest, TheTwoSidesDiffer)
{
    double same = 0;
    double other = 0;
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        same += std::pow(sound.left[i] + sound.right[i], 2);
        other += std::pow(sound.left[i] - sound.right[i], 2);
    }
    EXPECT_GT(other, .08 * same);  // broad, the sides 11 dB under the middle
    EXPECT_LT(other, .7 * same);   // and yet whole for who hears it from one speaker
}

TEST_F(PracticeTrackTest, EveryBeatIsStruckWithinAHundredthOfASecond)
{
    const heard::Onsets onsets = heard::onsetsOf(sound);
    const double mean =
        std::accumulate(onsets.strength.begin(), onsets.strength.end(), 0.0) / onsets.strength.size();
    constexpr double kSecondsPerBeat = .5;  // 120 beats a minute
    for (int beat = 0; beat < 64; ++beat) {
        const auto at = static_cast<std::ptrdiff_t>(beat * kSecondsPerBeat * onsets.rate);
        const auto reach = static_cast<std::ptrdiff_t>(.012 * onsets.rate);
        const auto begin = onsets.strength.begin() + std::max<std::ptrdiff_t>(0, at - reach);
        EXPECT_GT(*std::max_element(begin, onsets.strength.begin() + at + reach), 3 * mean) << "beat " << beat;
    }
}

TEST_F(PracticeTrackTest, TheBeatComesBackAfterHalfASecond)
{
    const heard::Onsets onsets = heard::onsetsOf(sound);
    const auto similarity = [&](double seconds) {
        const auto lag = static_cast<std::ptrdiff_t>(std::lround(seconds * onsets.rate));
        return std::inner_product(onsets.strength.begin() + lag, onsets.strength.end(), onsets.strength.begin(),
                                  0.0);
    };
    for (const double offBeat : {.35, .4, .45, .55, .6, .65}) {
        EXPECT_GT(similarity(.5), 1.2 * similarity(offBeat)) << offBeat;
    }
}

}  // namespace
