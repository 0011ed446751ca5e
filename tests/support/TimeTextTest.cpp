#include "support/TimeText.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct TimeRow
{
    const char* name;
    int milliseconds;
    const char* text;
};

std::string nameOfTime(const ::testing::TestParamInfo<TimeRow>& info)
{
    return info.param.name;
}

class PositionText : public ::testing::TestWithParam<TimeRow>
{
};

TEST_P(PositionText, IsMinutesSecondsAndHundredths)
{
    EXPECT_EQ(FormatPosition(GetParam().milliseconds), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Positions, PositionText,
                         ::testing::Values(TimeRow{"Start", 0, "00:00:00"},
                                           TimeRow{"NineMilliseconds", 9, "00:00:00"},
                                           TimeRow{"TenMilliseconds", 10, "00:00:01"},
                                           TimeRow{"MinuteSecondAndFiveMs", 61005, "01:01:00"},
                                           TimeRow{"MinuteSecondAndFifteenMs", 61015, "01:01:01"},
                                           TimeRow{"OneMsShortOfAMinute", 59999, "00:59:99"},
                                           TimeRow{"AMinute", 60000, "01:00:00"},
                                           TimeRow{"LastOfTwoDigitMinutes", 5999999, "99:59:99"},
                                           TimeRow{"AHundredMinutes", 6000000, "100:00:00"},
                                           TimeRow{"LargestPosition", 2147483647, "35791:23:64"}),
                         nameOfTime);

class TimeText : public ::testing::TestWithParam<TimeRow>
{
};

TEST_P(TimeText, IsReadAtItsFixedPlaces)
{
    EXPECT_EQ(ParseTimeText(GetParam().text), GetParam().milliseconds);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TimeText,
    ::testing::Values(TimeRow{"Start", 0, "00:00:00"}, TimeRow{"SixtyOneAndAHalf", 61500, "01:01:50"},
                      TimeRow{"Last", 5999990, "99:59:99"},
                      TimeRow{"ThreeDigitMinutesAreMisread", 600000 + 1000 * 0 + 0, "100:00:00"},
                      TimeRow{"Empty", 0, ""}),
    nameOfTime);

TEST(TimeTexts, LoseOnlyTheLastDigitOfTheMillisecondsUpTo99Minutes)
{
    for (int milliseconds = 0; milliseconds < 100 * 60000; milliseconds += 997)
        ASSERT_EQ(ParseTimeText(FormatPosition(milliseconds)), milliseconds - milliseconds % 10) << milliseconds;
}

}  // namespace
