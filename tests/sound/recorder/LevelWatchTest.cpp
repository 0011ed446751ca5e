#include "sound/recorder/LevelWatch.h"

#include "sound/recorder/CaptureLevel.h"

#include <gtest/gtest.h>
#include <ostream>
#include <utility>
#include <vector>

using namespace sound;
using namespace std::chrono_literals;

namespace {

using Change = LevelWatch::Change;

/// Frames of one level, of 32768 for full scale.
struct Stretch
{
    int frames;
    int level;
};

std::vector<float> stereo(const std::vector<Stretch>& stretches)
{
    std::vector<float> samples;
    for (const Stretch& stretch : stretches)
        samples.insert(samples.end(), static_cast<std::size_t>(stretch.frames) * 2,
                       static_cast<float>(stretch.level) / 32768);
    return samples;
}

using Changes = std::vector<std::pair<std::int64_t, Change>>;

/// Every change that is found, with the number of frames before it, where so many frames are watched at once.
Changes changesIn(LevelWatch& watch, std::span<const float> samples, std::size_t framesAtOnce = 1000000)
{
    Changes found;
    std::int64_t before = 0;
    while (!samples.empty()) {
        std::span<const float> part = samples.first(std::min(samples.size(), framesAtOnce * 2));
        const auto change = watch.watch(part);
        if (change) {
            part = part.first(static_cast<std::size_t>(change->before.value) * 2);
            found.emplace_back(before + change->before.value, change->change);
        }
        before += static_cast<std::int64_t>(part.size() / 2);
        samples = samples.subspan(part.size());
    }
    return found;
}

class LevelWatchTest : public ::testing::Test
{
protected:
    LevelWatchTest()
    {
        watch.setThreshold(3000);
        watch.setShortestPause(2000ms);
    }

    LevelWatch watch{SampleRate{1000}};  // a frame is a millisecond
};

TEST_F(LevelWatchTest, SoundBeginsWithTheFirstFrameAboveTheThreshold)
{
    const auto sound = stereo({{500, 3000}, {10, 3001}, {100, 0}});
    EXPECT_EQ(changesIn(watch, sound), (Changes{{500, Change::Sound}}));
}

TEST_F(LevelWatchTest, EitherChannelAndEitherSideOfZeroCount)
{
    auto left = stereo({{10, 0}});
    left[2 * 4] = -0.5F;
    EXPECT_EQ(changesIn(watch, left), (Changes{{4, Change::Sound}}));
    watch.restart();
    auto right = stereo({{10, 0}});
    right[2 * 7 + 1] = 0.5F;
    EXPECT_EQ(changesIn(watch, right), (Changes{{7, Change::Sound}}));
}

TEST_F(LevelWatchTest, SilenceHasComeWhenThePauseIsLongEnoughToTheFrame)
{
    const auto sound = stereo({{100, 8000}, {1999, 0}, {1, 8000}, {2000, 2999}, {5000, 0}});
    EXPECT_EQ(changesIn(watch, sound), (Changes{{0, Change::Sound}, {4100, Change::Silence}}));
}

TEST_F(LevelWatchTest, EachPauseIsToldOnce)
{
    const auto sound = stereo({{100, 8000}, {9000, 0}, {100, 8000}, {2500, 0}});
    EXPECT_EQ(
        changesIn(watch, sound),
        (Changes{{0, Change::Sound}, {2100, Change::Silence}, {9100, Change::Sound}, {11200, Change::Silence}}));
}

TEST_F(LevelWatchTest, ASilenceFromTheBeginningIsOneToo)
{
    EXPECT_EQ(changesIn(watch, stereo({{3000, 0}})), (Changes{{2000, Change::Silence}}));
}

TEST_F(LevelWatchTest, WithoutAShortestPauseTheHangOverIsTheShortest)
{
    watch.setShortestPause(0ms);
    const auto sound = stereo({{100, 8000}, {299, 0}, {1, 8000}, {1000, 0}});
    EXPECT_EQ(changesIn(watch, sound), (Changes{{0, Change::Sound}, {700, Change::Silence}}));
}

TEST_F(LevelWatchTest, AChangedPauseOrThresholdCountsFromTheNextFrameOn)
{
    EXPECT_EQ(changesIn(watch, stereo({{10, 4000}, {1500, 0}})), (Changes{{0, Change::Sound}}));
    watch.setShortestPause(1000ms);
    EXPECT_EQ(changesIn(watch, stereo({{10, 0}})), (Changes{{1, Change::Silence}}));
    watch.setThreshold(5000);
    EXPECT_TRUE(changesIn(watch, stereo({{10, 4000}})).empty());
    watch.setThreshold(5);
    EXPECT_EQ(changesIn(watch, stereo({{10, 6}})), (Changes{{0, Change::Sound}}));
}

TEST_F(LevelWatchTest, RestartedItForgetsWhatItTold)
{
    changesIn(watch, stereo({{100, 8000}, {500, 0}}));
    watch.restart();
    EXPECT_EQ(changesIn(watch, stereo({{1999, 0}, {1, 8000}})), (Changes{{1999, Change::Sound}}));
}

TEST_F(LevelWatchTest, HowManyFramesAreWatchedAtOnceChangesNothing)
{
    const auto sound = stereo({{5, 0}, {100, 8000}, {2100, 0}, {40, 4000}, {2600, 100}});
    const Changes wanted = changesIn(watch, sound);
    EXPECT_EQ(wanted.size(), 4U);
    for (const std::size_t atOnce : {1U, 2U, 7U, 64U}) {
        watch.restart();
        EXPECT_EQ(changesIn(watch, sound, atOnce), wanted) << atOnce;
    }
}

struct LevelRow
{
    float peak;
    short level;
};

class EachCaptureLevel : public ::testing::TestWithParam<LevelRow>
{
};

TEST_P(EachCaptureLevel, IsReadAsToldAndFullScaleIsReachedByBothEndsOfSixteenBits)
{
    EXPECT_EQ(captureLevel(GetParam().peak), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Peaks, EachCaptureLevel,
                         ::testing::Values(LevelRow{0, 0}, LevelRow{0.5F, 16384}, LevelRow{1, 32767},
                                           LevelRow{32767 / 32768.0F, 32767}, LevelRow{32766 / 32768.0F, 32766},
                                           LevelRow{1.5F, 32767}));

}  // namespace
