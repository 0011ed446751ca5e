#include "recorder/RecordingNames.h"

#include "recorder/AudioFormatPanel.h"
#include "recorder/RecorderTest.h"

#include <QLocale>
#include <QScopeGuard>

namespace {

const QDateTime afternoon(QDate(2007, 3, 5), QTime(14, 3, 37));

class TheNamesOfRecordings : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Recorder.unwatched([this] { format.FillCodecCombo(); });
        names.setOutputFolder("/music");
    }

    StrictRecorder Recorder;
    AudioFormatPanel format{Recorder};
    QDateTime now = afternoon;
    RecordingNames names{format, [this] { return now; }};
};

TEST_F(TheNamesOfRecordings, TellTheTimeRoundedDownToTenSeconds)
{
    EXPECT_EQ(names.ComposeRecordingName(), "/music/Recording Mar-05-2007 14-03-30.mp3");
}

struct MomentRow
{
    const char* name;
    QDateTime moment;
    const char* file;
};

class EachMoment : public TheNamesOfRecordings, public ::testing::WithParamInterface<MomentRow>
{
};

TEST_P(EachMoment, HasItsName)
{
    now = GetParam().moment;
    EXPECT_EQ(names.ComposeRecordingName(), QString("/music/Recording ") + GetParam().file + ".mp3");
}

INSTANTIATE_TEST_SUITE_P(
    Moments, EachMoment,
    ::testing::Values(MomentRow{"Midnight", {{2026, 1, 1}, {0, 0, 0}}, "Jan-01-2026 00-00-00"},
                      MomentRow{"NineSeconds", {{2026, 12, 31}, {9, 5, 9}}, "Dec-31-2026 09-05-00"},
                      MomentRow{"TenSeconds", {{2026, 5, 20}, {12, 59, 10}}, "May-20-2026 12-59-10"},
                      MomentRow{"TheLastSecond", {{2026, 10, 9}, {23, 59, 59}}, "Oct-09-2026 23-59-50"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TheNamesOfRecordings, AreTheSameInEveryLanguage)
{
    const auto back = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(names.ComposeRecordingName(), "/music/Recording Mar-05-2007 14-03-30.mp3");
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    EXPECT_EQ(names.ComposeRecordingName(), "/music/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(TheNamesOfRecordings, EndAsTheFormatDoes)
{
    const QStringList codecs{"WAV", "MP3", "OGG", "WMA", "AAC", "MP4"};
    const QStringList endings{".wav", ".mp3", ".ogg", ".wma", ".aac", ".mp4"};
    for (qsizetype i = 0; i < codecs.size(); ++i) {
        Recorder.unwatched([&] { pick(format, "ComboCodec", codecs[i]); });
        EXPECT_EQ(names.ComposeRecordingName(), "/music/Recording Mar-05-2007 14-03-30" + endings[i]);
    }
}

TEST_F(TheNamesOfRecordings, AreTheOneThatWasChosenAsItWasTyped)
{
    for (const char* chosen : {"/home/tape.wav", "/home/tape", "/home/tape.MP3"}) {
        names.chosenFile = chosen;
        EXPECT_EQ(names.ComposeRecordingName(), chosen);
    }
    names.chosenFile.clear();
    EXPECT_EQ(names.ComposeRecordingName(), "/music/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(TheNamesOfRecordings, BeginWithAFolderThatEndsInOneSeparator)
{
    for (const char* folder : {"/music", "/music/"}) {
        names.setOutputFolder(folder);
        EXPECT_EQ(names.outputFolder(), "/music/");
    }
    names.setOutputFolder("/");
    EXPECT_EQ(names.outputFolder(), "/");
    EXPECT_EQ(names.ComposeRecordingName(), "/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(TheNamesOfRecordings, OfPartsHaveTheTimeBeforeTheEndingThatWasChosen)
{
    names.chosenFile = "/home/tape.mp3";
    EXPECT_EQ(names.nextPartName(), "/home/tape14-03-30.mp3");
    EXPECT_EQ(names.chosenFile, "/home/tape.mp3");
    now = now.addSecs(25);
    EXPECT_EQ(names.nextPartName(), "/home/tape14-04-00.mp3");
}

TEST_F(TheNamesOfRecordings, OfPartsTakeTheLastFourCharactersForTheEndingWhateverTheyAre)
{
    names.chosenFile = "/home/tape.ra";
    EXPECT_EQ(names.nextPartName(), "/home/tap14-03-30e.ra");
    names.chosenFile = "/x";
    EXPECT_EQ(names.nextPartName(), "14-03-30/x");
}

TEST_F(TheNamesOfRecordings, OfPartsWithoutAChosenNameTellDateAndTimeOfThePart)
{
    now = QDateTime(QDate(2007, 3, 6), QTime(0, 0, 2));
    EXPECT_EQ(names.nextPartName(), "/music/Recording Mar-06-2007 00-00-00.mp3");
}

}  // namespace
