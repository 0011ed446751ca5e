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

    /// Ends all waits for this flag, those under way and those to come, as the end of the program does: for a
    /// window that is closed while a routine of its own waits.
    void giveUp();

    /// Returns true once the flag is set, at once if it already is; false when the program was closed meanwhile, or
    /// the flag given up: the caller then gives up the rest of its work.
    ///
    /// Waits nest, also for the same flag. The inner one ends first; then the outer one looks at the flag as it is
    /// by then, and goes on waiting where it was cleared again.
    bool wait();

private:
    bool done = false;
    bool givenUp = false;
    QList<QEventLoop*> waits;
};
