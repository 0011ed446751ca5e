#include "sound/media/WholeFile.h"

#include "sound/media/UnnamedFile.h"

#include <unistd.h>

namespace sound {

std::unique_ptr<WholeFile> WholeFile::create(const QString& path)
{
    auto file = NewFile::create(path);
    return file ? std::unique_ptr<WholeFile>(new WholeFile(std::move(file))) : nullptr;
}

WholeFile::WholeFile(std::unique_ptr<NewFile> newFile)
    : file(std::move(newFile))
{
}

bool WholeFile::writeAt(std::int64_t offset, std::span<const std::byte> bytes)
{
    onDisc = false;
    failed = failed || !sound::writeAt(file->descriptor(), offset, bytes);
    return !failed;
}

bool WholeFile::bringToDisc()
{
    onDisc = onDisc || (!failed && ::fsync(file->descriptor()) == 0);
    return onDisc;
}

bool WholeFile::finish()
{
    if (!bringToDisc() || !file->takeName())
        return false;
    file->bringNameToDisc();
    return true;
}

bool WholeFile::finishAs(const QString& fileName)
{
    if (!bringToDisc() || !file->takeFreeName(fileName))
        return false;
    file->bringNameToDisc();
    return true;
}

}  // namespace sound
