#include "sound/dsp/Changes.h"

#include <gtest/gtest.h>

#include <limits>

using namespace sound;

namespace {

constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float endless = std::numeric_limits<float>::infinity();

TEST(ChangesTest, APercentOfChangeIsAFactorOfSpeed)
{
    EXPECT_EQ(speedFactor(0), 1);
    EXPECT_DOUBLE_EQ(speedFactor(-20), 0.8);
    EXPECT_DOUBLE_EQ(speedFactor(60), 1.6);
    EXPECT_DOUBLE_EQ(speedFactor(-60), 0.4);
}

TEST(ChangesTest, SemitonesAreAFactorOfFrequency)
{
    EXPECT_EQ(pitchFactor(0), 1);
    EXPECT_DOUBLE_EQ(pitchFactor(12), 2);
    EXPECT_DOUBLE_EQ(pitchFactor(-12), 0.5);
    EXPECT_NEAR(pitchFactor(1.5F), 1.0905077326652577, 1e-12);
}

TEST(ChangesTest, BeyondItsRangeAChangeIsCutToIt)
{
    EXPECT_DOUBLE_EQ(speedFactor(-100), 0.4);
    EXPECT_DOUBLE_EQ(speedFactor(1000), 1.6);
    EXPECT_DOUBLE_EQ(pitchFactor(13), 2);
    EXPECT_DOUBLE_EQ(pitchFactor(-99), 0.5);
}

TEST(ChangesTest, WhatIsNoNumberChangesNothing)
{
    for (const float value : {noNumber, endless, -endless}) {
        EXPECT_EQ(speedFactor(value), 1);
        EXPECT_EQ(pitchFactor(value), 1);
    }
}

}  // namespace
