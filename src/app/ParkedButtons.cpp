#include "app/ParkedButtons.h"

#include <QIcon>
#include <QToolButton>

ParkedButtons::ParkedButtons(QWidget* parent)
    : QWidget(parent)
    , tlbCmdClearAll(add("tlbCmdClearAll", "edit-clear-all"))
    , cmdLoopWindowBack(add("cmdLoopWindowBack", "go-previous"))
    , cmdLoopWindowForward(add("cmdLoopWindowForward", "go-next"))
    , cmdExit(add("cmdExit", "application-exit"))
    , cmdOnlineSupport(add("cmdOnlineSupport", "help-browser"))
    , cmdAbout(add("cmdAbout", "help-about"))
    , cmdGrab(add("cmdGrab", "camera-photo"))
    , cmdUserGreen(add("cmdUserGreen", "user-available"))
    , cmdUserRed(add("cmdUserRed", "user-busy"))
{
    hide();
}

QToolButton* ParkedButtons::add(const char* name, const char* icon)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(QIcon::fromTheme(icon));
    return button;
}

#include "moc_ParkedButtons.cpp"
