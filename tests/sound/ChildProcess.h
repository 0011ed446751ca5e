#pragma once

#include <sys/types.h>
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace sound::test {

/// Another program that a test runs, with files for its streams.
///
/// Not QProcess: that borrows the parent's memory for the child in a way that the thread sanitizer takes the parent
/// for the child. It then no longer sees the main thread's atomics and reports races that are none.
class ChildProcess
{
public:
    /// The program is looked for in PATH. What differs from this process' environment stands in @p environment as
    /// NAME=value. An empty name of a file is the null device.
    ChildProcess(const QString& program, const QStringList& arguments, const QStringList& environment,
                 const QString& inputFile, const QString& outputFile, const QString& errorFile);

    /// Kills it where it still runs, and waits for its end.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void signal(int number) const;

    /// Lets it go before ordinary programs and before this one's sound, where the system allows that.
    void makeUrgent() const;

    /// Waits for its end; whether it ended by itself and was content.
    bool succeeds();

private:
    pid_t process = -1;
    bool content = false;
};

}  // namespace sound::test
