#include "support/TimeText.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct Row
{
    const char* name;
    int milliseconds;
    const char* text;
};

std::string rowName(const ::testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

class PositionText : public ::testing::TestWithParam<Row>
{
};

TEST_P(PositionText, IsMinutesSecondsAndHundredths)
{
    EXPECT_EQ(FormatPosition(GetParam().milliseconds), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Positions, PositionText,
                         ::testing::Values(Row{"Start", 0, "00:00:00"}, Row{"NineMilliseconds", 9, "00:00:00"},
                                           Row{"TenMilliseconds", 10, "00:00:01"},
                                           Row{"MinuteSecondAndFiveMs", 61005, "01:01:00"},
                                           Row{"MinuteSecondAndFifteenMs", 61015, "01:01:01"},
                                           Row{"OneMsShortOfAMinute", 59999, "00:59:99"},
                                           Row{"AMinute", 60000, "01:00:00"},
                                           Row{"LastOfTwoDigitMinutes", 5999999, "99:59:99"},
                                           Row{"AHundredMinutes", 6000000, "100:00:00"},
                                           Row{"LargestPosition", 2147483647, "35791:23:64"}),
                         rowName);

class TimeText : public ::testing::TestWithParam<Row>
{
};

TEST_P(TimeText, IsReadAtItsFixedPlaces)
{
    EXPECT_EQ(ParseTimeText(GetParam().text), GetParam().milliseconds);
}

INSTANTIATE_TEST_SUITE_P(Texts, TimeText,
                         ::testing::Values(Row{"Start", 0, "00:00:00"}, Row{"SixtyOneAndAHalf", 61500, "01:01:50"},
                                           Row{"Last", 5999990, "99:59:99"},
                                           Row{"ThreeDigitMinutesAreMisread", 600000 + 1000 * 0 + 0, "100:00:00"},
                                           Row{"Empty", 0, ""}),
                         rowName);

TEST(TimeTexts, LoseOnlyTheLastDigitOfTheMillisecondsUpTo99Minutes)
{
    for (int milliseconds = 0; milliseconds < 100 * 60000; milliseconds += 997)
        ASSERT_EQ(ParseTimeText(FormatPosition(milliseconds)), milliseconds - milliseconds % 10) << milliseconds;
}

}  // namespace
