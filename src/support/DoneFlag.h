#pragma once

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
    /// the caller then gives up the rest of its work. One wait at a time for each flag; waits for different flags
    /// nest.
    bool wait();

private:
    bool done = false;
    QEventLoop* waiting = nullptr;
};
