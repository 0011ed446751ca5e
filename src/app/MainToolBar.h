#pragma once

#include <QToolBar>

class QToolButton;

/// The commands of the main window as a row of pictures. The window connects each button to the command's routine.
class MainToolBar : public QToolBar
{
    Q_OBJECT

public:
    explicit MainToolBar(QWidget* parent = nullptr);

    QToolButton* tlbCmdOpen;
    QToolButton* tlbCmdSaveAs;
    QToolButton* tlbCmdClear;
    QToolButton* tlbCmdRewind;
    QToolButton* tlbCmdPlay;

    /// Does nothing: a loop is started from the panel's own button.
    QToolButton* tlbCmdPlayLoop;

    QToolButton* tlbCmdPause;
    QToolButton* tlbCmdStop;
    QToolButton* tlbCmdFForward;
    QToolButton* tlbCmdLoopWinBack;
    QToolButton* tlbCmdLoopWinForward;
    QToolButton* tlbCmdRecord;
    QToolButton* tlbCmdMP3;
    QToolButton* tlbCmdBPMCalc;
    QToolButton* tlbCmdKeyCalc;
    QToolButton* tlbCmdCDBurn;
    QToolButton* tlbCmdVocalRemover;
    QToolButton* tlbCmdHelp;

private:
    QToolButton* add(const char* name, const char* icon, const QString& accessibleName, const QString& toolTip);
};
