#include "sound/dsp/LevelStage.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <cmath>

using namespace sound;
using namespace sound::test;

namespace {

std::vector<float> ones(FrameCount frames)
{
    std::vector<float> sound(static_cast<std::size_t>(2 * frames.value), 1.0F);
    return sound;
}

std::vector<float> briefNoise()
{
    return noiseSound(cdRate, 2, {4410}).interleaved();
}

LevelStage settledAt(int gain, int balance)
{
    LevelStage stage;
    stage.prepare(cdRate);
    stage.set(gain, balance);
    stage.settle();
    return stage;
}

std::vector<float> through(LevelStage& stage, std::vector<float> sound)
{
    stage.process(sound.data(), {static_cast<std::int64_t>(sound.size() / 2)});
    return sound;
}

TEST(LevelStageTest, FullGainInTheMiddleChangesNotABit)
{
    LevelStage stage = settledAt(100, 0);
    expectSame(through(stage, briefNoise()), briefNoise(), 2, cdRate);
}

TEST(LevelStageTest, AFreshStageChangesNotABit)
{
    LevelStage stage;
    stage.prepare(cdRate);
    expectSame(through(stage, briefNoise()), briefNoise(), 2, cdRate);
}

struct LevelCase
{
    const char* name;
    int gain;
    int balance;
    double left;
    double right;
};

class LevelStageLevelTest : public ::testing::TestWithParam<LevelCase>
{
};

TEST_P(LevelStageLevelTest, EachSideHasItsLevel)
{
    LevelStage stage = settledAt(GetParam().gain, GetParam().balance);
    const auto sound = through(stage, ones({10}));
    for (std::size_t frame = 0; frame < 10; ++frame) {
        EXPECT_NEAR(sound[2 * frame], GetParam().left, 1e-6);
        EXPECT_NEAR(sound[2 * frame + 1], GetParam().right, 1e-6);
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, LevelStageLevelTest,
                         ::testing::Values(LevelCase{"AmplitudeIsTheSquareOfGain", 50, 0, 0.25, 0.25},
                                           LevelCase{"TheSmallestGainIsHeard", 1, 0, 0.0001, 0.0001},
                                           LevelCase{"NoGainIsSilence", 0, 0, 0, 0},
                                           LevelCase{"GainAboveTheRangeIsFull", 150, 0, 1, 1},
                                           LevelCase{"GainBelowTheRangeIsNone", -5, 0, 0, 0},
                                           LevelCase{"FarLeftSilencesTheRight", 100, -50, 1, 0},
                                           LevelCase{"FarRightSilencesTheLeft", 100, 50, 0, 1},
                                           LevelCase{"HalfLeftHalvesTheRight", 100, -25, 1, 0.5},
                                           LevelCase{"BalanceBeyondTheRangeIsFar", 100, 80, 0, 1},
                                           LevelCase{"GainAndBalanceMultiply", 50, 10, 0.2, 0.25}),
                         [](const auto& row) { return row.param.name; });

TEST(LevelStageTest, TheSideThatIsNotTurnedDownKeepsEveryBit)
{
    LevelStage stage = settledAt(100, -50);
    const auto sound = through(stage, briefNoise());
    expectSame(channelOf(sound, 2, 0), channelOf(briefNoise(), 2, 0), 1, cdRate);
    EXPECT_EQ(channelOf(sound, 2, 1), std::vector<float>(sound.size() / 2, 0.0F));
}

TEST(LevelStageTest, AJumpOfTheGainIsSpreadOverAFewMilliseconds)
{
    for (const int hertz : {8000, 44100, 192000}) {
        LevelStage stage;
        stage.prepare({hertz});
        stage.set(0, 0);
        const auto left = channelOf(through(stage, ones({hertz / 50})), 2, 0);
        EXPECT_LT(largestStep(left), 0.03) << hertz;
        EXPECT_LT(1 - left.front(), 0.03F) << hertz;
        EXPECT_TRUE(std::is_sorted(left.rbegin(), left.rend())) << hertz;
        // Twenty milliseconds on it is over.
        EXPECT_EQ(left.back(), 0.0F) << hertz;
    }
}

TEST(LevelStageTest, AfterAMoveTheTargetIsReachedToTheBit)
{
    for (const int gain : {99, 77, 50, 1, 0}) {
        LevelStage stage;
        stage.prepare(cdRate);
        stage.set(gain, 0);
        through(stage, ones({882}));
        LevelStage still = settledAt(gain, 0);
        expectSame(through(stage, briefNoise()), through(still, briefNoise()), 2, cdRate);
        stage.set(100, 0);
        through(stage, ones({882}));
        expectSame(through(stage, briefNoise()), briefNoise(), 2, cdRate);
    }
}

TEST(LevelStageTest, AMoveThatIsTakenBackAtOnceStillEndsAtTheBit)
{
    for (const int hertz : {44100, 96000, 192000}) {
        for (const std::int64_t framesBetween : {1, 2, 3, 10, 50}) {
            LevelStage stage;
            stage.prepare({hertz});
            stage.set(99, 0);
            through(stage, ones({framesBetween}));
            stage.set(100, 0);
            through(stage, ones({hertz / 50}));
            expectSame(through(stage, briefNoise()), briefNoise(), 2, cdRate);
        }
    }
}

TEST(LevelStageTest, AMoveInPiecesIsTheMoveInOne)
{
    LevelStage whole;
    whole.prepare(cdRate);
    LevelStage pieces = whole;
    whole.set(20, 30);
    pieces.set(20, 30);
    const auto wanted = through(whole, briefNoise());
    std::vector<float> actual = briefNoise();
    for (std::int64_t begin = 0, size = 1; begin < 4410; begin += size, ++size) {
        pieces.set(20, 30);  // the same again begins nothing anew
        pieces.process(actual.data() + 2 * begin, {std::min(size, 4410 - begin)});
    }
    expectSame(actual, wanted, 2, cdRate);
}

TEST(LevelStageTest, SettlingJumps)
{
    LevelStage stage;
    stage.prepare(cdRate);
    stage.set(50, 0);
    stage.settle();
    EXPECT_FLOAT_EQ(through(stage, ones({1})).front(), 0.25F);
}

}  // namespace
