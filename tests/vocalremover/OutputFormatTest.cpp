#include "vocalremover/OutputFormat.h"

#include "engines/MockEncodeFormats.h"

#include <gtest/gtest.h>

using ::testing::InSequence;
using ::testing::StrictMock;

namespace {

using StrictFormats = StrictMock<MockEncodeFormats>;

void expectMp3Output(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(2));
    EXPECT_CALL(formats.mp3, Mode(1));
    EXPECT_CALL(formats.mp3, BitRate(128000));
}

void expectWmaOutput(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(3));
    EXPECT_CALL(formats.wma, Mode(1));
    EXPECT_CALL(formats.wma, BitRate(128000));
}

void expectAacOutput(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(6));
    EXPECT_CALL(formats.aac, Mode(0));
    EXPECT_CALL(formats.aac, Mp4Container(false));
    EXPECT_CALL(formats.aac, Quality(100));
}

void expectMp4Output(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(6));
    EXPECT_CALL(formats.aac, Mode(0));
    EXPECT_CALL(formats.aac, Mp4Container(true));
    EXPECT_CALL(formats.aac, Quality(100));
}

void expectOggOutput(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(4));
    EXPECT_CALL(formats.ogg, Mode(0));
    EXPECT_CALL(formats.ogg, Quality(4));
}

void expectFlacOutput(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(19));
    EXPECT_CALL(formats.flac, Mode(2));
}

void expectWavOutput(StrictFormats& formats)
{
    EXPECT_CALL(formats, FormatForExport(1));
    EXPECT_CALL(formats.wav, Mode(1));
}

struct OutputFormatRow
{
    const char* name;
    const char* path;
    void (*expect)(StrictFormats& formats);
};

class OutputFormat : public ::testing::TestWithParam<OutputFormatRow>
{
};

TEST_P(OutputFormat, FollowsTheEndOfThePath)
{
    StrictFormats formats;
    const InSequence order;
    GetParam().expect(formats);
    SelectOutputFormat(GetParam().path, formats);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, OutputFormat,
    ::testing::Values(OutputFormatRow{"Mp3", "/out/take.mp3", expectMp3Output},
                      OutputFormatRow{"Wma", "/out/take.wma", expectWmaOutput},
                      OutputFormatRow{"Aac", "/out/take.aac", expectAacOutput},
                      OutputFormatRow{"Mp4", "/out/take.mp4", expectMp4Output},
                      OutputFormatRow{"Ogg", "/out/take.ogg", expectOggOutput},
                      OutputFormatRow{"Flac", "/out/take.flac", expectFlacOutput},
                      OutputFormatRow{"Wav", "/out/take.wav", expectWavOutput},
                      OutputFormatRow{"Mp3InCapitals", "/out/take.MP3", expectMp3Output},
                      OutputFormatRow{"FlacInMixedLetters", "/out/take.FlaC", expectFlacOutput},
                      OutputFormatRow{"FlacWithoutADot", "/out/takeflac", expectFlacOutput},
                      OutputFormatRow{"FlacAfterTheNamingRule", "/out/take.NoVocal.lac", expectWavOutput},
                      OutputFormatRow{"WavPackAfterTheNamingRule", "/out/takNoVocal..wv", expectWavOutput},
                      OutputFormatRow{"M4a", "/out/take.m4a", expectWavOutput},
                      OutputFormatRow{"WithoutAnEnding", "/out/take", expectWavOutput},
                      OutputFormatRow{"WithTheEndingInside", "/out/take.flac.bak", expectWavOutput},
                      OutputFormatRow{"Empty", "", expectWavOutput}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
