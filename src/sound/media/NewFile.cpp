#include "sound/media/NewFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace sound {
namespace {

constexpr mode_t asTheUserWishes = 0666;  // less what the umask takes

/// Calls @p take with names in @p folder that nothing should bear, until it takes one or fails for another reason
/// than that something does. The name taken; empty where none was.
template <typename Take>
QByteArray takeNewName(const QByteArray& folder, const Take& take)
{
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        const QByteArray name =
            folder + "/.larkspin-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16) + ".part";
        if (take(name.constData()))
            return name;
        if (errno != EEXIST)
            break;
    }
    return {};
}

/// A new file without a name; -1 where the file system knows no such thing, or could give it none later.
int makeNamelessFile(const QByteArray& folder)
{
    if (::access("/proc/self/fd", X_OK) != 0)
        return -1;
    return ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, asTheUserWishes);
}

/// Gives a file without a name this one, which nothing may bear.
bool giveName(int file, const char* name)
{
    const QByteArray opened = "/proc/self/fd/" + QByteArray::number(file);
    return ::linkat(AT_FDCWD, opened.constData(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
}

QByteArray folderOf(const QByteArray& name)
{
    return name.left(std::max<qsizetype>(name.lastIndexOf('/'), 1));
}

/// Whether the name can come to be that of the file: a regular file or nothing bears it.
bool canBeTaken(const QByteArray& name)
{
    struct stat status = {};
    return ::stat(name.constData(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

/// Network file systems and others cannot rename without replacing. There an empty file takes the name first, which
/// only one can, and is then replaced.
bool renameToFree(const char* from, const char* to)
{
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL)
        return false;
    const int placeholder = ::open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, asTheUserWishes);
    if (placeholder < 0)
        return false;
    ::close(placeholder);
    if (std::rename(from, to) == 0)
        return true;
    const int reason = errno;
    ::unlink(to);
    errno = reason;
    return false;
}

}  // namespace

std::unique_ptr<NewFile> NewFile::create(const QString& path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return nullptr;
    const QFileInfo info(path);
    const QByteArray name = QFile::encodeName(info.absoluteFilePath());
    if (!canBeTaken(name) || !QDir().mkpath(info.absolutePath()))
        return nullptr;
    int file = makeNamelessFile(folderOf(name));
    QByteArray growingName;
    if (file < 0) {
        growingName = takeNewName(folderOf(name), [&file](const char* free) {
            file = ::open(free, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, asTheUserWishes);
            return file >= 0;
        });
    }
    if (file < 0)
        return nullptr;
    return std::unique_ptr<NewFile>(new NewFile(file, name, growingName));
}

NewFile::NewFile(int openFile, QByteArray finalName, QByteArray nameUntilThen)
    : file(openFile)
    , name(std::move(finalName))
    , growingName(std::move(nameUntilThen))
{
}

NewFile::~NewFile()
{
    ::close(file);
    if (!growingName.isEmpty())
        ::unlink(growingName.constData());
}

bool NewFile::takeName()
{
    if (growingName.isEmpty()) {
        if (giveName(file, name.constData()))
            return true;
        if (errno != EEXIST)
            return false;
        // Only a name can take the place of a name.
        growingName = takeNewName(folderOf(name), [this](const char* free) { return giveName(file, free); });
    }
    if (growingName.isEmpty() || std::rename(growingName.constData(), name.constData()) != 0)
        return false;
    growingName.clear();
    return true;
}

bool NewFile::takeFreeName(const QString& fileName)
{
    const QByteArray wanted = folderOf(name) + '/' + QFile::encodeName(fileName);
    const bool taken = growingName.isEmpty() ? giveName(file, wanted.constData())
                                             : renameToFree(growingName.constData(), wanted.constData());
    if (!taken)
        return false;
    name = wanted;
    growingName.clear();
    return true;
}

/// A folder that cannot be told so still holds the file.
void NewFile::bringNameToDisc() const
{
    const int folder = ::open(folderOf(name).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

}  // namespace sound
