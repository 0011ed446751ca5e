#pragma once

#include "sound/media/AvHandles.h"
#include "sound/media/WholeFile.h"

#include <cstdint>
#include <memory>

namespace sound {

/// The container of a sound file that is written: streams are added, then comes the head, then packets. Inside this
/// folder only.
///
/// The library is given no name and opens nothing: all goes into the one file. What it writes depends on nothing
/// but what it is given, not on the time or its own version. Where the disc is full or fails all further calls are
/// false.
///
/// **Threads.** One at a time.
class AvOutput
{
public:
    /// @p container as the library calls it. Null where it knows none of that name, or there is no memory.
    static std::unique_ptr<AvOutput> create(std::unique_ptr<WholeFile> file, const char* container);

    AVFormatContext& format() { return *context; }

    /// Null where there is no memory.
    AVStream* addStream();

    /// @p options in the library's notation, name=value with colons between.
    bool writeHead(const char* options);

    /// The times of @p packet are in @p unit; it is left with those of the container.
    bool write(AVPacket& packet, AVRational unit);

    /// Writes what stands at the end, mends what stands before, and gives the file its name.
    bool finish();

private:
    explicit AvOutput(std::unique_ptr<WholeFile> file);

    int writeBytes(const std::uint8_t* bytes, int size);
    std::int64_t seekBytes(std::int64_t offset, int whence);
    bool stillGood(int status);

    std::unique_ptr<WholeFile> target;
    std::int64_t position = 0;
    std::int64_t end = 0;
    bool failed = false;
    AvIo io;  // outlives the container, which writes through it
    AvWrittenFormat context;
};

}  // namespace sound
