#include "support/DoneFlag.h"

#include <QEventLoop>

namespace {

/// How a loop ends whose flag was set. The end of the program ends it with another number.
constexpr int flagWasSet = 1;

}  // namespace

void DoneFlag::clear()
{
    done = false;
}

void DoneFlag::set()
{
    done = true;
    for (QEventLoop* loop : waits)
        loop->exit(flagWasSet);
}

bool DoneFlag::isSet() const
{
    return done;
}

void DoneFlag::giveUp()
{
    givenUp = true;
    for (QEventLoop* loop : waits)
        loop->exit();
}

// Closing the program ends every event loop of the thread, nested ones too, and lets none start again.
bool DoneFlag::wait()
{
    bool closed = false;
    while (!done && !closed && !givenUp) {
        QEventLoop loop;
        waits.append(&loop);
        closed = loop.exec() != flagWasSet;
        waits.removeLast();
    }
    return done && !givenUp;
}
