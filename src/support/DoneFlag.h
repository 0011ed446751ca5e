#pragma once

#include <QList>

class QEventLoop;

/// What a long engine job is waited for with: cleared before the job starts, set by its done event.
///
/// While wait() runs, timers, engine events and the user's commands go on; the thread sleeps in between. There is
/// no time-out. Main thread only.
class DoneFlag
{
public:
    void clear();
    void set();
    bool isSet() const;

    /// Returns true once the flag is set, at once if it already is; false when the program was closed meanwhile:
    /// the caller then gives up the rest of its work.
    ///
    /// Waits nest, also for the same flag. The inner one ends first; then the outer one looks at the flag as it is
    /// by then, and goes on waiting where it was cleared again.
    bool wait();

private:
    bool done = false;
    QList<QEventLoop*> waits;
};
