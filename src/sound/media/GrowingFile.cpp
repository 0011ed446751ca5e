#include "sound/media/GrowingFile.h"

#include "sound/media/UnnamedFile.h"

#include <unistd.h>
#include <cerrno>

namespace sound {
namespace {

/// Not every file system can be told to. What is on one that cannot is as safe as it gets.
bool bringDataToDisc(int file)
{
    return ::fdatasync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

}  // namespace

std::unique_ptr<GrowingFile> GrowingFile::create(const QString& path, Milliseconds interval)
{
    auto file = NewFile::create(path);
    return file ? std::unique_ptr<GrowingFile>(new GrowingFile(std::move(file), interval)) : nullptr;
}

GrowingFile::GrowingFile(std::unique_ptr<NewFile> newFile, Milliseconds between)
    : file(std::move(newFile))
    , interval(between)
{
}

GrowingFile::~GrowingFile()
{
    stop();
}

bool GrowingFile::writeAt(std::int64_t offset, std::span<const std::byte> bytes)
{
    return !lost && sound::writeAt(file->descriptor(), offset, bytes);
}

std::size_t GrowingFile::readAt(std::int64_t offset, std::span<std::byte> bytes) const
{
    const ssize_t count = ::pread(file->descriptor(), bytes.data(), bytes.size(), offset);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool GrowingFile::cutTo(std::int64_t size)
{
    return ::ftruncate(file->descriptor(), size) == 0;
}

bool GrowingFile::takeName()
{
    if (!file->takeName())
        return false;
    thread = std::thread([this] { bringToDiscTimeAndAgain(); });
    return true;
}

bool GrowingFile::bringToDisc()
{
    if (!bringDataToDisc(file->descriptor()))
        lost = true;
    return !lost;
}

bool GrowingFile::finish()
{
    stop();
    return bringToDisc();
}

void GrowingFile::bringToDiscTimeAndAgain()
{
    bringToDisc();
    file->bringNameToDisc();
    std::unique_lock lock(mutex);
    while (!stopped.wait_for(lock, interval, [this] { return stopping; })) {
        lock.unlock();
        bringToDisc();
        lock.lock();
    }
}

void GrowingFile::stop()
{
    if (!thread.joinable())
        return;
    {
        const std::lock_guard lock(mutex);
        stopping = true;
    }
    stopped.notify_all();
    thread.join();
}

}  // namespace sound
