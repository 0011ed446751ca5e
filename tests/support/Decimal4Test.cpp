#include "support/Decimal4.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <ostream>

void PrintTo(Decimal4 number, std::ostream* out)
{
    *out << number.inTenThousandths() << " ten-thousandths";
}

namespace {

constexpr Decimal4 of(qint64 tenThousandths)
{
    return Decimal4::ofTenThousandths(tenThousandths);
}

struct ProductRow
{
    const char* name;
    qint64 a;
    qint64 b;
    qint64 product;
};

class ProductOfDecimals : public ::testing::TestWithParam<ProductRow>
{
};

TEST_P(ProductOfDecimals, IsRoundedToFourPlacesAHalfToTheEvenOne)
{
    EXPECT_EQ(of(GetParam().a) * of(GetParam().b), of(GetParam().product));
    EXPECT_EQ(of(GetParam().b) * of(GetParam().a), of(GetParam().product));
    EXPECT_EQ(-of(GetParam().a) * of(GetParam().b), of(-GetParam().product));
    EXPECT_EQ(-of(GetParam().a) * -of(GetParam().b), of(GetParam().product));
}

INSTANTIATE_TEST_SUITE_P(Products, ProductOfDecimals,
                         ::testing::Values(ProductRow{"Exact", 15'000, 25'000, 37'500},        // 1.5 times 2.5
                                           ProductRow{"WithZero", 0, 99'999, 0},               //
                                           ProductRow{"BelowHalf", 333, 333, 11},              // 0.00110889
                                           ProductRow{"AboveHalf", 777, 777, 60},              // 0.00603729
                                           ProductRow{"JustBelowHalf", 1, 4'999, 0},           // 0.00004999
                                           ProductRow{"JustAboveHalf", 1, 5'001, 1},           // 0.00005001
                                           ProductRow{"HalfToEvenBelow", 1, 5'000, 0},         // 0.00005
                                           ProductRow{"HalfToEvenAbove", 3, 5'000, 2},         // 0.00015
                                           ProductRow{"AnotherHalfToEvenBelow", 5, 5'000, 2},  // 0.00025
                                           ProductRow{"LargeAndHalf", 2'550'001, 5'000, 1'275'000},
                                           ProductRow{"LargeAndHalfUp", 2'550'003, 5'000, 1'275'002}),
                         [](const auto& info) { return std::string(info.param.name); });

struct DoubleRow
{
    double number;
    qint64 tenThousandths;
};

TEST(Decimal, IsTheNearestToADouble)
{
    for (const auto& [number, tenThousandths] :
         {DoubleRow{0.0, 0}, DoubleRow{1.75, 17'500}, DoubleRow{-1.75, -17'500}, DoubleRow{0.00004, 0},
          DoubleRow{0.00006, 1}, DoubleRow{-0.00006, -1}, DoubleRow{2.0 / 3.0, 6'667},
          DoubleRow{std::sqrt(0.5), 7'071},
          // 312.5 and 937.5 ten-thousandths.
          DoubleRow{1.0 / 32.0, 312}, DoubleRow{3.0 / 32.0, 938}, DoubleRow{-3.0 / 32.0, -938}}) {
        EXPECT_EQ(Decimal4::rounded(number), of(tenThousandths)) << number;
    }
}

TEST(Decimal, OfADoubleOutOfRangeIsCutToItAndOfNoNumberIsZero)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Decimal4::rounded(std::nan("")), Decimal4(0));
    EXPECT_GT(Decimal4::rounded(infinity), Decimal4(900'000'000'000'000));
    EXPECT_LT(Decimal4::rounded(-infinity), Decimal4(-900'000'000'000'000));
}

struct WholeRow
{
    qint64 tenThousandths;
    qint64 wholePart;
    qint64 fraction;
    qint64 nearest;
};

TEST(Decimal, HasAWholePartTowardsZeroAFractionWithoutASignAndANearestWholeNumber)
{
    for (const auto& [tenThousandths, wholePart, fraction, nearest] :
         {WholeRow{0, 0, 0, 0}, WholeRow{12'500, 1, 2'500, 1}, WholeRow{-12'500, -1, 2'500, -1},
          WholeRow{-2'500, 0, 2'500, 0}, WholeRow{5'000, 0, 5'000, 0}, WholeRow{15'000, 1, 5'000, 2},
          WholeRow{25'000, 2, 5'000, 2}, WholeRow{-5'000, 0, 5'000, 0}, WholeRow{-15'000, -1, 5'000, -2},
          WholeRow{-25'000, -2, 5'000, -2}, WholeRow{25'001, 2, 5'001, 3}, WholeRow{-25'001, -2, 5'001, -3},
          WholeRow{24'999, 2, 4'999, 2}, WholeRow{99'999, 9, 9'999, 10}}) {
        EXPECT_EQ(of(tenThousandths).wholePart(), wholePart) << tenThousandths;
        EXPECT_EQ(of(tenThousandths).fraction(), of(fraction)) << tenThousandths;
        EXPECT_EQ(of(tenThousandths).nearest(), nearest) << tenThousandths;
    }
}

TEST(Decimal, AddsSubtractsCountsAndComparesExactly)
{
    EXPECT_EQ(of(1) + of(2), of(3));
    EXPECT_EQ(of(1) - of(2), of(-1));
    EXPECT_EQ(1 - of(2'500), of(7'500));
    EXPECT_EQ(times(-100, of(175)), of(-17'500));
    EXPECT_EQ(times(1'000'000'000'000, of(1)), Decimal4(100'000'000));
    EXPECT_LT(of(-1), of(0));
    EXPECT_GE(of(20'000), 2);
    EXPECT_DOUBLE_EQ(of(-17'500).toDouble(), -1.75);
}

}  // namespace
