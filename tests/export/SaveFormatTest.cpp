#include "export/SaveFormat.h"

#include "engines/MockEncodeFormats.h"

#include <gtest/gtest.h>

using ::testing::InSequence;
using ::testing::StrictMock;

namespace {

using Formats = StrictMock<MockEncodeFormats>;

void expectMp3(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(2));
    EXPECT_CALL(formats.mp3, Mode(1));
    EXPECT_CALL(formats.mp3, BitRate(128000));
}

void expectWma(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(3));
    EXPECT_CALL(formats.wma, Mode(1));
    EXPECT_CALL(formats.wma, BitRate(128000));
}

void expectAac(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(6));
    EXPECT_CALL(formats.aac, Mode(0));
    EXPECT_CALL(formats.aac, Mp4Container(false));
    EXPECT_CALL(formats.aac, Quality(100));
}

void expectMp4(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(6));
    EXPECT_CALL(formats.aac, Mode(0));
    EXPECT_CALL(formats.aac, Mp4Container(true));
    EXPECT_CALL(formats.aac, Quality(100));
}

void expectOgg(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(4));
    EXPECT_CALL(formats.ogg, Mode(0));
    EXPECT_CALL(formats.ogg, Quality(4));
}

void expectWav(Formats& formats)
{
    EXPECT_CALL(formats, FormatForExport(1));
    EXPECT_CALL(formats.wav, Mode(1));
}

struct FormatRow
{
    const char* name;
    const char* path;
    void (*expect)(Formats& formats);
};

class SaveFormat : public ::testing::TestWithParam<FormatRow>
{
};

TEST_P(SaveFormat, FollowsTheLastThreeCharactersOfTheName)
{
    Formats formats;
    const InSequence order;
    GetParam().expect(formats);
    chooseSaveFormat(GetParam().path, formats);
}

INSTANTIATE_TEST_SUITE_P(
    Names, SaveFormat,
    ::testing::Values(FormatRow{"Mp3", "/out/take.mp3", expectMp3}, FormatRow{"Wma", "/out/take.wma", expectWma},
                      FormatRow{"Aac", "/out/take.aac", expectAac}, FormatRow{"Mp4", "/out/take.mp4", expectMp4},
                      FormatRow{"Ogg", "/out/take.ogg", expectOgg}, FormatRow{"Wav", "/out/take.wav", expectWav},
                      FormatRow{"InCapitals", "/out/take.MP3", expectMp3},
                      FormatRow{"InMixedLetters", "/out/take.Ogg", expectOgg},
                      FormatRow{"FlacIsWav", "/out/take.flac", expectWav},
                      FormatRow{"M4aIsWav", "/out/take.m4a", expectWav},
                      FormatRow{"WithoutADot", "/out/takemp3", expectMp3},
                      FormatRow{"WithoutAnEnding", "/out/take", expectWav},
                      FormatRow{"WithTheEndingInside", "/out/take.mp3.bak", expectWav},
                      FormatRow{"OfThreeCharacters", "wma", expectWma},
                      FormatRow{"OfTwoCharacters", "p3", expectWav}, FormatRow{"Empty", "", expectWav}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
