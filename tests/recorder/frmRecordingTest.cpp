#include "recorder/RecorderWindowTest.h"
#include "support/modSpecialFolders.h"

#include <QApplication>
#include <QShortcut>
#include <QTest>

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

namespace {

QString automaticName()
{
    return modSpecialFolders::recordingsFolder() + "Recording Mar-05-2007 14-03-30.mp3";
}

TEST_F(RecorderWindow, TellsTheEngineNothingBeforeItIsLoaded)
{
    EXPECT_EQ(window->windowTitle(), "Sound card recorder");
    EXPECT_FALSE(window->isModal());
}

TEST_F(RecorderWindow, LoadsFormatThenSoundCardThenMeters)
{
    load();
    EXPECT_EQ(textOf(*window, "ComboCodec"), "MP3");
    EXPECT_EQ(textOf(*window, "ComboRecordingDevices"), "Built-in");
    EXPECT_EQ(textOf(*window, "lblTime"), "00:00:00");
}

TEST_F(RecorderWindow, ReadsTheLevelOfSilenceBetweenSoundCardAndMeters)
{
    store("DetectionValue", "450");
    {
        const InSequence order;
        Recorder->expectMp3();
        expectSoundCard();
        EXPECT_CALL(*Recorder, SilenceThreshold(450));
        expectBehindTheSoundCard();
    }
    window->Load();
    EXPECT_EQ(control<Slider>(*window, "sldDetectionLevel").value(), 450);
}

TEST_F(RecorderWindow, LoadsAlsoWithoutASoundCard)
{
    {
        const InSequence order;
        Recorder->expectMp3();
        EXPECT_CALL(*Recorder, InitRecorder(_, 0, -1));
        EXPECT_CALL(*Recorder, GetRecordingDeviceCount).WillOnce(Return(0));
        expectBehindTheSoundCard();
    }
    window->Load();
    record(automaticName());
}

TEST_F(RecorderWindow, LoadsAlsoWithASoundCardThatCannotBeOpened)
{
    {
        const InSequence order;
        Recorder->expectMp3();
        EXPECT_CALL(*Recorder, InitRecorder(_, 0, -1));
        EXPECT_CALL(*Recorder, GetRecordingDeviceCount).WillOnce(Return(1));
        EXPECT_CALL(*Recorder, GetRecordingDeviceName(0)).WillOnce(Return("Broken"));
        for (int i = 0; i < 2; ++i) {
            EXPECT_CALL(*Recorder, OpenRecordingDevice(0)).WillOnce(Return(1));
            EXPECT_CALL(msgBox, show(_, _, _));
        }
        expectBehindTheSoundCard();
    }
    window->Load();
    EXPECT_EQ(textOf(*window, "ComboRecordingDevices"), "Broken");
}

TEST_F(RecorderWindow, PutsTheBarsWhereTheirPlacesAre)
{
    load();
    ASSERT_EQ(placesOfBars.size(), 2);
    EXPECT_FALSE(placesOfBars[0].isEmpty());
    EXPECT_LT(placesOfBars[0].bottom(), placesOfBars[1].top());
    window->show();
    for (const auto& [name, place] :
         {std::pair("PictureVuMeterLeft", placesOfBars[0]), std::pair("PictureVuMeterRight", placesOfBars[1])}) {
        const QWidget& picture = control<QWidget>(*window, name);
        EXPECT_EQ(QRect(picture.mapTo(window.get(), QPoint(0, 0)), picture.size()), place) << name;
    }
}

TEST_F(RecorderWindow, ShowsEachPeakOnItsBar)
{
    load();
    const InSequence order;
    EXPECT_CALL(Recorder->bars, SetBarValue(leftBar, 1200));
    EXPECT_CALL(Recorder->bars, SetBarValue(rightBar, 32767));
    emit Recorder->RecordingPeaks(1200, 32767);
}

TEST_F(RecorderWindow, LowersTheInputForAClippedPeakOfARecordingOnceTheBarsShowIt)
{
    load();
    record(automaticName());
    const InSequence order;
    EXPECT_CALL(Recorder->bars, SetBarValue(leftBar, 32767));
    EXPECT_CALL(Recorder->bars, SetBarValue(rightBar, 0));
    EXPECT_CALL(*Recorder, SetRecordingInputVolume(0, 0, 39));
    emit Recorder->RecordingPeaks(32767, 0);
    EXPECT_CALL(Recorder->bars, SetBarValue(leftBar, 32766));
    EXPECT_CALL(Recorder->bars, SetBarValue(rightBar, 32766));
    emit Recorder->RecordingPeaks(32766, 32766);
}

TEST_F(RecorderWindow, LeavesTheInputAloneWhileItOnlyMetersWaitsOrReplays)
{
    load();
    EXPECT_CALL(Recorder->bars, SetBarValue).Times(6);
    emit Recorder->RecordingPeaks(32767, 32767);

    EXPECT_CALL(*Recorder, EnableSilenceDetection(true));
    EXPECT_CALL(*Recorder, SilenceThreshold);
    EXPECT_CALL(*Recorder, SilenceMinimumDuration);
    EXPECT_CALL(*Recorder, StartRecordingToFile);
    click(*window, "cmdDetect");
    emit Recorder->RecordingPeaks(32767, 32767);

    EXPECT_CALL(Recorder->sound, PlayRecordedSound());
    click(*window, "cmdPlay");
    emit Recorder->RecordingPeaks(32767, 32767);
    EXPECT_EQ(control<Slider>(*window, "SliderRecordingInputVolume").value(), 40);
}

TEST_F(RecorderWindow, RecordsStopsAndReplaysByItsButtons)
{
    load();
    record(automaticName());
    EXPECT_CALL(*Recorder, StopRecording());
    click(*window, "cmdStop");
    EXPECT_CALL(Recorder->sound, PlayRecordedSound());
    click(*window, "cmdPlay");
    tick(*window);
    EXPECT_EQ(textOf(*window, "lblTime"), "00:00:14");
    EXPECT_CALL(Recorder->sound, StopRecordedSound());
    emit Recorder->RecorderSessionDone();
    EXPECT_EQ(textOf(*window, "lblTime"), "00:00:00");
}

TEST_F(RecorderWindow, RecordsStopsAndReplaysByItsHotKeysWhileItHasTheFocus)
{
    load();
    window->show();
    QApplication::setActiveWindow(window.get());
    EXPECT_CALL(*Recorder, StartRecordingToFile(automaticName()));
    QTest::keyClick(window.get(), Qt::Key_R, Qt::AltModifier);
    EXPECT_CALL(*Recorder, StopRecording());
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    EXPECT_CALL(Recorder->sound, PlayRecordedSound());
    QTest::keyClick(window.get(), Qt::Key_P, Qt::AltModifier);

    mainWindow.show();
    QApplication::setActiveWindow(&mainWindow);
    QTest::keyClick(&mainWindow, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(timerOf(*window).isActive());
}

TEST_F(RecorderWindow, TakesAHotKeyThatIsHeldDownForOnePress)
{
    for (const auto& [name, key] :
         {std::pair("htkRecord", "Alt+R"), std::pair("htkStop", "Alt+S"), std::pair("htkPlay", "Alt+P")}) {
        const auto* hotKey = window->findChild<QShortcut*>(name);
        ASSERT_NE(hotKey, nullptr) << name;
        EXPECT_EQ(hotKey->key().toString(), key);
        EXPECT_FALSE(hotKey->autoRepeat()) << name;
    }
}

TEST_F(RecorderWindow, RecordsToTheRecordingsFolderWhereNoneWasChosen)
{
    load();
    EXPECT_TRUE(modSpecialFolders::recordingsFolder().endsWith('/'));
    record(modSpecialFolders::recordingsFolder() + "Recording Mar-05-2007 14-03-30.mp3");
    EXPECT_EQ(stored("OutputFolder"), "none");
}

TEST_F(RecorderWindow, RecordsToTheFolderThatWasChosenOnce)
{
    store("OutputFolder", "/music/takes/");
    load();
    record("/music/takes/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(RecorderWindow, AsksForAnotherFolderFromTheOneItHas)
{
    store("OutputFolder", "/music/takes/");
    load();
    EXPECT_CALL(folderDialog, BrowseForFolder(::testing::Ref(*window), QString("/music/takes")))
        .WillOnce(Return("/home/lessons"));
    click(*window, "cmdBrowseRecordOutput");
    EXPECT_EQ(stored("OutputFolder"), "/home/lessons/");
    record("/home/lessons/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(RecorderWindow, KeepsItsFolderWhereNoOtherIsPicked)
{
    store("OutputFolder", "/music/takes/");
    load();
    EXPECT_CALL(folderDialog, BrowseForFolder).WillOnce(Return(""));
    click(*window, "cmdBrowseRecordOutput");
    EXPECT_EQ(stored("OutputFolder"), "/music/takes/");
    record("/music/takes/Recording Mar-05-2007 14-03-30.mp3");
}

TEST_F(RecorderWindow, GivesTheRootFolderOneSeparatorAndAsksFromItWithoutThat)
{
    load();
    EXPECT_CALL(folderDialog, BrowseForFolder).WillOnce(Return("/"));
    click(*window, "cmdBrowseRecordOutput");
    EXPECT_EQ(stored("OutputFolder"), "/");
    EXPECT_CALL(folderDialog, BrowseForFolder(_, QString(""))).WillOnce(Return(""));
    click(*window, "cmdBrowseRecordOutput");
    record("/Recording Mar-05-2007 14-03-30.mp3");
}

FileDialogSetup usualSetup()
{
    FileDialogSetup setup;
    setup.title = "Record audio as ...";
    setup.filter =
        "WAV files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|Ogg Vorbis (*.ogg)|*.ogg|Windows Media Audio "
        "(*.wma)|*.wma|Advanced Audio Coding (*.aac)|*.aac|MP4 files (*.mp4)|*.mp4";
    setup.filterIndex = 2;
    setup.initialFolder = "/music/takes/";
    setup.flags = 0xC0200;
    setup.maxFileSize = 32000;
    setup.keepsTypedName = true;
    return setup;
}

FileDialogAnswer answerOf(const QString& file, int filter)
{
    FileDialogAnswer answer;
    answer.fileName = file;
    answer.filterIndex = filter;
    return answer;
}

TEST_F(RecorderWindow, RecordsToANameThatIsChosenUntilAnotherIs)
{
    store("OutputFolder", "/music/takes/");
    load();
    EXPECT_CALL(dialog, ShowSave(usualSetup())).WillOnce(Return(answerOf("/home/tape", 2)));
    click(*window, "cmdSaveAs");
    for (int i = 0; i < 2; ++i) {
        record("/home/tape");
        EXPECT_CALL(*Recorder, StopRecording());
        click(*window, "cmdStop");
    }
    FileDialogSetup again = usualSetup();
    again.fileName = "/home/tape";
    EXPECT_CALL(dialog, ShowSave(again)).WillOnce(Return(answerOf("/home/other.mp3", 2)));
    click(*window, "cmdSaveAs");
    record("/home/other.mp3");
}

TEST_F(RecorderWindow, TakesItsFormatFromTheDialogsFileType)
{
    store("OutputFolder", "/music/takes/");
    load();
    Recorder->unwatched([this] {
        EXPECT_CALL(dialog, ShowSave(usualSetup())).WillOnce(Return(answerOf("/home/tape.mp4", 6)));
        click(*window, "cmdSaveAs");
    });
    EXPECT_EQ(textOf(*window, "ComboCodec"), "MP4");
    FileDialogSetup again = usualSetup();
    again.filterIndex = 6;
    again.fileName = "/home/tape.mp4";
    EXPECT_CALL(dialog, ShowSave(again)).WillOnce(Return(answerOf("/home/tape.mp4", 6)));
    click(*window, "cmdSaveAs");
}

TEST_F(RecorderWindow, KeepsTheChoicesOfAFormatThatTheDialogDoesNotChange)
{
    load();
    EXPECT_CALL(Recorder->mp3, Bitrate(256000.0));
    pick(*window, "ComboBitrate", "256");
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answerOf("/home/tape.mp3", 2)));
    click(*window, "cmdSaveAs");
    EXPECT_EQ(textOf(*window, "ComboBitrate"), "256");
}

TEST_F(RecorderWindow, NamesFilesAutomaticallyWhereTheDialogIsCancelled)
{
    load();
    EXPECT_CALL(dialog, ShowSave).WillOnce([](const FileDialogSetup& setup) {
        return answerOf(setup.fileName, setup.filterIndex);
    });
    click(*window, "cmdSaveAs");
    record(automaticName());
}

TEST_F(RecorderWindow, KeepsTheNameThatWasChosenWhereTheDialogIsCancelledLater)
{
    load();
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answerOf("/home/tape.mp3", 2))).WillOnce([](const auto& setup) {
        return answerOf(setup.fileName, setup.filterIndex);
    });
    click(*window, "cmdSaveAs");
    click(*window, "cmdSaveAs");
    record("/home/tape.mp3");
}

TEST_F(RecorderWindow, KeepsItsFormatWhereTheDialogDoesNotTellAFileType)
{
    load();
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answerOf("/home/tape.wav", 0)));
    click(*window, "cmdSaveAs");
    EXPECT_EQ(textOf(*window, "ComboCodec"), "MP3");
    record("/home/tape.wav");
}

TEST_F(RecorderWindow, SplitsARecordingOfAChosenName)
{
    load();
    EXPECT_CALL(dialog, ShowSave).WillOnce(Return(answerOf("/home/tape.mp3", 2)));
    click(*window, "cmdSaveAs");
    {
        const InSequence order;
        EXPECT_CALL(*Recorder, EnableSilenceDetection(true));
        EXPECT_CALL(*Recorder, SilenceThreshold(3000));
        EXPECT_CALL(*Recorder, SilenceMinimumDuration(2000));
    }
    click(*window, "chkSilenceActions");
    record("/home/tape.mp3");
    EXPECT_CALL(*Recorder, ContinueRecordingToFile(QString("/home/tape14-03-30.mp3")));
    emit Recorder->SilenceDetected();
}

TEST_F(RecorderWindow, IsClosedWithoutAWordToTheEngineAlsoDuringARecording)
{
    load();
    window->show();
    record(automaticName());
    window->close();
    window.reset();
    EXPECT_EQ(stored("OutputFolder"), "none");
}

}  // namespace
