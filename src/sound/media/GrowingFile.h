#pragma once

#include "sound/media/NewFile.h"
#include "sound/media/OutputFile.h"
#include "sound/units/Frames.h"

#include <QString>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <thread>

namespace sound {

/// A file that grows under its own name, as a recording does.
///
/// From takeName() on it is there in place of the file that bore its name, and what has been written is in it at
/// once: the end of the program by force takes nothing away. A thread of its own brings it to the disc time and
/// again, so that a sudden end of the machine takes no more than the last moment, and writing does not wait for the
/// disc.
///
/// **Order.** writeAt() any number of times, takeName() once, further writeAt(), then finish() once. A file that
/// has not taken its name goes with this object; any other stays, finished or not. **Threads.** One at a time.
class GrowingFile : public OutputFile
{
public:
    static constexpr Milliseconds usualInterval{1000};

    /// Makes the folders that are missing. Null where the file cannot be made. @p interval: from one bringing to
    /// the disc to the next.
    static std::unique_ptr<GrowingFile> create(const QString& path, Milliseconds interval = usualInterval);

    ~GrowingFile() override;

    /// False also where the disc has lost something that was written before. What fails to be written can be there
    /// in part.
    bool writeAt(std::int64_t offset, std::span<const std::byte> bytes) override;

    /// What was written, up to so many bytes. Returns how many there are.
    std::size_t readAt(std::int64_t offset, std::span<std::byte> bytes) const;

    /// Takes away what lies beyond.
    bool cutTo(std::int64_t size);

    bool takeName();

    /// Waits until all of it is on the disc. False where something of it is not.
    bool bringToDisc();

    /// As bringToDisc(), and the last.
    bool finish();

protected:
    GrowingFile(std::unique_ptr<NewFile> file, Milliseconds interval);

private:
    void bringToDiscTimeAndAgain();
    void stop();

    std::unique_ptr<NewFile> file;
    Milliseconds interval;
    std::atomic<bool> lost = false;  // something that was written never reached the disc

    std::mutex mutex;
    std::condition_variable stopped;
    bool stopping = false;
    std::thread thread;
};

}  // namespace sound
