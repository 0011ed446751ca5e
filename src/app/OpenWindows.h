#pragma once

#include <QDialog>
#include <QPointer>

/// The windows that stand open beside the main window, in the order of their opening.
///
/// A window lives from its opening to its closing: opened again it starts afresh. Once all were closed none opens
/// any more.
class OpenWindows
{
public:
    /// Opens a window that does not block the main one and is made by @p make. One that stands open already comes
    /// to the front instead.
    template <typename Window, typename Make>
    void show(Make make)
    {
        if (!closed && !toFront<Window>())
            open(make());
    }

    /// Brings the window of this kind to the front that stands open; false where there is none.
    template <typename Window>
    bool toFront()
    {
        QWidget* window = visibleOne(Window::staticMetaObject);
        if (window)
            bringToFront(*window);
        return window != nullptr;
    }

    template <typename Window>
    bool isOpen() const
    {
        return visibleOne(Window::staticMetaObject) != nullptr;
    }

    /// Opens a window that blocks the main one; returns when it is closed.
    template <typename Dialog>
    void exec(Dialog& window)
    {
        if (closed)
            return;
        windows << &window;
        window.exec();
        windows.removeOne(&window);
    }

    /// Closes them all, from the last to the first; false where one refuses. That one stays, and the program does
    /// not end before it is gone.
    bool closeAll();

    /// The end has come, or is coming.
    bool areClosed() const { return closed; }

private:
    QWidget* visibleOne(const QMetaObject& kind) const;
    void open(QWidget* window);
    static void bringToFront(QWidget& window);

    QList<QPointer<QWidget>> windows;
    bool closed = false;
};
