#pragma once

#include <QtGlobal>

class QWidget;

/// Lets a window that is closed in the middle of one of its routines live until the last of them has returned.
///
/// A routine that turns the event loop, in a wait, a dialog or a message box, can find its window closed when it
/// goes on, and one that deletes itself on closing would be deleted in there. Each such routine therefore stands on
/// the stack as a Routine, and gives up what is left of it once isClosed(). Main thread only.
class WindowLife
{
public:
    explicit WindowLife(QWidget& window);
    Q_DISABLE_COPY_MOVE(WindowLife)

    bool isClosed() const { return closed; }

    /// The window is being closed, for good. While routines run, its Qt::WA_DeleteOnClose is put off.
    void close();

    class Routine
    {
    public:
        explicit Routine(WindowLife& life);
        ~Routine();
        Q_DISABLE_COPY_MOVE(Routine)

    private:
        WindowLife& life;
    };

private:
    QWidget& window;
    int routines = 0;
    bool closed = false;
    bool deleteBehindRoutines = false;
};
