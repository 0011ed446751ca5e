#include "sound/ChildProcess.h"

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/wait.h>
#include <QProcessEnvironment>
#include <cerrno>
#include <csignal>
#include <vector>

namespace sound::test {
namespace {

std::vector<char*> pointersTo(QList<QByteArray>& texts)
{
    std::vector<char*> pointers;
    for (QByteArray& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

QList<QByteArray> encoded(const QStringList& texts)
{
    QList<QByteArray> bytes;
    for (const QString& text : texts)
        bytes.push_back(text.toLocal8Bit());
    return bytes;
}

QStringList environmentWith(const QStringList& changes)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& change : changes)
        environment.insert(change.section('=', 0, 0), change.section('=', 1));
    return environment.toStringList();
}

QByteArray orNull(const QString& file)
{
    return file.isEmpty() ? QByteArrayLiteral("/dev/null") : file.toLocal8Bit();
}

}  // namespace

ChildProcess::ChildProcess(const QString& program, const QStringList& arguments, const QStringList& environment,
                           const QString& inputFile, const QString& outputFile, const QString& errorFile)
{
    QList<QByteArray> command = encoded(QStringList{program} + arguments);
    QList<QByteArray> variables = encoded(environmentWith(environment));
    constexpr int toWrite = O_WRONLY | O_CREAT | O_TRUNC;
    constexpr mode_t mode = 0600;
    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_addopen(&streams, 0, orNull(inputFile).constData(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&streams, 1, orNull(outputFile).constData(), toWrite, mode);
    posix_spawn_file_actions_addopen(&streams, 2, orNull(errorFile).constData(), toWrite, mode);
    if (posix_spawnp(&process, command.front().constData(), &streams, nullptr, pointersTo(command).data(),
                     pointersTo(variables).data()) != 0)
        process = -1;
    posix_spawn_file_actions_destroy(&streams);
}

ChildProcess::~ChildProcess()
{
    signal(SIGKILL);
    succeeds();
}

void ChildProcess::signal(int number) const
{
    if (process > 0)
        kill(process, number);
}

void ChildProcess::makeUrgent() const
{
    const sched_param parameters{.sched_priority = 20};
    if (process > 0)
        sched_setscheduler(process, SCHED_RR, &parameters);
}

bool ChildProcess::succeeds()
{
    if (process > 0) {
        int status = 0;
        while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        content = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        process = -1;
    }
    return content;
}

}  // namespace sound::test
