#include "support/DoneFlag.h"

#include <QEventLoop>

void DoneFlag::clear()
{
    done = false;
}

void DoneFlag::set()
{
    done = true;
    if (waiting)
        waiting->quit();
}

bool DoneFlag::isSet() const
{
    return done;
}

// Closing the program ends every event loop of the thread, nested ones too, and lets none start again. A loop that
// returns although the flag is not set was ended so.
bool DoneFlag::wait()
{
    if (done)
        return true;
    QEventLoop loop;
    waiting = &loop;
    loop.exec();
    waiting = nullptr;
    return done;
}
