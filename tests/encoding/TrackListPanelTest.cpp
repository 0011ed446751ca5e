#include "encoding/AudioCDBurnTest.h"
#include "support/modSpecialFolders.h"

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

const QString notAllowed = "Only .wav, .wma, or .mp3  files are allowed for an audio disc.";
const QString invalid = "Invalid Audio Format...High quality audio files only!";

class TheTrackList : public AudioCDBurn
{
protected:
    void SetUp() override { load(); }

    static QString joined(const QStringList& parts) { return parts.join(QChar::Null); }
    void expectPick(const QString& fileName)
    {
        EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(answering(fileName)));
    }

    void expectCancel(const QString& fileNameBefore)
    {
        EXPECT_CALL(dialog, ShowOpen).WillOnce([fileNameBefore](const FileDialogSetup& setup) {
            EXPECT_EQ(setup.fileName, fileNameBefore);
            FileDialogAnswer answer;
            answer.error = FileDialogAnswer::cancelled;
            answer.fileName = setup.fileName;
            return answer;
        });
    }
};

TEST_F(TheTrackList, ShowsTheProjectsTracks)
{
    list({{"/music/one.wav", AudioProject::Wav, 15392},
          {"/music/two.ogg", AudioProject::Ogg, 300},
          {"/music/three.mp3", AudioProject::Mp3, 451574},
          {"/music/four.wma", AudioProject::Wma, 1}});
    EXPECT_EQ(rows(), QStringList({"01|/music/one.wav|WAV|03:25:17", "02|/music/two.ogg|OGG|00:04:00",
                                   "03|/music/three.mp3|MP3|100:20:74", "04|/music/four.wma|WMA|00:00:01"}));
    EXPECT_EQ(tracks().selectedRow(), 0);
}

TEST_F(TheTrackList, KeepsTheFormatOfTheRowAboveForANumberThatIsNone)
{
    list({{"a", 9, 0}, {"b", AudioProject::Mp3, 0}, {"c", 4, 0}, {"d", -1, 0}, {"e", AudioProject::Wma, 0}});
    EXPECT_EQ(rows(), QStringList({"01|a||00:00:00", "02|b|MP3|00:00:00", "03|c|MP3|00:00:00", "04|d|MP3|00:00:00",
                                   "05|e|WMA|00:00:00"}));
}

TEST_F(TheTrackList, ForgetsTheLastFormatFromOneRebuildToTheNext)
{
    list({{"a", AudioProject::Mp3, 0}});
    list({{"a", 7, 0}});
    EXPECT_EQ(rows(), QStringList("01|a||00:00:00"));
}

TEST_F(TheTrackList, TellsHowMuchOfTheDiscTheTracksNeed)
{
    const InSequence order;
    expectPick("/music/one.wav");
    expectAddedTrack("/music/one.wav", 1);
    EXPECT_CALL(project, GetTrackCount).WillOnce(Return(0));
    expectDiscInfo(drive, 12, 15392, 359850);
    click("cmdAddTrack");
    EXPECT_EQ(labelOf("lblDiscInfo0"), "12 Audio Tracks");
    EXPECT_EQ(labelOf("lblDiscInfo1"), "03:25:17 of 79:58:00 Used");
}

TEST_F(TheTrackList, OfAnEmptyProjectShowsNoTracks)
{
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(labelOf("lblDiscInfo0"), "0 Audio Tracks");
    EXPECT_EQ(labelOf("lblDiscInfo1"), "00:00:00 of 79:58:00 Used");
}

TEST_F(TheTrackList, AsksForFilesWithItsOwnDialog)
{
    const InSequence order;
    EXPECT_CALL(dialog, ShowOpen).WillOnce([](const FileDialogSetup& setup) {
        FileDialogSetup wanted;
        wanted.title = "Open audio";
        wanted.filter =
            "All supported audio formats|*.wav;*.mp3;*.wma|WAV files (*.wav)|*.wav|"
            "MP3 files (*.mp3)|*.mp3|Windows Media Audio files (*.wma)|*.wma";
        wanted.initialFolder = modSpecialFolders::documentsFolder() + "/Larkspin Recordings/";
        wanted.flags = 0xC0200;
        wanted.maxFileSize = 32000;
        wanted.cancelIsError = true;
        EXPECT_EQ(setup, wanted);
        return answering("/music/one.wav");
    });
    expectAddedTrack("/music/one.wav", 1);
    expectRefreshedList({{"/music/one.wav"}});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, PutsAFileAheadOfTheSelectedRow)
{
    list({{"a"}, {"b"}, {"c"}});
    select(3);
    const InSequence order;
    expectPick("/music/new.wav");
    expectAddedTrack("/music/new.wav", 3);
    expectRefreshedList({{"a"}, {"b"}, {"new"}, {"c"}});
    click("cmdAddTrack");
    EXPECT_EQ(tracks().selectedRow(), 0);
}

TEST_F(TheTrackList, PutsAFileToTheTopWithNoRowSelected)
{
    list({{"a"}, {"b"}});
    const InSequence order;
    expectPick("/music/new.wav");
    expectAddedTrack("/music/new.wav", 1);
    expectRefreshedList({{"new"}, {"a"}, {"b"}});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, PutsSeveralFilesInByTheirBareNamesOneBehindTheOtherAndTheNextOnesAheadOfThem)
{
    const InSequence order;
    expectPick(joined({"/music", "b.wav", "a.mp3", "c.wma"}));
    expectAddedTrack("b.wav", 1);
    expectAddedTrack("a.mp3", 2);
    expectAddedTrack("c.wma", 3);
    expectRefreshedList({{"b"}, {"a"}, {"c"}});
    click("cmdAddTrack");

    expectPick("/music/d.wav");
    expectAddedTrack("/music/d.wav", 1);
    expectRefreshedList({{"d"}, {"b"}, {"a"}, {"c"}});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, GoesOnBehindARefusedFileAndDoesNotRaiseThePositionForIt)
{
    list({{"x"}, {"y"}});
    select(2);
    const InSequence order;
    expectPick(joined({"/music", "a.wav", "bad.wav", "notes.txt", "b.wav"}));
    expectAddedTrack("a.wav", 2);
    expectAddedTrack("bad.wav", 3, false);
    expectBox(invalid);
    expectBox(notAllowed);
    expectAddedTrack("b.wav", 3);
    expectRefreshedList({});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, TakesAnMp3FileThatIsTypedAndANameWithoutADot)
{
    const InSequence order;
    expectPick(joined({"/music", "A.MP3", "plainwav"}));
    expectAddedTrack("A.MP3", 1);
    expectAddedTrack("plainwav", 2);
    expectRefreshedList({});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, TakesAnAnswerOfTwoPartsForOneName)
{
    const InSequence order;
    expectPick(joined({"/music", "a.wav"}));
    expectAddedTrack(joined({"/music", "a.wav"}), 1, false);
    expectBox(invalid);
    expectRefreshedList({});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, RefusesTheEmptyNameOfAFirstCancel)
{
    const InSequence order;
    expectCancel("");
    expectBox(notAllowed);
    expectRefreshedList({});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, AddsTheLastPickOnceMoreForALaterCancel)
{
    const InSequence order;
    expectPick("/music/a.wav");
    expectAddedTrack("/music/a.wav", 1);
    expectRefreshedList({});
    click("cmdAddTrack");

    for (int time = 0; time < 2; ++time) {
        expectCancel("/music/a.wav");
        expectAddedTrack("/music/a.wav", 1);
        expectRefreshedList({});
        click("cmdAddTrack");
    }

    expectPick(joined({"/music", "b.wav", "c.wav"}));
    expectAddedTrack("b.wav", 1);
    expectAddedTrack("c.wav", 2);
    expectRefreshedList({});
    click("cmdAddTrack");

    expectCancel(joined({"/music", "b.wav", "c.wav"}));
    expectAddedTrack("b.wav", 1, false);
    expectBox(invalid);
    expectAddedTrack("c.wav", 1);
    expectRefreshedList({});
    click("cmdAddTrack");
}

TEST_F(TheTrackList, ShowsTheHourglassWhileItAdds)
{
    EXPECT_FALSE(showsHourglass());
    const InSequence order;
    EXPECT_CALL(dialog, ShowOpen).WillOnce([this](const FileDialogSetup&) {
        EXPECT_TRUE(showsHourglass());
        return answering("/music/a.wav");
    });
    EXPECT_CALL(project, AddTrack).WillOnce([this](const QString&, int, bool& ok) {
        EXPECT_TRUE(showsHourglass());
        ok = true;
    });
    EXPECT_CALL(project, GetTrackCount).WillOnce([this] {
        EXPECT_TRUE(showsHourglass());
        return 0;
    });
    expectDiscInfo(drive);
    click("cmdAddTrack");
    EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TheTrackList, RemovesTheSelectedTrack)
{
    list({{"a"}, {"b"}, {"c"}});
    select(2);
    const InSequence order;
    EXPECT_CALL(project, RemoveTrack(2));
    expectRefreshedList({{"a"}, {"c"}});
    click("cmdRemoveTrack");
    EXPECT_EQ(rows(), QStringList({"01|a|WAV|00:00:00", "02|c|WAV|00:00:00"}));
    EXPECT_EQ(tracks().selectedRow(), 0);
}

TEST_F(TheTrackList, HasNothingToRemoveWithNoRowSelected)
{
    list({{"a"}});
    expectBox("No item is selected.");
    click("cmdRemoveTrack");
    EXPECT_EQ(rows().size(), 1);
}

}  // namespace
