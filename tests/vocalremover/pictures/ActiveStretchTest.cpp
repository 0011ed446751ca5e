#include "vocalremover/pictures/ActiveStretch.h"

#include <gtest/gtest.h>
#include <ostream>

void PrintTo(const ActiveStretch& stretch, std::ostream* out)
{
    *out << stretch.length << " from " << stretch.begin;
}

namespace {

TEST(TheLowCutOff, LeavesOffAtTheFootWhatIsBelowItAndKeepsTheTop)
{
    EXPECT_EQ(lowCutStretch(7, 96, 50, 400), (ActiveStretch{7, 84}));
    EXPECT_EQ(lowCutStretch(7, 96, 200, 400), (ActiveStretch{7, 48}));
    EXPECT_EQ(lowCutStretch(7, 96, 300, 400), (ActiveStretch{7, 24}));
    EXPECT_EQ(lowCutStretch(7, 96, 400, 400), (ActiveStretch{7, 0}));
}

TEST(TheHighCutOff, LeavesOffAtTheHeadWhatIsAboveItAndStandsOnTheFoot)
{
    EXPECT_EQ(highCutStretch(7, 96, 6000, 6000), (ActiveStretch{103, 0}));
    EXPECT_EQ(highCutStretch(7, 96, 8000, 6000), (ActiveStretch{79, 24}));
    EXPECT_EQ(highCutStretch(7, 96, 12000, 6000), (ActiveStretch{55, 48}));
    EXPECT_EQ(highCutStretch(7, 96, 16000, 6000), (ActiveStretch{43, 60}));
    for (const int value : {6000, 7001, 8000, 9999, 16000})
        EXPECT_NEAR(highCutStretch(7, 96, value, 6000).end(), 103, 1e-9);
}

// Ten fifteenths of a pixel.
constexpr double hair = 2.0 / 3.0;

TEST(TheGain, LeavesOffOnTheLeftWhatItHasReachedAndIsAHairToTheRight)
{
    struct Row
    {
        int gain;
        double begin;
        double length;
    };
    for (const auto& [gain, begin, length] :
         {Row{0, 3, 160}, Row{50, 43, 120}, Row{100, 83, 80}, Row{200, 163, 0}}) {
        EXPECT_DOUBLE_EQ(gainStretch(3, 160, gain, 200).begin, begin + hair) << gain;
        EXPECT_DOUBLE_EQ(gainStretch(3, 160, gain, 200).length, length) << gain;
    }
}

TEST(AnActiveStretch, IsWholeOrEmptyWhereTheSliderHasNoRange)
{
    EXPECT_EQ(lowCutStretch(7, 96, 0, 0), (ActiveStretch{7, 96}));
    EXPECT_EQ(lowCutStretch(7, 96, 5, 0), (ActiveStretch{7, 0}));
    EXPECT_EQ(lowCutStretch(7, 96, 500, 400), (ActiveStretch{7, 0}));
    EXPECT_EQ(lowCutStretch(7, 96, -5, 400), (ActiveStretch{7, 96}));
    EXPECT_EQ(highCutStretch(7, 96, 0, 6000), (ActiveStretch{103, 0}));
    EXPECT_EQ(highCutStretch(7, 96, 5000, 6000), (ActiveStretch{103, 0}));
    EXPECT_EQ(highCutStretch(7, 96, 0, 0), (ActiveStretch{7, 96}));
    EXPECT_EQ(gainStretch(3, 160, 300, 200).length, 0);
}

TEST(AnActiveStretch, HasItsEndsOnTheNearestPixels)
{
    const ActiveStretch stretch{2.4, 3.2};  // to 5.6
    EXPECT_EQ(stretch.firstPixel(), 2);
    EXPECT_EQ(stretch.pixels(), 4);
    const ActiveStretch halves{2.5, 3};  // to 5.5
    EXPECT_EQ(halves.firstPixel(), 2);
    EXPECT_EQ(halves.pixels(), 4);
    EXPECT_EQ((ActiveStretch{2.5, 0}).pixels(), 0);
}

}  // namespace
