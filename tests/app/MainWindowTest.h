#pragma once

#include "app/frmMain.h"

#include "engines/MockEditorEngine.h"
#include "engines/MockEngineSet.h"
#include "engines/MockOutputMixer.h"
#include "engines/MockPlayerEngine.h"
#include "playback/PanelTest.h"
#include "support/MockShell.h"
#include "support/SettingsStore.h"
#include "support/controls/ListBox.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

/// The whole main window round strict engines, dialogs and desktop, with files and settings of its own.
class MainWindow : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    ::testing::StrictMock<MockMsgBox> msgBox;
    ::testing::StrictMock<MockCommonDialog> dialog;
    ::testing::StrictMock<MockBrowseForFolder> folderDialog;
    ::testing::StrictMock<MockEngineSet> engines;
    ::testing::StrictMock<MockShell> shell;
    QSettings store{folder.filePath("settings.conf"), QSettings::IniFormat};
    SettingsStore settings{store};
    ::testing::StrictMock<MockVuMeter> meter;
    ::testing::StrictMock<MockPlayerEngine>* player = nullptr;
    ::testing::StrictMock<MockEditorEngine>* editor = nullptr;
    std::unique_ptr<frmMain> window;

    enum class EditorIs
    {
        There,
        Missing,
    };

    void make(EditorIs editorIs = EditorIs::There)
    {
        auto ownedPlayer = std::make_unique<::testing::StrictMock<MockPlayerEngine>>();
        player = ownedPlayer.get();
        EXPECT_CALL(engines, createPlayer).WillOnce(::testing::Return(::testing::ByMove(std::move(ownedPlayer))));
        std::unique_ptr<::testing::StrictMock<MockEditorEngine>> ownedEditor;
        if (editorIs == EditorIs::There)
            ownedEditor = std::make_unique<::testing::StrictMock<MockEditorEngine>>();
        editor = ownedEditor.get();
        EXPECT_CALL(engines, createEditor).WillOnce(::testing::Return(::testing::ByMove(std::move(ownedEditor))));
        EXPECT_CALL(*player, VuMeter).WillRepeatedly(::testing::ReturnRef(meter));
        window = std::make_unique<frmMain>(Surroundings{engines, dialog, folderDialog, msgBox, settings, shell,
                                                        folder.path(), folder.filePath("help"),
                                                        "https://maker.example/", "https://maker.example/support"});
    }

    void expectEngineStart()
    {
        const auto handle = static_cast<int>(window->winId());
        EXPECT_CALL(*player, InitPlayers(1, handle, 0, 0, 0, 0));
        EXPECT_CALL(meter, SetVuMeterMode(0, 0));
        EXPECT_CALL(meter, EnableVuMeter(0, 1));
        if (editor)
            EXPECT_CALL(*editor, InitEditor(handle));
    }

    /// A mixer whose speakers stand at half their volume.
    void expectMixer()
    {
        auto mixer = std::make_unique<::testing::StrictMock<MockOutputMixer>>();
        auto& itsMixer = *mixer;
        EXPECT_CALL(engines, createOutputMixer).WillOnce(::testing::Return(::testing::ByMove(std::move(mixer))));
        EXPECT_CALL(itsMixer, mixerOpen).WillOnce(::testing::Return(0));
        EXPECT_CALL(itsMixer, mixerGetLineControls).WillOnce(::testing::Return(true));
        EXPECT_CALL(itsMixer, mixerGetControlDetails).WillOnce(::testing::Return(32767));
        EXPECT_CALL(*player, SetBalance(0, 0));  // a change of the system's volume sends the balance again
    }

    void expectEqualizer()
    {
        EXPECT_CALL(*player, ResetEqualizer(0));
        EXPECT_CALL(*player, GetEqualizerBandCount(0)).WillOnce(::testing::Return(0));
        EXPECT_CALL(*player, EnableEqualizer(true));
        for (const float hertz : {80.F, 170.F, 310.F, 600.F, 1000.F, 3000.F, 6000.F, 12000.F, 14000.F, 16000.F})
            EXPECT_CALL(*player, AddEqualizerBand(0, hertz, 12.F, 0.F));
    }

    void load()
    {
        {
            const ::testing::InSequence order;
            expectEngineStart();
            expectMixer();
            expectEqualizer();
        }
        window->Load();
    }

    void writeLists(const QByteArray& labels, const QByteArray& paths) const
    {
        write("list.pms", labels);
        write("path.pms", paths);
    }

    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray read(const QString& name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    /// A window with one real file in its playlist.
    void makeWithAFile()
    {
        write("song.wav", "");
        writeLists("song (Wav file)\r\n", folder.filePath("song.wav").toUtf8() + "\r\n");
        make();
        load();
    }

    void pickTheFile()
    {
        EXPECT_CALL(*player, LoadSound(0, folder.filePath("song.wav"))).WillOnce(::testing::Return(0));
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(::testing::Return(60000));
        EXPECT_CALL(*player, GetPosition(0)).WillOnce(::testing::Return(0));
        list().setListIndex(0);
    }

    ListBox& list() const { return control<ListBox>(*window, "lstAudio"); }
    ListBox& paths() const { return control<ListBox>(*window, "lstPath"); }
    void trigger(const char* action) const { window->findChild<QAction*>(action)->trigger(); }

    /// As the user finds it, with nothing in the playlist.
    void start()
    {
        writeLists("", "");
        make();
        load();
        window->show();
    }

    /// Those of this name that can be seen.
    static QWidgetList openWindows(const char* name)
    {
        QWidgetList open;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->objectName() == name && top->isVisible())
                open << top;
        }
        return open;
    }
};
