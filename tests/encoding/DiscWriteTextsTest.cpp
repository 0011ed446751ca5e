#include "encoding/DiscWriteTexts.h"

#include "QtPrinters.h"
#include "engines/AudioProject.h"
#include "engines/DiscWriteError.h"

#include <gtest/gtest.h>
#include <string>

namespace {

/// Everything is set, so that what a text takes from elsewhere shows.
DiscWriteError errorOfKind(int kind)
{
    DiscWriteError error;
    error.kind = kind;
    error.description = "general";
    error.deviceError = {4, "medium error", "MAKER", "MODEL"};
    error.fileError = {28, "no space left", "/tmp/take 1.wav"};
    error.systemCode = 12;
    return error;
}

TEST(TheTextOfAWriteError, TellsOfADeviceWhatItSaidAndWhichItIs)
{
    EXPECT_EQ(FormatWriteError(errorOfKind(1)), "Device Error: (4)   medium error\nMAKER - MODEL");
}

TEST(TheTextOfAWriteError, TellsOfAnOutputFileWhichItIs)
{
    EXPECT_EQ(FormatWriteError(errorOfKind(2)), "Output File Error: (28)   no space left\n'/tmp/take 1.wav'");
}

TEST(TheTextOfAWriteError, TellsOfASourceFileWhichItIs)
{
    EXPECT_EQ(FormatWriteError(errorOfKind(3)), "Source File Error: (28)   no space left\n'/tmp/take 1.wav'");
}

TEST(TheTextOfAWriteError, TellsOfTheSystemItsCode)
{
    EXPECT_EQ(FormatWriteError(errorOfKind(5)), "System Error: (12)   general");
}

TEST(TheTextOfAWriteError, TellsOfAnythingElseItsKind)
{
    EXPECT_EQ(FormatWriteError(errorOfKind(4)), "Write Error: (4)   general");
    EXPECT_EQ(FormatWriteError(errorOfKind(0)), "Write Error: (0)   general");
    EXPECT_EQ(FormatWriteError(errorOfKind(-7)), "Write Error: (-7)   general");
}

TEST(TheTextOfAWriteError, TakesSignsOfAFormatInADescriptionAsTheyAre)
{
    DiscWriteError error = errorOfKind(1);
    error.deviceError.description = "%1 of %2";
    EXPECT_EQ(FormatWriteError(error), "Device Error: (4)   %1 of %2\nMAKER - MODEL");
}

struct SpeedRow
{
    const char* name;
    double rate;
    const char* text;
};

class AWriteSpeed : public ::testing::TestWithParam<SpeedRow>
{
};

TEST_P(AWriteSpeed, HasOneDigitBehindThePointAndNoneButTrueOnesBeforeIt)
{
    EXPECT_EQ(writeSpeedText(GetParam().rate), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rates, AWriteSpeed,
                         ::testing::Values(SpeedRow{"Whole", 8.0, "8.0x"}, SpeedRow{"OfTwoDigits", 52.0, "52.0x"},
                                           SpeedRow{"RoundedDown", 4.04, "4.0x"},
                                           SpeedRow{"RoundedUp", 23.96, "24.0x"},
                                           SpeedRow{"AHalfAboveAnEvenDigit", 2.25, "2.3x"},
                                           SpeedRow{"AHalfAboveAnOddDigit", 2.75, "2.8x"},
                                           SpeedRow{"BelowOne", 0.5, ".5x"}, SpeedRow{"NearlyOne", 0.97, "1.0x"},
                                           SpeedRow{"None", 0.0, ".0x"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ATrackNumber, HasTwoDigitsAtLeast)
{
    EXPECT_EQ(trackNumberText(0), "00");
    EXPECT_EQ(trackNumberText(1), "01");
    EXPECT_EQ(trackNumberText(10), "10");
    EXPECT_EQ(trackNumberText(100), "100");
}

TEST(TheNameOfATracksFormat, IsTheFormats)
{
    EXPECT_EQ(trackFormatText(0, "above"), "WAV");
    EXPECT_EQ(trackFormatText(1, "above"), "OGG");
    EXPECT_EQ(trackFormatText(2, "above"), "MP3");
    EXPECT_EQ(trackFormatText(3, "above"), "WMA");
}

TEST(TheNameOfATracksFormat, IsThatOfTheRowAboveWhereThereIsNoSuchFormat)
{
    EXPECT_EQ(trackFormatText(4, "MP3"), "MP3");
    EXPECT_EQ(trackFormatText(-1, ""), "");
}

}  // namespace
