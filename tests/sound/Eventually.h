#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace sound::test {

/// Lets events arrive until a condition holds that other threads or programs bring about; false after twenty
/// seconds, which none of them takes.
template <typename Condition>
bool eventually(Condition condition)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.elapsed() > 20000)
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

}  // namespace sound::test
