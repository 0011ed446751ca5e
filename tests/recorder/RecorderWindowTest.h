#pragma once

#include "recorder/RecorderTest.h"
#include "recorder/frmRecording.h"
#include "support/MockDialogs.h"
#include "support/SettingsStore.h"

#include <QSettings>
#include <QTemporaryDir>

/// The recorder's window round strict mocks, under a main window, with settings and a clock of its own.
class RecorderWindow : public ::testing::Test
{
protected:
    RecorderWindow()
    {
        auto owned = std::make_unique<StrictRecorder>();
        Recorder = owned.get();
        window = std::make_unique<frmRecording>(std::move(owned),
                                                RecorderSurroundings{dialog, folderDialog, msgBox, settings,
                                                                     [this] { return now; }, [] { return 0.5; }},
                                                mainWindow);
    }

    /// One device with one line at level 40, read twice. To be called within a sequence.
    void expectSoundCard()
    {
        using ::testing::Return;
        EXPECT_CALL(*Recorder, InitRecorder(static_cast<int>(window->winId()), 0, -1));
        EXPECT_CALL(*Recorder, GetRecordingDeviceCount).WillOnce(Return(1));
        EXPECT_CALL(*Recorder, GetRecordingDeviceName(0)).WillOnce(Return("Built-in"));
        for (const short before : {short{-1}, short{0}}) {
            EXPECT_CALL(*Recorder, OpenRecordingDevice(0)).WillOnce(Return(0));
            EXPECT_CALL(*Recorder, SelectRecordingInput(0, before));
            EXPECT_CALL(*Recorder, GetRecordingInputCount(0)).WillOnce(Return(1));
            EXPECT_CALL(*Recorder, GetRecordingInputName(0, 0)).WillOnce(Return("Microphone"));
            EXPECT_CALL(*Recorder, GetCurrentRecordingInput(0)).WillOnce(Return(0));
            EXPECT_CALL(*Recorder, SelectRecordingInput(0, 0));
            EXPECT_CALL(*Recorder, GetRecordingInputVolume(0, 0)).WillOnce(Return(40));
            if (before < 0)
                EXPECT_CALL(*Recorder, SetRecordingInputVolume(0, 0, 40));
            EXPECT_CALL(*Recorder, GetRecordingInputVolume(0, 0)).WillOnce(Return(40));
            EXPECT_CALL(*Recorder, SelectRecordingInput(0, 0));
            EXPECT_CALL(*Recorder, GetRecordingInputVolume(0, 0)).WillOnce(Return(40));
        }
    }

    /// To be called within a sequence.
    void expectMeter(int handle)
    {
        using ::testing::_;
        EXPECT_CALL(Recorder->bars, CreateBar(static_cast<int>(window->winId()), _, _, _, _))
            .WillOnce([this, handle](int, int left, int top, int width, int height) {
                placesOfBars << QRect(left, top, width, height);
                return handle;
            });
        EXPECT_CALL(Recorder->bars, SetBarRange(handle, 0, 32767));
        EXPECT_CALL(Recorder->bars, GetBarSettings(handle, _))
            .WillOnce(
                [](int, RecorderBarMeters::BarSettings* settings) { *settings = {7, 11, 12, 13, 14, 15, 16}; });
        EXPECT_CALL(Recorder->bars, SetBarSettings(handle, _))
            .WillOnce([](int, const RecorderBarMeters::BarSettings* settings) {
                EXPECT_EQ(*settings, (RecorderBarMeters::BarSettings{1, 11, 12, 0xF0C108, 0x0E3EE4, 0xFFFFFF, 16}));
            });
    }

    void expectBehindTheSoundCard()
    {
        EXPECT_CALL(Recorder->meter, StartVuMeter(0));
        expectMeter(leftBar);
        expectMeter(rightBar);
        EXPECT_CALL(*Recorder, EnableAntiClipping(1));
    }

    void load()
    {
        {
            const ::testing::InSequence order;
            Recorder->expectMp3();
            expectSoundCard();
            expectBehindTheSoundCard();
        }
        window->Load();
    }

    void record(const QString& file)
    {
        EXPECT_CALL(*Recorder, StartRecordingToFile(file));
        click(*window, "cmdRecord");
    }

    QString stored(const char* key) const { return settings.GetSetting("Options", key, "none"); }
    void store(const char* key, const QString& value) { settings.SaveSetting("Options", key, value); }

    static constexpr int leftBar = 3;
    static constexpr int rightBar = 8;

    QTemporaryDir folder;
    QSettings backing{folder.filePath("Larkspin.conf"), QSettings::IniFormat};
    SettingsStore settings{backing};
    ::testing::StrictMock<MockCommonDialog> dialog;
    ::testing::StrictMock<MockBrowseForFolder> folderDialog;
    ::testing::StrictMock<MockMsgBox> msgBox;
    QDateTime now{QDate(2007, 3, 5), QTime(14, 3, 37)};
    QWidget mainWindow;
    StrictRecorder* Recorder = nullptr;
    std::unique_ptr<frmRecording> window;
    QList<QRect> placesOfBars;
};
