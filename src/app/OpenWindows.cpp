#include "app/OpenWindows.h"

void OpenWindows::closeAll()
{
    while (!windows.isEmpty()) {
        const QPointer<QWidget> last = windows.takeLast();
        if (last)
            last->close();
    }
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
