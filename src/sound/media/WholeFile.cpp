#include "sound/media/WholeFile.h"

#include "sound/media/UnnamedFile.h"

#include <fcntl.h>
#include <unistd.h>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace sound {
namespace {

/// A file on its way to the disc, which nothing can turn back: it goes on a thread that needs nobody who waits.
class WayToDisc
{
public:
    /// Of a file that may be closed meanwhile.
    static std::shared_ptr<WayToDisc> begin(int file)
    {
        const int sameFile = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
        if (sameFile < 0)
            return nullptr;
        auto way = std::make_shared<WayToDisc>();
        std::thread([way, sameFile] {
            const bool succeeded = ::fsync(sameFile) == 0;
            ::close(sameFile);
            const std::lock_guard lock(way->mutex);
            way->onDisc = succeeded;
            way->ended.notify_one();
        }).detach();
        return way;
    }

    /// Whether the file is there.
    bool wait(const std::stop_token& givenUp)
    {
        std::unique_lock lock(mutex);
        return ended.wait(lock, givenUp, [this] { return onDisc.has_value(); }) && *onDisc;
    }

private:
    std::mutex mutex;
    std::condition_variable_any ended;
    std::optional<bool> onDisc;
};

}  // namespace

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

bool WholeFile::bringToDisc(const std::stop_token& givenUp)
{
    if (!onDisc && !failed) {
        const auto way = WayToDisc::begin(file->descriptor());
        onDisc = way ? way->wait(givenUp) : bringToDisc();
    }
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
