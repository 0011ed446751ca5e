#include "sound/dsp/PeakMeter.h"

#include <gtest/gtest.h>
#include <vector>

using namespace sound;

namespace {

TEST(PeakMeterTest, APeakIsTheLargestDeflectionToEitherSideOfZero)
{
    const std::vector<float> stereo{0.1F, -0.2F, -0.7F, 0.3F, 0.5F, -0.25F};
    const Peaks peaks = peaksOf(stereo.data(), {3});
    EXPECT_EQ(peaks.left, 0.7F);
    EXPECT_EQ(peaks.right, 0.3F);
}

TEST(PeakMeterTest, NothingHasNoPeak)
{
    const Peaks peaks = peaksOf(nullptr, {0});
    EXPECT_EQ(peaks.left, 0);
    EXPECT_EQ(peaks.right, 0);
}

TEST(PeakMeterTest, TheHigherOfTwoIsTakenASide)
{
    const Peaks peaks = higher({0.1F, 0.9F}, {0.4F, 0.2F});
    EXPECT_EQ(peaks.left, 0.4F);
    EXPECT_EQ(peaks.right, 0.9F);
}

TEST(PeakMeterTest, TheMeterReaches32767AtFullScaleAndStaysThere)
{
    EXPECT_EQ(meterLevel(0), 0);
    EXPECT_EQ(meterLevel(0.5F), 16384);  // 16383.5
    EXPECT_EQ(meterLevel(1), 32767);
    EXPECT_EQ(meterLevel(7), 32767);
    EXPECT_EQ(meterLevel(-1), 0);
}

}  // namespace
