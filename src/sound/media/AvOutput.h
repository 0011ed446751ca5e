#pragma once

#include "sound/media/AvHandles.h"
#include "sound/media/OutputFile.h"

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
    /// @p container as the library calls it. Null where it knows none of that name, or there is no memory. @p file
    /// outlives this.
    static std::unique_ptr<AvOutput> create(OutputFile& file, const char* container);

    AVFormatContext& format() { return *context; }

    /// Null where there is no memory.
    AVStream* addStream();

    /// @p options in the library's notation, name=value with colons between.
    bool writeHead(const char* options);

    /// The times of @p packet are in @p unit; it is left with those of the container.
    bool write(AVPacket& packet, AVRational unit);

    /// Has the container write what it gathers, though more of it could follow.
    bool endGathering();

    /// Brings to the file what is on the way there.
    bool flush();

    /// Where in the file the next byte goes.
    std::int64_t place() const;
    bool goTo(std::int64_t place);

    /// Writes what stands at the end, and mends what stands before.
    bool finish();

private:
    explicit AvOutput(OutputFile& file);

    int writeBytes(const std::uint8_t* bytes, int size);
    std::int64_t seekBytes(std::int64_t offset, int whence);
    bool stillGood(int status);

    OutputFile& target;
    std::int64_t position = 0;
    std::int64_t end = 0;
    bool failed = false;
    AvIo io;  // outlives the container, which writes through it
    AvWrittenFormat context;
};

}  // namespace sound
