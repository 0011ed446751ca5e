#include "sound/units/Frames.h"

#include <gtest/gtest.h>

#include <limits>

using namespace sound;
using namespace std::chrono_literals;

namespace {

TEST(FramesTest, AMillisecondBecomesTheNearestFrame)
{
    EXPECT_EQ(frameAt(0ms, {44100}), FramePosition{0});
    EXPECT_EQ(frameAt(1ms, {44100}), FramePosition{44});
    EXPECT_EQ(frameAt(137ms, {44100}), FramePosition{6042});  // 6041.7
    EXPECT_EQ(frameAt(5ms, {44100}), FramePosition{221});     // 220.5, a half goes up
    EXPECT_EQ(frameAt(-5ms, {44100}), FramePosition{-220});   // -220.5 goes up as well
    EXPECT_EQ(frameAt(2345ms, {48000}), FramePosition{112560});
}

TEST(FramesTest, EveryMillisecondComesBackFromItsFrameAtEveryRate)
{
    for (const int hertz : {1000, 8000, 11025, 22050, 32000, 44100, 48000, 96000, 192000}) {
        for (int milliseconds = 0; milliseconds < 5000; ++milliseconds) {
            const FramePosition frame = frameAt(Milliseconds{milliseconds}, {hertz});
            ASSERT_EQ(millisecondsAt(frame, {hertz}).count(), milliseconds) << hertz << " Hz";
        }
    }
}

TEST(FramesTest, ADurationIsRoundedToTheNearestMillisecond)
{
    EXPECT_EQ(durationOf({66149}, {44100}), 1500ms);  // 1499.977
    EXPECT_EQ(durationOf({66173}, {44100}), 1501ms);  // 1500.52
    EXPECT_EQ(durationOf({0}, {44100}), 0ms);
}

TEST(FramesTest, APositionOfDaysDoesNotOverflow)
{
    const FramePosition farAway{std::numeric_limits<std::int64_t>::max() / 2};
    EXPECT_EQ(millisecondsAt(farAway, {8000}).count(), std::numeric_limits<std::int32_t>::max());
}

TEST(FramesTest, NoRateIsNoTime)
{
    EXPECT_EQ(millisecondsAt({100}, {0}), 0ms);
}

TEST(FramesTest, ATimeInMicrosecondsBecomesFrames)
{
    EXPECT_EQ(framesIn(50ms, {44100}), FrameCount{2205});
    EXPECT_EQ(framesIn(23us, {44100}), FrameCount{1});  // 1.01
}

}  // namespace
