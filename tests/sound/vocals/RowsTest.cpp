#include "sound/vocals/Rows.h"

#include <gtest/gtest.h>
#include <numeric>

using sound::Rows;

TEST(RowsTest, ARaisedCosineAddsUpToOneAndIsHighestInTheMiddle)
{
    const std::vector<float> one = sound::raisedCosine(1);
    ASSERT_EQ(one.size(), 3U);
    EXPECT_FLOAT_EQ(one[0], 0.25F);
    EXPECT_FLOAT_EQ(one[1], 0.5F);
    EXPECT_FLOAT_EQ(one[2], 0.25F);

    const std::vector<float> many = sound::raisedCosine(15);
    ASSERT_EQ(many.size(), 31U);
    EXPECT_NEAR(std::accumulate(many.begin(), many.end(), 0.0), 1, 1e-6);
    EXPECT_FLOAT_EQ(many[15], 1.0F / 16);
    EXPECT_FLOAT_EQ(many[0], many[30]);
}

TEST(RowsTest, SmoothingOverTimeSpreadsAMomentToBothSidesAndDropsWhatLeavesTheRows)
{
    Rows from(4, 2);
    from.row(1)[0] = 8;
    from.row(3)[1] = 4;
    Rows to(4, 2);
    sound::smoothOverTime(from, {0.25F, 0.5F, 0.25F}, to);
    const float first[]{2, 4, 2, 0};
    const float second[]{0, 0, 1, 2};
    for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_FLOAT_EQ(to.row(row)[0], first[row]);
        EXPECT_FLOAT_EQ(to.row(row)[1], second[row]);
    }
}

TEST(RowsTest, SmoothingOverBinsSpreadsABinToBothSidesAndKeepsTheEnds)
{
    Rows rows(1, 4);
    rows.row(0)[0] = 4;
    rows.row(0)[2] = 8;
    sound::smoothOverBins(rows);
    const float smooth[]{3, 3, 4, 2};
    for (std::size_t bin = 0; bin < 4; ++bin)
        EXPECT_FLOAT_EQ(rows.row(0)[bin], smooth[bin]);
}
