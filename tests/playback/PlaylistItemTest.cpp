#include "playback/PlaylistItem.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct LabelRow
{
    const char* name;
    const char* fileName;
    const char* label;
};

class Label : public ::testing::TestWithParam<LabelRow>
{
};

TEST_P(Label, IsTheNameLessFourCharactersAndTheKindOfFile)
{
    EXPECT_EQ(playlistLabel(GetParam().fileName), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(
    Endings, Label,
    ::testing::Values(
        LabelRow{"Cda", "Track01.cda", "Track01 (audio track)"}, LabelRow{"Mp3", "a song.mp3", "a song (MP3 file)"},
        LabelRow{"Mp4", "a.mp4", "a (MP4 file)"}, LabelRow{"Aac", "a.aac", "a (AAC file)"},
        LabelRow{"M4a", "a.m4a", "a (ALAC file)"}, LabelRow{"Wav", "a.wav", "a (Wav file)"},
        LabelRow{"FlacKeepsItsDot", "a.flac", "a. (FLAC file)"}, LabelRow{"Ogg", "a.ogg", "a (Ogg Vorbis file)"},
        LabelRow{"Wma", "a.wma", "a (Windows Media Audio)"}, LabelRow{"Aif", "a.aif", "a (Aif - Mac)"},
        LabelRow{"UpperCase", "A.MP3", "A (MP3 file)"}, LabelRow{"MixedCase", "A.Flac", "A. (FLAC file)"},
        LabelRow{"AiffIsUnknown", "a.aiff", "a. (unknown audio format)"},
        LabelRow{"Mp2IsUnknown", "a.mp2", "a (unknown audio format)"},
        LabelRow{"WmvIsUnknown", "a.wmv", "a (unknown audio format)"},
        LabelRow{"AsxIsUnknown", "a.asx", "a (unknown audio format)"},
        LabelRow{"AsfIsUnknown", "a.asf", "a (unknown audio format)"},
        LabelRow{"Ac3IsUnknown", "a.ac3", "a (unknown audio format)"},
        LabelRow{"WavPackLosesALetterOfItsName", "song.wv", "son (unknown audio format)"},
        LabelRow{"NoExtension", "recording", "recor (unknown audio format)"},
        LabelRow{"EndingWithoutADot", "mymp3", "m (MP3 file)"}, LabelRow{"FourCharacters", ".mp3", " (MP3 file)"},
        LabelRow{"ThreeCharacters", "abc", " (unknown audio format)"},
        LabelRow{"NoName", "", " (unknown audio format)"},
        LabelRow{"LettersOfTwoUnitsAreWhole", "a\xF0\x9F\x8E\xB8.wv", "a (unknown audio format)"},
        LabelRow{"OnlyLettersOfTwoUnits", "\xF0\x9F\x8E\xB8\xF0\x9F\x8E\xB8", " (unknown audio format)"}),
    [](const auto& info) { return std::string(info.param.name); });

QString joined(const QStringList& parts)
{
    return parts.join(QChar::Null);
}

TEST(AnOpenDialogsAnswer, OfOneFileIsOneItemNamedByTheTitle)
{
    EXPECT_EQ(playlistItems("/music/Blue Bossa.mp3", "Blue Bossa.mp3"),
              (QVector<PlaylistItem>{{"Blue Bossa (MP3 file)", "/music/Blue Bossa.mp3"}}));
}

TEST(AnOpenDialogsAnswer, OfSeveralFilesIsOneItemEachInTheDialogsOrder)
{
    EXPECT_EQ(playlistItems(joined({"/music", "b.wav", "a.flac"}), {}),
              (QVector<PlaylistItem>{{"b (Wav file)", "/music/b.wav"}, {"a. (FLAC file)", "/music/a.flac"}}));
}

TEST(AnOpenDialogsAnswer, AddsNoSecondSeparatorToAFolderThatEndsInOne)
{
    EXPECT_EQ(playlistItems(joined({"/", "b.wav", "a.wav"}), {}).first().path, "/b.wav");
}

TEST(AnOpenDialogsAnswer, WithOneSeparatorOnlyIsTakenForOneFile)
{
    EXPECT_EQ(playlistItems(joined({"/music", "b.wav"}), "b.wav").size(), 1);
}

}  // namespace
