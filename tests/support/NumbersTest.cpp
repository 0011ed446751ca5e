#include "support/Numbers.h"

#include <gtest/gtest.h>
#include <QString>
#include <limits>

namespace {

struct TextRow
{
    const char* name;
    const char* text;
    int number;
};

struct RoundingRow
{
    const char* name;
    double number;
    int rounded;
};

template <typename Row>
std::string rowName(const ::testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

class LeadingNumber : public ::testing::TestWithParam<TextRow>
{
};

TEST_P(LeadingNumber, IsReadUpToTheFirstOtherCharacter)
{
    EXPECT_EQ(leadingNumber(QString::fromUtf8(GetParam().text)), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Texts, LeadingNumber,
                         ::testing::Values(TextRow{"Empty", "", 0}, TextRow{"Zeros", "000", 0},
                                           TextRow{"LeadingZeros", "007", 7}, TextRow{"Plain", "250", 250},
                                           TextRow{"AboveThreeDigits", "1500", 1500},
                                           TextRow{"TrailingLetters", "12ms", 12},
                                           TextRow{"TrailingPoint", "3.9", 3}, TextRow{"LeadingLetter", "x12", 0},
                                           TextRow{"MinusSign", "-5", 0}, TextRow{"PlusSign", "+5", 0},
                                           TextRow{"LeadingBlanks", "  42", 42}, TextRow{"BlankInside", "4 2", 4},
                                           TextRow{"NoDigits", "abc", 0},
                                           TextRow{"OtherScriptsDigits", "\xD9\xA1\xD9\xA2", 0},
                                           TextRow{"LargestOfTheType", "2147483647", 2147483647},
                                           TextRow{"OneAboveIt", "2147483648", 2147483647},
                                           TextRow{"FarAboveIt", "99999999999999999999999999", 2147483647}),
                         rowName<TextRow>);

class HalfToEven : public ::testing::TestWithParam<RoundingRow>
{
};

TEST_P(HalfToEven, IsTheNearestWholeNumber)
{
    EXPECT_EQ(roundHalfToEven(GetParam().number), GetParam().rounded);
}

INSTANTIATE_TEST_SUITE_P(Numbers, HalfToEven,
                         ::testing::Values(RoundingRow{"Zero", 0.0, 0}, RoundingRow{"BelowAHalf", 0.499, 0},
                                           RoundingRow{"AHalf", 0.5, 0}, RoundingRow{"AboveAHalf", 0.501, 1},
                                           RoundingRow{"OneAndAHalf", 1.5, 2}, RoundingRow{"TwoAndAHalf", 2.5, 2},
                                           RoundingRow{"ThreeAndAHalf", 3.5, 4},
                                           RoundingRow{"FourAndAHalf", 4.5, 4}, RoundingRow{"MinusAHalf", -0.5, 0},
                                           RoundingRow{"MinusOneAndAHalf", -1.5, -2},
                                           RoundingRow{"MinusTwoAndAHalf", -2.5, -2},
                                           RoundingRow{"MinusTwoAndMore", -2.6, -3},
                                           RoundingRow{"TooLarge", 1e12, 2147483647},
                                           RoundingRow{"TooSmall", -1e12, std::numeric_limits<int>::min()},
                                           RoundingRow{"NotANumber", std::numeric_limits<double>::quiet_NaN(), 0}),
                         rowName<RoundingRow>);

}  // namespace
