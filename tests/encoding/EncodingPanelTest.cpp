#include "encoding/EncoderWindowTest.h"

#include "support/modSpecialFolders.h"

#include <QApplication>

using ::testing::InSequence;
using ::testing::Return;

namespace {

FileDialogSetup dialogHolding(const QString& fileName)
{
    FileDialogSetup setup;
    setup.title = "Select a file to encode";
    setup.fileName = fileName;
    setup.filter = "WAV files (*.wav)|*.wav|RAW files (*.raw)|*.raw";
    setup.filterIndex = 1;
    setup.initialFolder = modSpecialFolders::recordingsFolder();
    setup.flags = 4;
    setup.cancelIsError = false;
    return setup;
}

using FilesOfTheEncoder = EncoderWindow;

TEST_F(FilesOfTheEncoder, AreNotChosenAtFirst)
{
    EXPECT_EQ(boxOf("Text3"), "choose input file");
    EXPECT_EQ(boxOf("Text4"), "choose output file");
    EXPECT_FALSE(isEnabled("cmdEncode"));
    EXPECT_TRUE(isEnabled("cmdBrowse"));
    EXPECT_TRUE(isEnabled("cmdOptions"));
}

TEST_F(FilesOfTheEncoder, AreChosenInTheRecordingsFolder)
{
    EXPECT_TRUE(modSpecialFolders::recordingsFolder().endsWith("/Larkspin Recordings/"));
    EXPECT_CALL(dialog, ShowOpen(dialogHolding(""))).WillOnce(Return(answering("/music/track.wav")));
    click("cmdBrowse");
    EXPECT_EQ(boxOf("Text3"), "/music/track.wav");
    EXPECT_EQ(boxOf("Text4"), "/music/track.mp3");
    EXPECT_TRUE(isEnabled("cmdEncode"));
}

TEST_F(FilesOfTheEncoder, BecomeNothingWhereNoneIsChosen)
{
    browse("");
    EXPECT_EQ(boxOf("Text3"), "choose input file");
    EXPECT_EQ(boxOf("Text4"), "choose output file");
    EXPECT_FALSE(isEnabled("cmdEncode"));
}

struct OutputRow
{
    const char* chosen;
    const char* output;
};

class EachOutputOfTheEncoder : public EncoderWindow, public ::testing::WithParamInterface<OutputRow>
{
};

TEST_P(EachOutputOfTheEncoder, IsTheNameWithoutItsLastThreeCharacters)
{
    browse(GetParam().chosen);
    EXPECT_EQ(boxOf("Text3"), GetParam().chosen);
    EXPECT_EQ(boxOf("Text4"), GetParam().output);
    EXPECT_TRUE(isEnabled("cmdEncode"));
}

INSTANTIATE_TEST_SUITE_P(
    Names, EachOutputOfTheEncoder,
    ::testing::Values(OutputRow{"/m/track.wav", "/m/track.mp3"}, OutputRow{"/m/track.raw", "/m/track.mp3"},
                      OutputRow{"/m/track.w", "/m/tracmp3"}, OutputRow{"/m/track.wave", "/m/track.wmp3"},
                      OutputRow{"/m/track", "/m/trmp3"}, OutputRow{"/m/a", "/mp3"}, OutputRow{"wav", "mp3"}));

TEST_F(FilesOfTheEncoder, HaveNoOutputWhereTheNameHasNoThreeCharacters)
{
    browse("ab");
    EXPECT_EQ(boxOf("Text3"), "ab");
    EXPECT_EQ(boxOf("Text4"), "choose output file");
    EXPECT_FALSE(isEnabled("cmdEncode"));
}

TEST_F(FilesOfTheEncoder, KeepTheOutputOfBeforeWhereTheNameHasNoThreeCharacters)
{
    browse("/music/track.wav");
    browse("ab");
    EXPECT_EQ(boxOf("Text3"), "ab");
    EXPECT_EQ(boxOf("Text4"), "/music/track.mp3");
    EXPECT_TRUE(isEnabled("cmdEncode"));
}

// A cancelled dialog answers with the name that it was opened with.
TEST_F(FilesOfTheEncoder, TakeTheNameThatTheDialogStillHoldsWhenItIsCancelled)
{
    browse("/music/track.wav");
    edit("Text3", "/music/another.wav");
    edit("Text4", "/music/another.mp3");
    EXPECT_CALL(dialog, ShowOpen(dialogHolding("/music/track.wav"))).WillOnce([](const FileDialogSetup& setup) {
        return answering(setup.fileName);
    });
    click("cmdBrowse");
    EXPECT_EQ(boxOf("Text3"), "/music/track.wav");
    EXPECT_EQ(boxOf("Text4"), "/music/track.mp3");
    EXPECT_TRUE(isEnabled("cmdEncode"));
}

TEST_F(FilesOfTheEncoder, AreOfferedAsWavFilesAgainAfterARawOneWasChosen)
{
    FileDialogAnswer raw = answering("/music/take.raw");
    raw.filterIndex = 2;
    EXPECT_CALL(dialog, ShowOpen).WillOnce(Return(raw));
    click("cmdBrowse");
    EXPECT_CALL(dialog, ShowOpen(dialogHolding("/music/take.raw"))).WillOnce(Return(raw));
    click("cmdBrowse");
    EXPECT_FALSE(control<QAbstractButton>(*window, "chkRaw").isChecked());
}

using AnEncoding = EncoderWindow;

TEST_F(AnEncoding, IsStartedWithTheTwoNamesAndNothingElse)
{
    browse("/music/track.wav");
    const InSequence order;
    expectEncoding("/music/track.wav", "/music/track.mp3");
    click("cmdEncode");
}

TEST_F(AnEncoding, TakesTheNamesUncheckedAsTheyWereEdited)
{
    browse("/music/track.wav");
    edit("Text3", " no such file");
    edit("Text4", "");
    const InSequence order;
    expectEncoding(" no such file", "");
    click("cmdEncode");
}

TEST_F(AnEncoding, ClearsTheStatusBeforeTheEncoderIsAsked)
{
    browse("/music/track.wav");
    emit encoder->EncodePercent(40);
    EXPECT_CALL(*encoder, InputFile).WillOnce([this] { EXPECT_EQ(status(), ""); });
    EXPECT_CALL(*encoder, OutputFile);
    EXPECT_CALL(*encoder, Encode).WillOnce([this] {
        emit encoder->EncodePercent(0);
        return true;
    });
    click("cmdEncode");
    EXPECT_EQ(status(), "0% completed");
}

TEST_F(AnEncoding, SaysNothingOfARefusal)
{
    browse("/music/track.wav");
    EXPECT_CALL(*encoder, InputFile);
    EXPECT_CALL(*encoder, OutputFile);
    EXPECT_CALL(*encoder, Encode).WillOnce(Return(false));
    click("cmdEncode");
    EXPECT_EQ(status(), "");
    EXPECT_EQ(bar(), 0);
    EXPECT_TRUE(isEnabled("cmdEncode"));
}

TEST_F(AnEncoding, CanBeStartedWhileOneRuns)
{
    browse("/music/one.wav");
    const InSequence order;
    expectEncoding("/music/one.wav", "/music/one.mp3");
    click("cmdEncode");
    emit encoder->EncodePercent(30);
    EXPECT_TRUE(isEnabled("cmdEncode"));
    EXPECT_TRUE(isEnabled("cmdBrowse"));
    browse("/music/two.wav");
    expectEncoding("/music/two.wav", "/music/two.mp3");
    click("cmdEncode");
    EXPECT_EQ(status(), "");
    EXPECT_EQ(bar(), 30);  // only the status is cleared
}

TEST_F(AnEncoding, ShowsItsPercent)
{
    for (const int percent : {0, 1, 37, 99}) {
        emit encoder->EncodePercent(percent);
        EXPECT_EQ(status(), QString::number(percent) + "% completed");
        EXPECT_EQ(bar(), percent);
        EXPECT_FALSE(tmrFinish().isActive());
    }
}

/// Notes when it is painted.
class PaintWatch : public QObject
{
public:
    using QObject::QObject;
    int paints = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

TEST_F(AnEncoding, IsSeenGoingOnWhileTheMainThreadIsBusy)
{
    window->show();
    QApplication::processEvents();
    PaintWatch label;
    PaintWatch progress;
    control<QWidget>(*window, "Label8").installEventFilter(&label);
    control<QWidget>(*window, "progress").installEventFilter(&progress);
    emit encoder->EncodePercent(50);  // and no event loop turns
    EXPECT_GE(label.paints, 1);
    EXPECT_GE(progress.paints, 1);
}

TEST_F(AnEncoding, EndsWithDoneForThreeSeconds)
{
    EXPECT_FALSE(tmrFinish().isActive());
    EXPECT_EQ(tmrFinish().interval(), 3000);
    emit encoder->EncodePercent(100);
    EXPECT_EQ(status(), "Done .");
    EXPECT_EQ(bar(), 0);
    EXPECT_TRUE(tmrFinish().isActive());
    fireFinish();
    EXPECT_EQ(status(), "");
    EXPECT_FALSE(tmrFinish().isActive());
}

TEST_F(AnEncoding, EndsOnlyAtExactlyAHundred)
{
    for (const int percent : {101, 1000, -100, 10}) {
        emit encoder->EncodePercent(percent);
        EXPECT_EQ(status(), QString::number(percent) + "% completed");
        EXPECT_EQ(bar(), percent);
        EXPECT_FALSE(tmrFinish().isActive());
    }
}

TEST_F(AnEncoding, EndsAnewBehindTheOneOfBefore)
{
    emit encoder->EncodePercent(100);
    emit encoder->EncodePercent(20);
    EXPECT_EQ(status(), "20% completed");
    EXPECT_EQ(bar(), 20);
    fireFinish();  // of the first one
    EXPECT_EQ(status(), "");
    EXPECT_EQ(bar(), 20);
    emit encoder->EncodePercent(100);
    EXPECT_EQ(status(), "Done .");
    EXPECT_TRUE(tmrFinish().isActive());
}

TEST_F(AnEncoding, LeavesTheBarWhereItStoppedIfItFails)
{
    emit encoder->EncodePercent(63);
    fireFinish();
    EXPECT_EQ(bar(), 63);
}

/// Tells when it goes.
class MortalEncoder : public ::testing::StrictMock<MockMp3EncoderEngine>
{
public:
    explicit MortalEncoder(bool& gone)
        : gone(gone)
    {
    }
    ~MortalEncoder() override { gone = true; }
    Q_DISABLE_COPY_MOVE(MortalEncoder)

private:
    bool& gone;
};

TEST_F(AnEncoding, IsGivenUpWithTheEncoderThatGoesWithTheWindow)
{
    bool gone = false;
    auto another = std::make_unique<frmMP3Options>(std::make_unique<MortalEncoder>(gone), dialog);
    another->show();
    EXPECT_TRUE(another->close());
    EXPECT_FALSE(gone);
    another.reset();
    EXPECT_TRUE(gone);
}

}  // namespace
