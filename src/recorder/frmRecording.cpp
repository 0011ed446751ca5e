#include "recorder/frmRecording.h"

#include "engines/RecorderEngine.h"
#include "recorder/AudioFormatPanel.h"
#include "recorder/RecordingNames.h"
#include "recorder/RecordingSession.h"
#include "recorder/SilencePanel.h"
#include "recorder/SoundCardPanel.h"
#include "support/Pictures.h"
#include "support/SettingsStore.h"
#include "support/controls/ComboBox.h"
#include "support/dialogs/BrowseForFolderModule.h"
#include "support/dialogs/CommonDialog.h"
#include "support/modSpecialFolders.h"
#include "ui_frmRecording.h"

#include <QApplication>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <utility>

namespace {

constexpr int pixels(int twips)
{
    constexpr int twipsPerPixel = 15;
    return (twips + twipsPerPixel / 2) / twipsPerPixel;
}

constexpr int collapsedHeight = pixels(2200);
constexpr int expandedHeight = pixels(4900);

constexpr int endOfBar = 32767;

// The file types are in step with the list of formats.
constexpr QLatin1StringView recordFilter(
    "WAV files (*.wav)|*.wav|"
    "MP3 files (*.mp3)|*.mp3|"
    "Ogg Vorbis (*.ogg)|*.ogg|"
    "Windows Media Audio (*.wma)|*.wma|"
    "Advanced Audio Coding (*.aac)|*.aac|"
    "MP4 files (*.mp4)|*.mp4");

}  // namespace

frmRecording::frmRecording(std::unique_ptr<RecorderEngine> recorder, const RecorderSurroundings& surroundings,
                           QWidget& mainWindow)
    : QWidget(&mainWindow, Qt::Window)
    , Recorder(std::move(recorder))
    , surroundings(surroundings)
    , mainWindow(mainWindow)
    , ui(std::make_unique<Ui::frmRecording>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    format = new AudioFormatPanel(*Recorder, this);
    soundCard = new SoundCardPanel(*Recorder, surroundings.msgBox, this);
    names = std::make_unique<RecordingNames>(*format, surroundings.now);
    session = new RecordingSession(*Recorder, *names, *ui->lblTime, surroundings.random, this);
    silence = new SilencePanel(*Recorder, *session, *names, surroundings.settings, this);
    placePanels();
    connectCommands();
    orderTabs();
    connect(Recorder.get(), &RecorderEngine::RecordingPeaks, this, &frmRecording::Recorder_RecordingPeaks);
    setHeight(collapsedHeight);
    move(mainWindow.x(), y());
    ui->cmdRecord->setFocus();
}

frmRecording::~frmRecording() = default;

void frmRecording::Load()
{
    placeUnderMainWindow();
    format->FillCodecCombo();
    soundCard->FillSoundCardCombos();
    names->setOutputFolder(
        surroundings.settings.GetSetting("Options", "OutputFolder", modSpecialFolders::recordingsFolder()));
    silence->readDetectionValue();
    names->chosenFile.clear();
    Recorder->VuMeter().StartVuMeter(0);
    leftBar = CreateInputMeter(*ui->PictureVuMeterLeft);
    rightBar = CreateInputMeter(*ui->PictureVuMeterRight);
    soundCard->passAntiClipping();
}

void frmRecording::placePanels()
{
    ui->display->setBackgroundRole(QPalette::Base);
    ui->display->setAutoFillBackground(true);
    ui->panels->addWidget(format);
    ui->panels->addWidget(soundCard, 1);
    ui->panels->addWidget(silence);
    for (QWidget* panel : std::initializer_list<QWidget*>{format, soundCard, silence})
        panel->hide();
}

void frmRecording::connectCommands()
{
    connect(ui->cmdRecord, &QToolButton::clicked, session, &RecordingSession::cmdRecord_Click);
    connect(ui->cmdStop, &QToolButton::clicked, session, &RecordingSession::cmdStop_Click);
    connect(ui->cmdPlay, &QToolButton::clicked, session, &RecordingSession::cmdPlay_Click);
    connect(ui->cmdSaveAs, &QToolButton::clicked, this, &frmRecording::cmdSaveAs_Click);
    connect(ui->cmdBrowseRecordOutput, &QToolButton::clicked, this, &frmRecording::cmdBrowseRecordOutput_Click);
    connect(ui->cmdExpand, &QToolButton::clicked, this, &frmRecording::cmdExpand_Click);
    connect(ui->cmdColapse, &QToolButton::clicked, this, &frmRecording::cmdColapse_Click);

    const auto hotKey = [this](const char* name, Qt::Key key, QToolButton* button) {
        auto* shortcut = new QShortcut(Qt::ALT | key, this);
        shortcut->setObjectName(name);
        shortcut->setAutoRepeat(false);  // a key that is held down starts one recording
        connect(shortcut, &QShortcut::activated, button, &QToolButton::click);
    };
    hotKey("htkRecord", Qt::Key_R, ui->cmdRecord);
    hotKey("htkStop", Qt::Key_S, ui->cmdStop);
    hotKey("htkPlay", Qt::Key_P, ui->cmdPlay);
}

// Along the row of commands, then through the panels below it. Inside a panel its form tells the order.
void frmRecording::orderTabs()
{
    QWidgetList order{ui->cmdRecord, ui->cmdStop,   ui->cmdPlay, ui->cmdSaveAs, ui->cmdBrowseRecordOutput,
                      ui->cmdExpand, ui->cmdColapse};
    for (QWidget* panel : std::initializer_list<QWidget*>{format, soundCard, silence}) {
        for (QWidget* next = panel->nextInFocusChain(); panel->isAncestorOf(next);
             next = next->nextInFocusChain()) {
            if (next->focusPolicy() & Qt::TabFocus)
                order << next;
        }
    }
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// Where the screen has no room under the main window, as low as it goes. The desktop will draw a frame like that of
// the main window.
void frmRecording::placeUnderMainWindow()
{
    const QRect above = mainWindow.frameGeometry();
    const QRect room = mainWindow.screen()->availableGeometry();
    const int frame = above.height() - mainWindow.height();
    const int lowest = std::max(room.bottom() + 1 - height() - frame, room.top());
    move(x(), std::min(above.bottom() + 1, lowest));
}

int frmRecording::CreateInputMeter(const QWidget& picture)
{
    // The window has not been seen: its layout has to be asked to find a place for what is in it.
    ui->rows->activate();
    ui->displayRow->invalidate();
    ui->displayRow->activate();
    const QPoint corner = picture.mapTo(this, QPoint(0, 0));

    RecorderBarMeters& meters = Recorder->BarMeters();
    const int bar =
        meters.CreateBar(static_cast<int>(winId()), corner.x(), corner.y(), picture.width(), picture.height());
    meters.SetBarRange(bar, 0, endOfBar);
    RecorderBarMeters::BarSettings settings{};
    meters.GetBarSettings(bar, &settings);
    settings[RecorderBarMeters::BarMode] = 1;
    settings[RecorderBarMeters::LevelColor] = 0xF0C108;
    settings[RecorderBarMeters::TopColor] = 0x0E3EE4;
    settings[RecorderBarMeters::EmptyColor] = 0xFFFFFF;
    meters.SetBarSettings(bar, &settings);
    return bar;
}

void frmRecording::Recorder_RecordingPeaks(short left, short right)
{
    Recorder->BarMeters().SetBarValue(leftBar, left);
    Recorder->BarMeters().SetBarValue(rightBar, right);
    if (session->isRecording())
        soundCard->lowerInputIfClipped(left, right);
}

// A dialog that is cancelled answers with the name that was chosen before.
void frmRecording::cmdSaveAs_Click()
{
    FileDialogSetup dlgRecord;
    dlgRecord.title = QStringLiteral("Record audio as ...");
    dlgRecord.fileName = names->chosenFile;
    dlgRecord.filter = recordFilter;
    dlgRecord.filterIndex = format->ComboCodec().listIndex() + 1;
    dlgRecord.initialFolder = names->outputFolder();
    dlgRecord.flags = FileDialogSetup::Explorer | FileDialogSetup::AllowMultiselect | FileDialogSetup::NoLongNames;
    dlgRecord.maxFileSize = 32000;
    dlgRecord.keepsTypedName = true;
    const FileDialogAnswer answer = surroundings.dialog.ShowSave(dlgRecord);
    if (answer.filterIndex > 0)
        format->ComboCodec().setListIndex(answer.filterIndex - 1);
    names->chosenFile = answer.fileName;
}

void frmRecording::cmdBrowseRecordOutput_Click()
{
    QString start = names->outputFolder();
    if (start.endsWith(u'/'))
        start.chop(1);
    const QString picked = surroundings.folderDialog.BrowseForFolder(*this, start);
    if (picked.isEmpty())
        return;
    names->setOutputFolder(picked);
    surroundings.settings.SaveSetting("Options", "OutputFolder", names->outputFolder());
}

// Qt would hand the keyboard of a control that goes to the next one: each of the two buttons hands it to the other.
void frmRecording::cmdExpand_Click()
{
    if (!ui->cmdColapse->isHidden())
        return;
    for (QWidget* panel : std::initializer_list<QWidget*>{format, soundCard, silence})
        panel->show();
    setHeight(expandedHeight);
    const QRect room = screen()->availableGeometry();
    if (frameGeometry().bottom() > room.bottom())
        move(x(), std::max(room.bottom() + 1 - frameGeometry().height(), room.top()));
    ui->cmdColapse->show();
    if (ui->cmdExpand->hasFocus())
        ui->cmdColapse->setFocus();
    ui->cmdExpand->hide();
}

void frmRecording::cmdColapse_Click()
{
    if (!ui->cmdExpand->isHidden())
        return;
    ui->cmdExpand->show();
    const QWidget* focused = focusWidget();
    for (QWidget* panel : std::initializer_list<QWidget*>{format, soundCard, silence}) {
        if (panel->isAncestorOf(focused))
            ui->cmdExpand->setFocus();
        panel->hide();
    }
    if (ui->cmdColapse->hasFocus())
        ui->cmdExpand->setFocus();
    ui->cmdColapse->hide();
    setHeight(collapsedHeight);
}

// Larger where the letters need it: a window is never smaller than its layout. One that fills the screen stays as
// it is.
void frmRecording::setHeight(int wanted)
{
    if (isMaximized() || isFullScreen())
        return;
    ui->rows->activate();  // what was shown or hidden just now counts
    resize(width(), wanted);
}

#include "moc_frmRecording.cpp"
