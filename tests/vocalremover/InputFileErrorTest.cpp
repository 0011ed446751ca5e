#include "vocalremover/InputFileError.h"

#include "QtPrinters.h"
#include "support/MockDialogs.h"

#include <gtest/gtest.h>
#include <limits>

using ::testing::StrictMock;

namespace {

TEST(TheReasonsOfARefusedFile, AreTenBehindSuccessInTheOrderOfTheChecks)
{
    const char* const wanted[] = {
        "Cannot open input file!",
        "Input file is not a standard RIFF file!",
        "Input file has missing or incorrect WAVE header!",
        "Input file has missing or incorrect chunk header!",
        "Input file is not a PCM or IEEE wave file!",
        "Input file is not stereo!",
        "Input file is not 8, 16, 24 or 32 bits!",
        "Input file is not standard wave file!",
        "Input file is missing or it has an incorrect form header!",
        "Cannot open input file!",
    };
    const auto reasons = inputFileReasons();
    ASSERT_EQ(reasons.size(), std::size(wanted) + 1);
    EXPECT_EQ(reasons[0].message, nullptr);
    for (std::size_t i = 0; i < std::size(wanted); ++i)
        EXPECT_STREQ(reasons[i + 1].message, wanted[i]);
}

TEST(TheReasonsOfARefusedFile, AreNeverShownSinceNoneHasACode)
{
    StrictMock<MockMsgBox> msgBox;
    for (int code = std::numeric_limits<short>::min(); code <= std::numeric_limits<short>::max(); ++code)
        ShowInputFileError(static_cast<short>(code), msgBox);
}

TEST(TheReasonsOfARefusedFile, WouldBeShownPlainUnderTheTitleErrorByTheFirstLabelThatIsTheCode)
{
    StrictMock<MockMsgBox> msgBox;
    const InputFileReason reasons[] = {{nullptr, 4}, {"First!", 7}, {"Second!", 9}, {"Third!", 7}};
    EXPECT_CALL(msgBox, show(QString("First!"), MsgBox::Look::Plain, QString("Error")));
    for (const short code : {0, 4, 5, 7})
        ShowInputFileError(code, msgBox, reasons);
}

}  // namespace
