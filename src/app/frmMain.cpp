#include "app/frmMain.h"

#include "app/IndependentWindows.h"
#include "app/KeypadAccelerators.h"
#include "app/MainMenu.h"
#include "app/MainToolBar.h"
#include "app/ParkedButtons.h"
#include "calculators/frmBPMCalculator.h"
#include "calculators/frmKeyCalc.h"
#include "engines/EditorEngine.h"
#include "engines/EngineSet.h"
#include "engines/OutputMixer.h"
#include "engines/PlayerEngine.h"
#include "export/SaveAs.h"
#include "playback/ConversionStatus.h"
#include "playback/EqualizerPanel.h"
#include "playback/LevelPanel.h"
#include "playback/MarksPanel.h"
#include "playback/MetersPanel.h"
#include "playback/PlaylistPanel.h"
#include "playback/PositionPanel.h"
#include "playback/ReadMasterVolume.h"
#include "playback/TempoPitchPanel.h"
#include "playback/TrackLoader.h"
#include "playback/TransportPanel.h"
#include "support/Pictures.h"
#include "support/Shell.h"
#include "support/controls/ListBox.h"
#include "support/frmAbout.h"
#include "support/frmSplash.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int twipsPerPixel = 15;
constexpr int collapsedHeight = 8010 / twipsPerPixel;
constexpr int expandedHeight = 10380 / twipsPerPixel;

}  // namespace

frmMain::frmMain(const Surroundings& surroundings, QWidget* parent)
    : QMainWindow(parent)
    , surroundings(surroundings)
    , help(surroundings.shell, surroundings.helpFolder)
    , lists(surroundings.msgBox)
    , SoundTouch(surroundings.engines.createPlayer())
    , Editor(surroundings.engines.createEditor())
    , ui(std::make_unique<Ui::frmMain>())
    , position(new PositionPanel(*SoundTouch, state, this))
    , tempoPitch(new TempoPitchPanel(*SoundTouch, this))
    , transport(new TransportPanel(*SoundTouch, state, *position, this))
    , playlist(new PlaylistPanel(*SoundTouch, state, *position, surroundings.dialog, this))
    , marks(new MarksPanel(*SoundTouch, *position, surroundings.msgBox, this))
    , level(new LevelPanel(*SoundTouch, this))
    , meters(new MetersPanel(*SoundTouch, this))
    , equalizer(new EqualizerPanel(*SoundTouch, surroundings.dialog, surroundings.msgBox, this))
    , toolBar(new MainToolBar(this))
    , parked(new ParkedButtons(this))
    , keypad(std::make_unique<KeypadAccelerators>(*this))
    , menu(new MainMenu(*keypad, this))
    , tmrTip(new QTimer(this))
    , independent(std::make_unique<IndependentWindows>(*this, surroundings, help, windows))
    , loader(std::make_unique<TrackLoader>(*SoundTouch, state, *position, *tempoPitch, surroundings.msgBox))
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    setMenuBar(menu);
    addToolBar(toolBar);
    conversionStatus =
        std::make_unique<ConversionStatus>(*SoundTouch, *ui->lblWavExportStatus, surroundings.msgBox);
    placePanels();
    connectPanels();
    connectToolBar();
    connectMarkKeys();
    connectCalculators();
    if (Editor)
        connectSaveAs();
    orderTabs();

    tmrTip->setObjectName("tmrTip");
    tmrTip->setInterval(1000);
    connect(tmrTip, &QTimer::timeout, this, &frmMain::tmrTip_Timer);
    setHeight(collapsedHeight);
}

frmMain::~frmMain() = default;

void frmMain::Load()
{
    frmSplash splash(this);
    splash.show();

    const auto owner = static_cast<int>(winId());
    SoundTouch->InitPlayers(1, owner, 0, 0, 0, 0);
    meters->startMeters();
    if (Editor)
        Editor->InitEditor(owner);
    lists.LoadList(playlist->lstAudio(), listFile());
    lists.LoadList(playlist->lstPath(), pathFile());
    menu->BuildMenu(*this);
    connectMenu();
    const std::unique_ptr<OutputMixer> mixer = surroundings.engines.createOutputMixer();
    ReadMasterVolume(*mixer, level->sldVolume(), surroundings.msgBox);
    equalizer->EnableEqualizerPanel();
    level->FadingVisible();
    ui->cmdExpand->show();
    setHeight(collapsedHeight);  // the menu and the fades take their room from now on

    splash.end();
    tmrTip->start();
}

void frmMain::Unload()
{
    lists.SaveList(playlist->lstAudio(), listFile());
    lists.SaveList(playlist->lstPath(), pathFile());
    if (!windows.closeAll())
        SoundTouch->CloseSound(0);  // which else would go on as long as the window that stays
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!unloaded) {
        unloaded = true;
        Unload();
    }
    event->accept();
}

void frmMain::placePanels()
{
    ui->leftColumnRows->addWidget(playlist, 3);
    ui->leftColumnRows->addWidget(marks, 2);

    position->placeBesideTime(meters);
    ui->rightColumnRows->addWidget(position, 3);
    ui->rightColumnRows->addWidget(transport, 1);
    ui->rightColumnRows->addWidget(tempoPitch, 3);
    ui->rightColumnRows->addWidget(level);

    ui->rows->insertWidget(ui->rows->indexOf(ui->status), equalizer);
    equalizer->hide();

    ui->columns->setStretchFactor(0, 3);
    ui->columns->setStretchFactor(1, 7);
    ui->columns->setSizes({290, 626});
}

void frmMain::connectPanels()
{
    connect(playlist, &PlaylistPanel::itemPicked, this, &frmMain::lstAudio_Click);
    connect(playlist, &PlaylistPanel::playWanted, transport, &TransportPanel::cmdPlay_Click);
    connect(playlist, &PlaylistPanel::playLoopWanted, transport, &TransportPanel::cmdPlayLoop_Click);
}

void frmMain::connectToolBar()
{
    const auto run = [](QToolButton* button, auto* receiver, auto command) {
        connect(button, &QToolButton::clicked, receiver, command);
    };
    run(toolBar->tlbCmdOpen, playlist, &PlaylistPanel::cmdOpen_Click);
    run(toolBar->tlbCmdClear, playlist, &PlaylistPanel::tlbCmdClear_Click);
    run(parked->tlbCmdClearAll, playlist, &PlaylistPanel::tlbCmdClearAll_Click);
    run(toolBar->tlbCmdRewind, transport, &TransportPanel::cmdRewind_Click);
    run(toolBar->tlbCmdPlay, transport, &TransportPanel::cmdPlay_Click);
    run(toolBar->tlbCmdPause, transport, &TransportPanel::cmdPause_Click);
    run(toolBar->tlbCmdStop, transport, &TransportPanel::cmdStop_Click);
    run(toolBar->tlbCmdFForward, transport, &TransportPanel::cmdFForward_Click);
    run(toolBar->tlbCmdLoopWinBack, parked->cmdLoopWindowBack, &QToolButton::click);
    run(toolBar->tlbCmdLoopWinForward, parked->cmdLoopWindowForward, &QToolButton::click);
    run(parked->cmdLoopWindowBack, position, &PositionPanel::cmdLoopWindowBack_Click);
    run(parked->cmdLoopWindowForward, position, &PositionPanel::cmdLoopWindowForward_Click);
    run(toolBar->tlbCmdRecord, independent.get(), &IndependentWindows::openRecorder);
    run(toolBar->tlbCmdMP3, independent.get(), &IndependentWindows::execMp3Encoder);
    run(toolBar->tlbCmdCDBurn, independent.get(), &IndependentWindows::showDiscWriter);
    run(toolBar->tlbCmdVocalRemover, independent.get(), &IndependentWindows::execVocalRemover);
    run(toolBar->tlbCmdHelp, this, [this] { help.open(); });

    run(ui->cmdExpand, this, &frmMain::cmdExpand_Click);
    run(ui->cmdColapse, this, &frmMain::cmdColapse_Click);
    run(ui->cmdOrvenda, this, [this] { surroundings.shell.ShellExecute(surroundings.webSite); });
}

// The entries that are not a press of a button.
void frmMain::connectMenu()
{
    const auto run = [this](const char* key, auto command) {
        connect(menu->entry(key), &QAction::triggered, this, command);
    };
    run("mnuExit", [this] { close(); });
    run("mnuVocalRemover", [this] { independent->showVocalRemover(); });
    run("mnuAbout", [this] { openAbout(); });
    run("mnuOnlineSupport", [this] { surroundings.shell.ShellExecute(surroundings.supportPage); });
}

void frmMain::connectMarkKeys()
{
    const auto run = [this](Qt::Key key, auto command) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setAutoRepeat(false);  // one mark for one press
        connect(shortcut, &QShortcut::activated, marks, command);
    };
    run(Qt::Key_F5, &MarksPanel::cmdAddMark_Click);
    run(Qt::Key_F6, &MarksPanel::GoToPreviousMark);
    run(Qt::Key_F7, &MarksPanel::RepeatCurrentMark);
    run(Qt::Key_F8, &MarksPanel::GoToNextMark);
}

void frmMain::connectCalculators()
{
    connect(tempoPitch, &TempoPitchPanel::bpmCalculatorWanted, this, &frmMain::openBpmCalculator);
    connect(tempoPitch, &TempoPitchPanel::keyCalculatorWanted, this, &frmMain::openKeyCalculator);
    connect(toolBar->tlbCmdBPMCalc, &QToolButton::clicked, this, &frmMain::openBpmCalculator);
    connect(toolBar->tlbCmdKeyCalc, &QToolButton::clicked, this, &frmMain::openKeyCalculator);
}

void frmMain::connectSaveAs()
{
    const ChangedTrack track{state.CurrentAudioPath, tempoPitch->sldTempo(), tempoPitch->sldPitchSemi(),
                             tempoPitch->sldPitchGrad(), tempoPitch->sldSpeed()};
    saveAs =
        std::make_unique<SaveAs>(*Editor, track, *ui->lblWavExportStatus, surroundings.dialog, surroundings.msgBox);
    connect(toolBar->tlbCmdSaveAs, &QToolButton::clicked, saveAs.get(), &SaveAs::RecordSoundTouch);
}

// The Tab key walks as the eye does, down the left column, down the right one, and on to what lies below both; the
// toolbar, whose commands the panels repeat, comes last. Inside a panel its form tells the order.
void frmMain::orderTabs()
{
    QWidgetList order;
    for (QWidget* panel : std::initializer_list<QWidget*>{playlist, marks, position, transport, tempoPitch, level,
                                                          equalizer, ui->status, toolBar}) {
        for (QWidget* next = panel->nextInFocusChain(); panel->isAncestorOf(next);
             next = next->nextInFocusChain()) {
            if (next->focusPolicy() & Qt::TabFocus)
                order << next;
        }
    }
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void frmMain::lstAudio_Click()
{
    marks->cmdClearMark_Click();
    loader->SetSoundTouchAudio();
}

// The timer goes on while the tip is read, and is off behind that.
void frmMain::tmrTip_Timer()
{
    if (showingTip)
        return;
    showingTip = true;
    if (TipOfDay::wantedAtStartup(surroundings.settings)) {
        TipOfDay tip(surroundings.settings, tipPlace, this);
        windows.exec(tip);
    }
    tmrTip->stop();
}

void frmMain::openKeyCalculator()
{
    frmKeyCalc calculator(tempoPitch->sldPitchSemi(), this);
    windows.exec(calculator);
}

void frmMain::openBpmCalculator()
{
    windows.show<frmBPMCalculator>(
        [this] { return new frmBPMCalculator(tempoPitch->sldTempo(), surroundings.msgBox, this); });
}

void frmMain::openAbout()
{
    frmAbout about(surroundings.msgBox, this);
    windows.exec(about);
}

// Qt would hand the keyboard of a control that goes to the next one, which is another command: each of the two
// buttons hands it to the other.
void frmMain::cmdExpand_Click()
{
    if (!ui->cmdColapse->isHidden())
        return;
    ui->cmdColapse->show();
    if (ui->cmdExpand->hasFocus())
        ui->cmdColapse->setFocus();
    ui->cmdExpand->hide();
    equalizer->show();
    setHeight(expandedHeight);
}

void frmMain::cmdColapse_Click()
{
    if (!ui->cmdExpand->isHidden())
        return;
    ui->cmdExpand->show();
    if (ui->cmdColapse->hasFocus() || equalizer->isAncestorOf(QApplication::focusWidget()))
        ui->cmdExpand->setFocus();
    ui->cmdColapse->hide();
    equalizer->hide();
    setHeight(collapsedHeight);
}

// The window is as high as it should be, larger where its letters need that, and no larger than the screen: on a
// small one its content scrolls. One that fills the screen stays as it is.
void frmMain::setHeight(int wanted)
{
    if (isMaximized() || isFullScreen())
        return;
    ui->columns->updateGeometry();  // unseen, a splitter does not tell by itself what was put into it
    ui->rows->activate();           // what was shown or hidden just now counts
    const QSize bars(0, menu->sizeHint().height() + toolBar->sizeHint().height());
    const QSize needed = ui->content->minimumSizeHint() + bars;
    resize(QSize(width(), wanted).expandedTo(needed).boundedTo(screen()->availableSize()));
}

QString frmMain::listFile() const
{
    return surroundings.applicationFolder + QStringLiteral("/list.pms");
}

QString frmMain::pathFile() const
{
    return surroundings.applicationFolder + QStringLiteral("/path.pms");
}

#include "moc_frmMain.cpp"
