#include "app/frmMain.h"

#include "app/MainToolBar.h"
#include "engines/EditorEngine.h"
#include "engines/EngineSet.h"
#include "engines/PlayerEngine.h"
#include "playback/ConversionStatus.h"
#include "playback/PlaylistPanel.h"
#include "playback/PositionPanel.h"
#include "playback/TempoPitchPanel.h"
#include "playback/TrackLoader.h"
#include "playback/TransportPanel.h"
#include "support/controls/ListBox.h"
#include "ui_frmMain.h"

#include <QCloseEvent>
#include <QToolButton>

frmMain::frmMain(EngineSet& engines, CommonDialog& CommonDialog1, MsgBox& msgBox, const QString& applicationFolder,
                 QWidget* parent)
    : QMainWindow(parent)
    , applicationFolder(applicationFolder)
    , lists(msgBox)
    , SoundTouch(engines.createPlayer())
    , Editor(engines.createEditor())
    , ui(std::make_unique<Ui::frmMain>())
    , position(new PositionPanel(*SoundTouch, state, this))
    , tempoPitch(new TempoPitchPanel(*SoundTouch, this))
    , transport(new TransportPanel(*SoundTouch, state, *position, this))
    , playlist(new PlaylistPanel(*SoundTouch, state, *position, CommonDialog1, this))
    , toolBar(new MainToolBar(this))
    , loader(std::make_unique<TrackLoader>(*SoundTouch, state, *position, *tempoPitch, msgBox))
{
    ui->setupUi(this);
    conversionStatus = std::make_unique<ConversionStatus>(*SoundTouch, *ui->lblWavExportStatus, msgBox);
    placePanels();
    connectPanels();
    connectToolBar();
    orderTabs();
}

frmMain::~frmMain() = default;

void frmMain::Load()
{
    const auto owner = static_cast<int>(winId());
    SoundTouch->InitPlayers(1, owner, 0, 0, 0, 0);
    SoundTouch->VuMeter().SetVuMeterMode(0, 0);
    SoundTouch->VuMeter().EnableVuMeter(0, 1);
    if (Editor)
        Editor->InitEditor(owner);
    lists.LoadList(playlist->lstAudio(), listFile());
    lists.LoadList(playlist->lstPath(), pathFile());
}

void frmMain::Unload()
{
    lists.SaveList(playlist->lstAudio(), listFile());
    lists.SaveList(playlist->lstPath(), pathFile());
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
    ui->leftColumnRows->addWidget(playlist, 1);

    ui->rightColumnRows->addWidget(position, 3);
    ui->rightColumnRows->addWidget(transport, 1);
    ui->rightColumnRows->addWidget(tempoPitch, 3);

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
    addToolBar(toolBar);
    const auto run = [](QToolButton* button, auto* panel, auto command) {
        connect(button, &QToolButton::clicked, panel, command);
    };
    run(toolBar->tlbCmdOpen, playlist, &PlaylistPanel::cmdOpen_Click);
    run(toolBar->tlbCmdClear, playlist, &PlaylistPanel::tlbCmdClear_Click);
    run(toolBar->tlbCmdClearAll, playlist, &PlaylistPanel::tlbCmdClearAll_Click);
    run(toolBar->tlbCmdRewind, transport, &TransportPanel::cmdRewind_Click);
    run(toolBar->tlbCmdPlay, transport, &TransportPanel::cmdPlay_Click);
    run(toolBar->tlbCmdPause, transport, &TransportPanel::cmdPause_Click);
    run(toolBar->tlbCmdStop, transport, &TransportPanel::cmdStop_Click);
    run(toolBar->tlbCmdFForward, transport, &TransportPanel::cmdFForward_Click);
    run(toolBar->tlbCmdLoopWinBack, position, &PositionPanel::cmdLoopWindowBack_Click);
    run(toolBar->tlbCmdLoopWinForward, position, &PositionPanel::cmdLoopWindowForward_Click);
}

// The Tab key walks as the eye does, down the left column and then the right one; the toolbar, whose commands the
// panels repeat, comes last. Inside a panel its form tells the order.
void frmMain::orderTabs()
{
    QWidgetList order;
    for (QWidget* panel : std::initializer_list<QWidget*>{playlist, position, transport, tempoPitch, toolBar}) {
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
    loader->SetSoundTouchAudio();
}

QString frmMain::listFile() const
{
    return applicationFolder + QStringLiteral("/list.pms");
}

QString frmMain::pathFile() const
{
    return applicationFolder + QStringLiteral("/path.pms");
}
