#include "sound/media/WholeFile.h"

#include "sound/media/UnnamedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>

namespace sound {
namespace {

/// A new file in @p folder under a name that nothing bears. Its descriptor, or -1.
int makeGrowingFile(const QByteArray& folder, QByteArray& name)
{
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        name = folder + "/.larkspin-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16) + ".part";
        const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

/// So that the new name outlives a sudden end of the machine. A folder that cannot be told so still holds the file.
void bringFolderToDisc(const QByteArray& folder)
{
    const int opened = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    ::fsync(opened);
    ::close(opened);
}

bool isRegularOrMissing(const QByteArray& name)
{
    struct stat status = {};
    return ::stat(name.constData(), &status) != 0 || S_ISREG(status.st_mode);
}

}  // namespace

std::unique_ptr<WholeFile> WholeFile::create(const QString& path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return nullptr;
    const QFileInfo info(path);
    const QByteArray name = QFile::encodeName(info.absoluteFilePath());
    if (!isRegularOrMissing(name) || !QDir().mkpath(info.absolutePath()))
        return nullptr;
    QByteArray growingName;
    const int file = makeGrowingFile(QFile::encodeName(info.absolutePath()), growingName);
    if (file < 0)
        return nullptr;
    return std::unique_ptr<WholeFile>(new WholeFile(file, name, growingName));
}

WholeFile::WholeFile(int openFile, QByteArray finalName, QByteArray nameUntilThen)
    : file(openFile)
    , name(std::move(finalName))
    , growingName(std::move(nameUntilThen))
{
}

WholeFile::~WholeFile()
{
    if (file >= 0)
        ::close(file);
    if (!growingName.isEmpty())
        ::unlink(growingName.constData());
}

bool WholeFile::writeAt(std::int64_t offset, std::span<const std::byte> bytes)
{
    failed = failed || !sound::writeAt(file, offset, bytes);
    return !failed;
}

bool WholeFile::finish()
{
    const bool written = !failed && ::fsync(file) == 0;
    const bool closed = ::close(file) == 0;
    file = -1;
    if (!written || !closed || std::rename(growingName.constData(), name.constData()) != 0)
        return false;
    growingName.clear();
    bringFolderToDisc(name.left(name.lastIndexOf('/') + 1));
    return true;
}

}  // namespace sound
