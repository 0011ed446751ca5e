#include "app/OpenWindows.h"

#include <QEventLoopLocker>

namespace {

/// Goes with the window that it belongs to. Until then the program goes on without its main window, and with it the
/// program ends: Qt does not count the windows that belong to another one.
class RunningProgram : public QObject
{
public:
    using QObject::QObject;

private:
    const QEventLoopLocker locker;
};

}  // namespace

bool OpenWindows::closeAll()
{
    closed = true;
    bool allGone = true;
    while (!windows.isEmpty()) {
        const QPointer<QWidget> last = windows.takeLast();
        if (last && !last->close()) {
            new RunningProgram(last);
            allGone = false;
        }
    }
    return allGone;
}

QWidget* OpenWindows::visibleOne(const QMetaObject& kind) const
{
    for (const QPointer<QWidget>& window : windows) {
        QWidget* open = window.data();
        if (open && open->isVisible() && open->metaObject()->inherits(&kind))
            return open;
    }
    return nullptr;
}

void OpenWindows::open(QWidget* window)
{
    windows.removeIf([](const QPointer<QWidget>& closed) { return closed.isNull(); });
    windows << window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

void OpenWindows::bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}
