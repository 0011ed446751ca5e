#include "sound/recorder/SilenceGate.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <vector>

using namespace sound;

namespace {

/// Frames that tell by their value which ones they are.
std::vector<float> frames(int first, int count)
{
    std::vector<float> stereo;
    for (int frame = first; frame < first + count; ++frame) {
        stereo.push_back(static_cast<float>(frame));
        stereo.push_back(static_cast<float>(-frame));
    }
    return stereo;
}

/// The numbers of the frames; of those that are faded, what is left of them.
std::vector<float> left(const std::vector<float>& stereo)
{
    std::vector<float> values;
    for (std::size_t sample = 0; sample < stereo.size(); sample += 2) {
        EXPECT_EQ(stereo[sample + 1], -stereo[sample]);
        values.push_back(stereo[sample]);
    }
    return values;
}

class SilenceGateTest : public ::testing::Test
{
protected:
    void pass(int first, int count) { gate.pass(frames(first, count), kept); }

    SilenceGate gate{SampleRate{1000}};  // the lead-in is 100 frames, a fade 10
    std::vector<float> kept;
};

TEST_F(SilenceGateTest, ClosedItKeepsNothing)
{
    pass(0, 5000);
    EXPECT_TRUE(kept.empty());
}

TEST_F(SilenceGateTest, OpenedItBeginsALeadInBeforeThatWithAFade)
{
    pass(1000, 500);
    gate.open();
    pass(1500, 50);
    gate.release(kept);
    const std::vector<float> values = left(kept);
    ASSERT_EQ(values.size(), 150U);
    for (std::size_t frame = 0; frame < 10; ++frame)
        EXPECT_NEAR(values[frame], (1400.0 + static_cast<double>(frame)) * (static_cast<double>(frame) + 0.5) / 10,
                    1e-3);
    for (std::size_t frame = 10; frame < 150; ++frame)
        EXPECT_EQ(values[frame], static_cast<float>(1400 + frame));
}

TEST_F(SilenceGateTest, WhatIsShorterThanTheLeadInIsKeptAsItIs)
{
    pass(1, 60);
    gate.open();
    pass(61, 40);
    gate.release(kept);
    EXPECT_EQ(kept, frames(1, 100));
}

TEST_F(SilenceGateTest, ClosingFadesTheLastFramesAndLosesNone)
{
    gate.open();
    pass(100, 200);
    gate.close(kept);
    pass(300, 1000);
    const std::vector<float> values = left(kept);
    ASSERT_EQ(values.size(), 200U);
    for (std::size_t frame = 0; frame < 190; ++frame)
        EXPECT_EQ(values[frame], static_cast<float>(100 + frame));
    for (std::size_t frame = 190; frame < 200; ++frame) {
        const double whole = 100.0 + static_cast<double>(frame);
        EXPECT_NEAR(values[frame], whole * (1 - (static_cast<double>(frame - 190) + 0.5) / 10), 1e-3);
    }
}

TEST_F(SilenceGateTest, APauseShorterThanTheLeadInLosesNoFrame)
{
    gate.open();
    pass(1, 200);
    gate.close(kept);
    pass(201, 80);
    gate.open();
    pass(281, 100);
    gate.release(kept);
    const std::vector<float> values = left(kept);
    ASSERT_EQ(values.size(), 380U);
    EXPECT_EQ(values[150], 151);
    EXPECT_EQ(values[250], 251);
    EXPECT_EQ(values[379], 380);
}

TEST_F(SilenceGateTest, ReleasedWhileClosedItLeavesTheLeadIn)
{
    pass(1, 1000);
    gate.release(kept);
    const std::vector<float> values = left(kept);
    ASSERT_EQ(values.size(), 100U);
    EXPECT_EQ(values.back(), 1000);
}

TEST_F(SilenceGateTest, ResetItIsClosedAndHoldsNothing)
{
    gate.open();
    pass(1, 5);
    gate.reset();
    pass(6, 1000);
    EXPECT_TRUE(kept.empty());
    gate.reset();
    gate.release(kept);
    EXPECT_TRUE(kept.empty());
}

TEST_F(SilenceGateTest, HowManyFramesComeAtOnceChangesNothing)
{
    std::vector<float> wanted;
    for (const int atOnce : {1, 7, 100, 1000}) {
        gate.reset();
        kept.clear();
        const auto passAll = [&](int first, int end) {
            for (int frame = first; frame < end; frame += atOnce)
                pass(frame, std::min(atOnce, end - frame));
        };
        passAll(1, 401);
        gate.open();
        passAll(401, 801);
        gate.close(kept);
        passAll(801, 1301);
        gate.open();
        passAll(1301, 1501);
        gate.release(kept);
        if (wanted.empty())
            wanted = kept;
        EXPECT_EQ(left(wanted).size(), 800U);
        EXPECT_EQ(kept, wanted) << atOnce;
    }
}

}  // namespace
