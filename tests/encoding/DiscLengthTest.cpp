#include "engines/DiscLength.h"

#include <gtest/gtest.h>

namespace {

struct LengthRow
{
    qint64 sectors;
    const char* text;
};

class DiscLengthInWords : public ::testing::TestWithParam<LengthRow>
{
};

TEST_P(DiscLengthInWords, IsInMinutesSecondsAndSectors)
{
    DiscLength length;
    length.SetLength(GetParam().sectors);
    EXPECT_EQ(length.LengthText(), GetParam().text);
    EXPECT_EQ(length.GetLength(), GetParam().sectors);
}

INSTANTIATE_TEST_SUITE_P(Lengths, DiscLengthInWords,
                         ::testing::Values(LengthRow{0, "00:00:00"}, LengthRow{74, "00:00:74"},
                                           LengthRow{75, "00:01:00"}, LengthRow{300, "00:04:00"},
                                           LengthRow{4499, "00:59:74"}, LengthRow{4500, "01:00:00"},
                                           LengthRow{359'849, "79:57:74"}, LengthRow{450'000, "100:00:00"},
                                           LengthRow{qint64{1} << 40, "244335917:17:01"}));

TEST(DiscLength, IsNothingAtFirstAndNeverLess)
{
    DiscLength length;
    EXPECT_EQ(length.GetLength(), 0);
    EXPECT_EQ(length.LengthText(), "00:00:00");
    length.SetLength(-1);
    EXPECT_EQ(length.GetLength(), 0);
}

}  // namespace
