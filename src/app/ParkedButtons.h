#pragma once

#include <QWidget>

class QToolButton;

/// Buttons that are never seen: some hold the picture of a menu entry, some hold a command that only menu and
/// toolbar reach, some do nothing.
class ParkedButtons : public QWidget
{
    Q_OBJECT

public:
    explicit ParkedButtons(QWidget* parent);

    /// Commands.
    QToolButton* tlbCmdClearAll;
    QToolButton* cmdLoopWindowBack;
    QToolButton* cmdLoopWindowForward;

    /// Pictures.
    QToolButton* cmdExit;
    QToolButton* cmdOnlineSupport;
    QToolButton* cmdAbout;

    /// Neither.
    QToolButton* cmdGrab;
    QToolButton* cmdUserGreen;
    QToolButton* cmdUserRed;

private:
    QToolButton* add(const char* name, const char* icon);
};
