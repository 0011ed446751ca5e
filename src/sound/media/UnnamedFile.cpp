#include "sound/media/UnnamedFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>
#include <cerrno>
#include <cstdlib>

namespace sound {
namespace {

constexpr std::int64_t spareBytes = std::int64_t{256} * 1024 * 1024;

bool isMemoryFileSystem(const QByteArray& folder)
{
    struct statfs status = {};
    return ::statfs(folder.constData(), &status) == 0 &&
           (status.f_type == TMPFS_MAGIC || status.f_type == RAMFS_MAGIC);
}

/// Where such a file may lie, best first.
QList<QByteArray> folders()
{
    QStringList wanted;
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    if (!cache.isEmpty() && QDir().mkpath(cache))
        wanted << cache;
    wanted << QStringLiteral("/var/tmp") << QStandardPaths::writableLocation(QStandardPaths::TempLocation);

    QList<QByteArray> onDisc;
    QList<QByteArray> inMemory;
    for (const QString& folder : wanted) {
        const QByteArray name = QFile::encodeName(folder);
        (isMemoryFileSystem(name) ? inMemory : onDisc) << name;
    }
    return onDisc + inMemory;
}

int openIn(const QByteArray& folder)
{
    const int unnamed = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (unnamed >= 0)
        return unnamed;
    QByteArray name = folder + "/larkspin-XXXXXX";
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0)
        ::unlink(name.constData());
    return named;
}

// Nothing is reserved: a length is only what a file says of itself, and a forged one would take the whole disc from
// all other programs. There must be room for it, and some to spare; it is taken as the sound is really written.
bool makeRoom(int file, std::int64_t size)
{
    struct statvfs room = {};
    if (::fstatvfs(file, &room) != 0)
        return false;
    const auto free = static_cast<std::int64_t>(room.f_bavail) * static_cast<std::int64_t>(room.f_frsize);
    return size <= free - spareBytes && ::ftruncate(file, size) == 0;
}

}  // namespace

int openUnnamedFile(std::int64_t size)
{
    for (const QByteArray& folder : folders()) {
        const int file = openIn(folder);
        if (file < 0)
            continue;
        if (makeRoom(file, size))
            return file;
        ::close(file);
    }
    return -1;
}

bool writeAt(int file, std::int64_t offset, std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(file, bytes.data(), bytes.size(), offset);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        offset += written;
    }
    return true;
}

}  // namespace sound
