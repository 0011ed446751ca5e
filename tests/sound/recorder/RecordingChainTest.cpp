#include "sound/recorder/RecordingChain.h"

#include "sound/Comparison.h"
#include "sound/SoundFiles.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <vector>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;

namespace {

using Change = LevelWatch::Change;

constexpr SampleRate rate{48000};
constexpr RecordingFormat wav{wavFormat(), rate, 2};

/// So many milliseconds of one value, which 16 bits hold.
std::vector<float> level(int milliseconds, int value)
{
    return std::vector<float>(static_cast<std::size_t>(milliseconds) * 48 * 2, static_cast<float>(value) / 32768);
}

std::vector<float> operator+(std::vector<float> one, const std::vector<float>& other)
{
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

class RecordingChainTest : public ::testing::Test
{
protected:
    /// All of it; the changes on the way.
    std::vector<Change> take(std::span<const float> stereo)
    {
        std::vector<Change> changes;
        while (!stereo.empty()) {
            const RecordingChain::Step step = chain.take(stereo);
            EXPECT_FALSE(step.failed);
            if (step.change)
                changes.push_back(*step.change);
            stereo = stereo.subspan(static_cast<std::size_t>(step.taken.value) * 2);
        }
        return changes;
    }

    void leaveSilenceOut()
    {
        chain.watchLevel(true);
        chain.setThreshold(3000);
        chain.setShortestPause(0ms);
    }

    std::vector<float> recorded() const { return decodedByFfmpeg(path, 2); }

    SoundFiles files;
    const QString path = files.path("recording.wav");
    RecordingChain chain{rate};
};

TEST_F(RecordingChainTest, WithoutARecordingNothingIsWrittenButThePeaksAreThere)
{
    take(level(10, 1000) + level(10, -16384) + level(10, 500));
    const Peaks peaks = chain.takePeaks();
    EXPECT_EQ(peaks.left, 0.5F);
    EXPECT_EQ(peaks.right, 0.5F);
    EXPECT_EQ(chain.takePeaks().left, 0);
    EXPECT_FALSE(chain.isRecording());
}

TEST_F(RecordingChainTest, WhatComesFromTheBeginningToTheEndIsWritten)
{
    take(level(50, 111));
    ASSERT_TRUE(chain.begin(path, wav));
    EXPECT_TRUE(chain.isRecording());
    const auto sound = level(300, 222) + level(300, -333);
    take(sound);
    EXPECT_TRUE(chain.end());
    EXPECT_FALSE(chain.isRecording());
    take(level(50, 444));
    expectSame(recorded(), sound, 2, rate);
}

TEST_F(RecordingChainTest, ClippingIsKeptOffWhereWantedAndThePeaksTellWhatCame)
{
    const auto tooLoud = level(100, 100) + level(100, 40000) + level(100, 100);
    ASSERT_TRUE(chain.begin(path, wav));
    chain.keepFromClipping(true);
    take(tooLoud);
    ASSERT_TRUE(chain.end());
    auto samples = recorded();
    EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), RecordingChain::ceiling, 2 / 32768.0);
    EXPECT_GT(chain.takePeaks().left, 1.2F);

    chain.keepFromClipping(false);
    ASSERT_TRUE(chain.begin(path, wav));
    take(tooLoud);
    ASSERT_TRUE(chain.end());
    samples = recorded();
    EXPECT_GT(*std::max_element(samples.begin(), samples.end()), 0.9999);
}

TEST_F(RecordingChainTest, BelowTheCeilingKeepingOffClippingChangesNoBit)
{
    const auto sound = level(100, 32000) + level(100, -32000);
    ASSERT_TRUE(chain.begin(path, wav));
    chain.keepFromClipping(true);
    take(sound);
    ASSERT_TRUE(chain.end());
    expectSame(recorded(), sound, 2, rate);
}

TEST_F(RecordingChainTest, ChangesComeWithTheFramesBeforeThemTaken)
{
    chain.watchLevel(true);
    chain.setThreshold(3000);
    chain.setShortestPause(1000ms);
    const auto sound = level(20, 0) + level(20, 5000) + level(1500, 0);
    std::vector<std::pair<std::int64_t, Change>> found;
    std::int64_t before = 0;
    for (std::span<const float> left = sound; !left.empty();) {
        const RecordingChain::Step step = chain.take(left);
        before += step.taken.value;
        if (step.change)
            found.emplace_back(before, *step.change);
        left = left.subspan(static_cast<std::size_t>(step.taken.value) * 2);
    }
    EXPECT_EQ(found, (std::vector<std::pair<std::int64_t, Change>>{{20 * 48, Change::Sound},
                                                                   {1040 * 48, Change::Silence}}));
}

TEST_F(RecordingChainTest, UnwatchedThereAreNoChanges)
{
    chain.setThreshold(3000);
    chain.watchLevel(true);
    chain.watchLevel(false);
    EXPECT_TRUE(take(level(20, 0) + level(20, 5000) + level(3000, 0)).empty());
}

TEST_F(RecordingChainTest, SilenceIsLeftOutButALeadInAndAHangOver)
{
    leaveSilenceOut();
    ASSERT_TRUE(chain.begin(path, wav));
    const auto changes =
        take(level(2000, 50) + level(500, 8000) + level(5000, 51) + level(700, -8000) + level(3000, 52));
    ASSERT_TRUE(chain.end());
    EXPECT_EQ(changes,
              (std::vector{Change::Silence, Change::Sound, Change::Silence, Change::Sound, Change::Silence}));
    const auto samples = recorded();
    constexpr std::size_t first = 100 + 500 + 300;
    constexpr std::size_t second = 100 + 700 + 300;
    ASSERT_EQ(samples.size(), (first + second) * 48 * 2);
    const auto at = [&](std::size_t milliseconds) {
        return static_cast<int>(std::lround(samples[milliseconds * 48 * 2] * 32768));
    };
    EXPECT_EQ(at(50), 50);
    EXPECT_EQ(at(99), 50);
    EXPECT_EQ(at(100), 8000);
    EXPECT_EQ(at(599), 8000);
    EXPECT_EQ(at(600), 51);
    EXPECT_EQ(at(first + 50), 51);
    EXPECT_EQ(at(first + 99), 51);
    EXPECT_EQ(at(first + 100), -8000);
    EXPECT_EQ(at(first + 799), -8000);
    EXPECT_EQ(at(first + 1000), 52);
}

TEST_F(RecordingChainTest, SilenceIsToldAnewWhenARecordingBeginsInIt)
{
    leaveSilenceOut();
    EXPECT_EQ(take(level(1000, 0)), std::vector{Change::Silence});
    ASSERT_TRUE(chain.begin(path, wav));
    EXPECT_EQ(take(level(1000, 0)), std::vector{Change::Silence});
}

TEST_F(RecordingChainTest, WhereOnlyPausesAreToldTheSilenceStays)
{
    leaveSilenceOut();
    chain.setShortestPause(1000ms);
    ASSERT_TRUE(chain.begin(path, wav));
    const auto sound = level(500, 8000) + level(3000, 7) + level(200, 8000);
    take(sound);
    ASSERT_TRUE(chain.end());
    expectSame(recorded(), sound, 2, rate);
}

TEST_F(RecordingChainTest, TheFirstSoundWithItsLeadInGoesToTheFileThatItsComingBegins)
{
    leaveSilenceOut();
    const QString waiting = files.path("waiting.wav");
    ASSERT_TRUE(chain.begin(waiting, wav));
    const auto sound = level(2000, 7) + level(900, 8000);
    std::span<const float> left = sound;
    for (bool come = false; !come;) {
        const RecordingChain::Step step = chain.take(left);
        left = left.subspan(static_cast<std::size_t>(step.taken.value) * 2);
        come = step.change == Change::Sound;
    }
    chain.watchLevel(false);
    ASSERT_TRUE(chain.begin(path, wav));
    take(left);
    ASSERT_TRUE(chain.end());

    EXPECT_TRUE(decodedByFfmpeg(waiting, 2).empty());
    const auto samples = recorded();
    ASSERT_EQ(samples.size(), (100U + 900U) * 48 * 2);
    EXPECT_EQ(samples[100 * 48 * 2 - 2], 7 / 32768.0F);
    EXPECT_EQ(samples[100 * 48 * 2], 8000 / 32768.0F);
}

TEST_F(RecordingChainTest, ToEndInTheMiddleOfASoundLosesNothing)
{
    leaveSilenceOut();
    ASSERT_TRUE(chain.begin(path, wav));
    take(level(100, 8000));
    ASSERT_TRUE(chain.end());
    EXPECT_EQ(recorded(), level(100, 8000));
}

TEST_F(RecordingChainTest, AnotherDeviceGoesOnInTheSameFile)
{
    ASSERT_TRUE(chain.begin(path, wav));
    take(level(1000, 8000));
    chain.changeRate({24000});
    take(std::vector<float>(24000 * 2, 0.25F));
    ASSERT_TRUE(chain.end());
    EXPECT_EQ(recorded().size(), 96000U * 2);
}

TEST_F(RecordingChainTest, AFailureEndsTheRecording)
{
    EXPECT_FALSE(chain.begin("/proc/no/such.wav", wav));
    EXPECT_FALSE(chain.isRecording());
}

}  // namespace
