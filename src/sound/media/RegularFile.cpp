#include "sound/media/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QFile>
#include <algorithm>
#include <cerrno>

namespace sound {

std::shared_ptr<const RegularFile> RegularFile::open(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.isEmpty() || name.contains('\0'))
        return nullptr;

    // Asked before opening, since opening a device can already act on it; and again of what was opened, since the
    // name can come to mean something else in between.
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0)
        return nullptr;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return nullptr;
    }
    return std::shared_ptr<const RegularFile>(new RegularFile(descriptor, status.st_size));
}

RegularFile::RegularFile(int openDescriptor, std::int64_t size)
    : descriptor(openDescriptor)
    , length(size)
{
}

RegularFile::~RegularFile()
{
    ::close(descriptor);
}

bool RegularFile::isNamed(const QString& path) const
{
    const QByteArray name = QFile::encodeName(path);
    struct stat named = {};
    struct stat opened = {};
    return !name.contains('\0') && ::stat(name.constData(), &named) == 0 && ::fstat(descriptor, &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

std::size_t RegularFile::readAt(std::int64_t offset, std::span<std::uint8_t> bytes) const
{
    if (offset < 0 || offset >= length)
        return 0;
    const auto wanted = std::min(bytes.size(), static_cast<std::size_t>(length - offset));
    std::size_t done = 0;
    while (done < wanted) {
        const ssize_t got =
            ::pread(descriptor, bytes.data() + done, wanted - done, offset + static_cast<std::int64_t>(done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}  // namespace sound
