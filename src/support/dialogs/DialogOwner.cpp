#include "support/dialogs/DialogOwner.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

namespace {

/// Whether a window stands on its own on the screen: none of the program's lies under it, and it is no menu and no
/// tool tip.
bool standsAlone(const QWidget* window)
{
    const Qt::WindowType type = window->windowType();
    const bool passing = type == Qt::Popup || type == Qt::ToolTip;
    const QWidget* under = window->parentWidget();
    return window->isVisible() && !passing && (under == nullptr || !under->isVisible());
}

}  // namespace

QWidget* dialogOwner()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto seen = std::ranges::find_if(windows, standsAlone);
    return seen == windows.end() ? nullptr : *seen;
}
