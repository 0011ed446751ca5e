#include "sound/player/Settings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace sound;

namespace {

constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float endless = std::numeric_limits<float>::infinity();

TEST(SettingsTest, AGainIsCutToItsRangeAndWhatIsNoNumberIsNone)
{
    EXPECT_EQ(bandGain(7.5F), 7.5F);
    EXPECT_EQ(bandGain(15.5F), 15);
    EXPECT_EQ(bandGain(-100), -15);
    for (const float value : {noNumber, endless, -endless})
        EXPECT_EQ(bandGain(value), 0);
}

TEST(SettingsTest, ABandNeedsACentreAndAWidth)
{
    EqualizerBands bands;
    for (const float value : {0.0F, -1.0F, noNumber, endless}) {
        EXPECT_FALSE(addBand(bands, {value, 12, 0})) << value;
        EXPECT_FALSE(addBand(bands, {1000, value, 0})) << value;
    }
    EXPECT_FALSE(addBand(bands, {1000, 120.1F, 0}));
    EXPECT_TRUE(addBand(bands, {1000, 120, 0}));
}

TEST(SettingsTest, BandsStandLowestFirstHoweverTheyAreAdded)
{
    EqualizerBands bands;
    EXPECT_TRUE(addBand(bands, {1000, 12, 1}));
    EXPECT_TRUE(addBand(bands, {80, 12, 2}));
    EXPECT_TRUE(addBand(bands, {16000, 12, 3}));
    ASSERT_EQ(bands.count, 3U);
    EXPECT_EQ(bands.band[0], (EqualizerBand{80, 12, 2}));
    EXPECT_EQ(bands.band[1], (EqualizerBand{1000, 12, 1}));
    EXPECT_EQ(bands.band[2], (EqualizerBand{16000, 12, 3}));
    EXPECT_EQ(findBand(bands, 1000), &bands.band[1]);
    EXPECT_EQ(findBand(bands, 999), nullptr);
}

TEST(SettingsTest, ABandIsAddedOnceAndNotBeyondTheRoom)
{
    EqualizerBands bands;
    EXPECT_TRUE(addBand(bands, {1000, 12, 0}));
    EXPECT_FALSE(addBand(bands, {1000, 6, 5}));
    for (std::size_t index = 1; index < EqualizerBands::capacity; ++index)
        EXPECT_TRUE(addBand(bands, {static_cast<float>(index), 12, 0}));
    EXPECT_FALSE(addBand(bands, {20000, 12, 0}));
    EXPECT_EQ(bands.count, EqualizerBands::capacity);
}

}  // namespace
