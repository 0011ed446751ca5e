#include "app/MainToolBar.h"

#include <QIcon>
#include <QToolButton>

MainToolBar::MainToolBar(QWidget* parent)
    : QToolBar(tr("Toolbar"), parent)
{
    setObjectName("toolBar");
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize({22, 22});

    tlbCmdOpen = add("tlbCmdOpen", "document-open", tr("Open audio file"), tr("Open audio file"));
    tlbCmdSaveAs = add("tlbCmdSaveAs", "document-save-as", tr("Save modified audio"), tr("Save modified audio"));
    tlbCmdClear = add("tlbCmdClear", "list-remove", tr("Remove selected item"), tr("Remove selected item"));
    addSeparator();
    tlbCmdRewind = add("tlbCmdRewind", "media-seek-backward", tr("5 seconds back"), tr("5 seconds back"));
    tlbCmdPlay = add("tlbCmdPlay", "media-playback-start", tr("Play"), {});
    tlbCmdPlayLoop = add("tlbCmdPlayLoop", "media-playlist-repeat", tr("Play loop"), tr("Play loop"));
    tlbCmdPause = add("tlbCmdPause", "media-playback-pause", tr("Pause"), tr("Pause"));
    tlbCmdStop = add("tlbCmdStop", "media-playback-stop", tr("Stop"), {});
    tlbCmdFForward = add("tlbCmdFForward", "media-seek-forward", tr("5 seconds forward"), tr("5 seconds forward"));
    addSeparator();
    tlbCmdLoopWinBack =
        add("tlbCmdLoopWinBack", "go-previous", tr("Loop window back"), tr("loop window 1 second back"));
    tlbCmdLoopWinForward =
        add("tlbCmdLoopWinForward", "go-next", tr("Loop window forward"), tr("loop window 1 second forward"));
    addSeparator();
    tlbCmdRecord =
        add("tlbCmdRecord", "media-record", tr("Record modified audio"), tr("Start recording modified audio"));
    tlbCmdMP3 = add("tlbCmdMP3", "larkspin-encode", tr("Encode recorded audio"), tr("Encode recording to MP3"));
    tlbCmdCDBurn = add("tlbCmdCDBurn", "tools-media-optical-burn", tr("Burn Audio CD"), tr("Burn Audio CD"));
    addSeparator();
    tlbCmdBPMCalc = add("tlbCmdBPMCalc", "larkspin-metronome", tr("Beats per minute calculator"),
                        tr("Beats per minute calculator"));
    tlbCmdKeyCalc =
        add("tlbCmdKeyCalc", "larkspin-transpose", tr("Transpose calculator"), tr("Transpose calculator"));
    tlbCmdVocalRemover =
        add("tlbCmdVocalRemover", "larkspin-vocal-remover", tr("Vocal remover"), tr("Remove vocals"));
    addSeparator();
    tlbCmdHelp = add("tlbCmdHelp", "help-contents", tr("Help"), {});
}

QToolButton* MainToolBar::add(const char* name, const char* icon, const QString& accessibleName,
                              const QString& toolTip)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(QIcon::fromTheme(icon));
    button->setIconSize(iconSize());
    button->setAccessibleName(accessibleName);
    button->setToolTip(toolTip);
    button->setAutoRaise(true);
    addWidget(button);
    return button;
}

#include "moc_MainToolBar.cpp"
