#include "vocalremover/OutputName.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct NameRow
{
    const char* name;
    const char* chosen;
    const char* output;
};

class NameWithoutVocals : public ::testing::TestWithParam<NameRow>
{
};

TEST_P(NameWithoutVocals, HasItsPartBeforeTheLastThreeCharactersInPlaceOfTheFourthLast)
{
    EXPECT_EQ(nameWithoutVocals(GetParam().chosen), GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameWithoutVocals,
    ::testing::Values(NameRow{"Mp3", "/music/song.mp3", "/music/songNoVocal.mp3"},
                      NameRow{"InCapitals", "/music/SONG.WAV", "/music/SONGNoVocal.WAV"},
                      NameRow{"FlacLosesALetter", "/music/song.flac", "/music/song.NoVocal.lac"},
                      NameRow{"TwoLettersGiveTwoDots", "/music/song.wv", "/music/sonNoVocal..wv"},
                      NameRow{"WithoutADot", "/music/song", "/music/NoVocal.ong"},
                      NameRow{"Twice", "/music/mixNoVocal.mp3", "/music/mixNoVocalNoVocal.mp3"},
                      NameRow{"OverASeparator", "/music/a", "/musNoVocal.c/a"},
                      NameRow{"OfFourCharacters", "/mp3", "NoVocal.mp3"},
                      NameRow{"OfThreeCharacters", "mp3", "NoVocal.mp3"}, NameRow{"Empty", "", "NoVocal."}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
