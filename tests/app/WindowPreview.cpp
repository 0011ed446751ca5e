#include "app/FakeEngineSet.h"
#include "app/frmMain.h"
#include "encoding/TrackListPanel.h"
#include "support/DesktopShell.h"
#include "support/IconTheme.h"
#include "support/SettingsStore.h"
#include "support/controls/ListBox.h"
#include "support/controls/Slider.h"
#include "support/dialogs/QtBrowseForFolder.h"
#include "support/dialogs/QtCommonDialog.h"
#include "support/dialogs/QtMsgBox.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QSettings>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(49, 54, 59), QColor(42, 46, 50));
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::AlternateBase, QColor(35, 38, 41));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    palette.setColor(QPalette::HighlightedText, QColor(252, 252, 252));
    return palette;
}

// Other languages take half as much room again.
void lengthenCaptions(QWidget& window)
{
    const auto longer = [](const QString& text) { return text + QString(text.size() / 2, u'n'); };
    for (QLabel* label : window.findChildren<QLabel*>()) {
        if (label->text().contains(u' ') || label->text().endsWith(u"Tempo"))
            label->setText(longer(label->text()));
    }
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>())
        button->setText(button->text().isEmpty() ? QString() : longer(button->text()));
}

void writeLists(const QTemporaryDir& folder, const QString& sound, int count)
{
    const char* const labels[] = {"Autumn Leaves (MP3 file)", "Blue Bossa - backing track. (FLAC file)",
                                  "Czardas (Wav file)", "Etude No. 3 (Ogg Vorbis file)", "Lesson 12 (ALAC file)"};
    QFile list(folder.filePath("list.pms"));
    QFile path(folder.filePath("path.pms"));
    list.open(QIODevice::WriteOnly);
    path.open(QIODevice::WriteOnly);
    for (int i = 0; i < count; ++i) {
        list.write(QByteArray(labels[i]) + "\r\n");
        path.write(sound.toUtf8() + "\r\n");
    }
}

}  // namespace

// The recorder's window, expanded if that is wished for, and recording.
void showRecorder(QWidget& main, const QStringList& wishes)
{
    main.findChild<QAbstractButton*>("tlbCmdRecord")->click();
    auto* recorder = main.findChild<QWidget*>("frmRecording");
    if (wishes.contains("expanded"))
        recorder->findChild<QAbstractButton*>("cmdExpand")->click();
    recorder->findChild<QAbstractButton*>("cmdRecord")->click();
    if (wishes.contains("long"))
        lengthenCaptions(*recorder);
}

// The vocal remover's window with a source, and in the middle of a run.
void showVocalRemover(QWidget& main, const QString& sound, const QStringList& wishes)
{
    main.findChild<QAction*>("mnuVocalRemover")->trigger();
    auto* remover = main.findChild<QWidget*>("frmVocalRemover");
    if (!wishes.contains("empty")) {
        remover->findChild<QLineEdit*>("txtInputAudio")->setText(sound);
        remover->findChild<QLineEdit*>("txtOutputAudio")->setText(sound + "NoVocal.mp3");
        QMetaObject::invokeMethod(remover->findChild<QWidget*>("FilesPanel"), "inputChosen");
        remover->findChild<Slider*>("sldVocalPan")->setValue(-30);
        remover->findChild<Slider*>("sldGain")->setValue(120);
    }
    if (wishes.contains("long"))
        lengthenCaptions(*remover);
}

// The MP3 encoder's window in the middle of an encoding, with its options if they are wished for. It blocks.
void showMp3Encoder(QWidget& main, const QStringList& wishes)
{
    QTimer::singleShot(300, &main, [&main, wishes] {
        auto* encoder = main.findChild<QWidget*>("frmMP3Options");
        if (!wishes.contains("empty")) {
            encoder->findChild<QLineEdit*>("Text3")->setText("/home/anna/Documents/Larkspin Recordings/take 3.wav");
            encoder->findChild<QLineEdit*>("Text4")->setText("/home/anna/Documents/Larkspin Recordings/take 3.mp3");
            encoder->findChild<QAbstractButton*>("cmdEncode")->setEnabled(true);
            encoder->findChild<QAbstractButton*>("cmdEncode")->click();
        }
        if (wishes.contains("long"))
            lengthenCaptions(*encoder);
        if (wishes.contains("expanded"))
            encoder->findChild<QAbstractButton*>("cmdOptions")->click();
    });
    main.findChild<QAction*>("mnuMP3")->trigger();
}

// The disc writer's window with tracks, and in the middle of a write if that is wished for.
void showDiscWriter(QWidget& main, const QStringList& wishes)
{
    main.findChild<QAbstractButton*>("tlbCmdCDBurn")->click();
    auto* writer = main.findChild<QWidget*>("frmAudioCDBurn");
    if (!wishes.contains("empty"))
        writer->findChild<TrackListPanel*>()->RefreshTrackList();
    if (wishes.contains("long"))
        lengthenCaptions(*writer);
    if (wishes.contains("writing"))
        writer->findChild<QAbstractButton*>("cmdWriteDisc")->click();
}

// Shows the main window with a player that only keeps time, to look at it: [dark] [fusion] [long] [empty] [marks]
// [expanded]; with [recorder] that window under it, collapsed or expanded as it is, or with [tip] what comes before
// that; with [vocals] the vocal remover's window; with [mp3] the MP3 encoder's, with its options if [expanded];
// with [disc] the disc writer's, [writing] or not.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Larkspin");
    const QStringList wishes = QApplication::arguments();
    if (wishes.contains("fusion") || wishes.contains("dark"))
        QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (wishes.contains("dark"))
        QApplication::setPalette(darkPalette());
    const IconTheme icons;

    FakeEngineSet engines;
    QtCommonDialog dialog;
    QtBrowseForFolder folderDialog;
    QtMsgBox msgBox;
    const QTemporaryDir folder;
    QTemporaryFile sound;
    sound.open();
    QSettings store(folder.filePath("settings.conf"), QSettings::IniFormat);
    SettingsStore settings(store);
    DesktopShell shell;
    frmMain window({engines, dialog, folderDialog, msgBox, settings, shell, folder.path(), folder.path(), {}, {}});
    writeLists(folder, sound.fileName(), wishes.contains("empty") ? 0 : 5);
    window.Load();
    if (!wishes.contains("empty")) {
        window.findChild<ListBox*>("lstAudio")->setListIndex(1);
        window.findChild<Slider*>("sldBeginLoop")->setValue(42);
        window.findChild<Slider*>("sldEndLoop")->setValue(101);
        window.findChild<Slider*>("sldTempo")->setValue(-20);
        window.findChild<Slider*>("sldPitchSemi")->setValue(2);
        window.findChild<QAbstractButton*>("cmdPlayLoop")->click();
    }
    if (wishes.contains("marks")) {
        for (const char* time : {"00:12:70", "00:48:15", "01:20:40"}) {
            window.findChild<QWidget*>("lblTime")->setProperty("text", time);
            window.findChild<QAbstractButton*>("cmdAddMark")->click();
        }
    }
    if (wishes.contains("expanded") && !wishes.contains("recorder") && !wishes.contains("mp3"))
        window.findChild<QAbstractButton*>("cmdExpand")->click();
    if (wishes.contains("long"))
        lengthenCaptions(window);
    window.show();
    settings.SaveSetting("Options", "Show Tips at Startup", "0");
    settings.SaveSetting("Options", "Show RecordingTip", wishes.contains("tip") ? "1" : "0");
    QTimer::singleShot(500, &window, [&] {  // once the desktop has given the window its place
        if (wishes.contains("tip"))
            window.findChild<QAbstractButton*>("tlbCmdRecord")->click();
        if (wishes.contains("recorder"))
            showRecorder(window, wishes);
        if (wishes.contains("vocals"))
            showVocalRemover(window, sound.fileName(), wishes);
        if (wishes.contains("mp3"))
            showMp3Encoder(window, wishes);
        if (wishes.contains("disc"))
            showDiscWriter(window, wishes);
    });
    return QApplication::exec();
}
