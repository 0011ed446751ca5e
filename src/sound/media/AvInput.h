#pragma once

#include "sound/media/AvHandles.h"
#include "sound/media/RegularFile.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace sound {

/// The container of a sound file: its packets, and what it says about the sound in it. Inside this folder only.
///
/// Everything is read through the one open file. The library is given no name that it could take for an address
/// or a pattern, knows only the formats and decoders of sound files, and is refused whatever else it asks to open,
/// so that a playlist dressed up as a sound leads nowhere.
///
/// **Threads.** One at a time; stop() from any.
class AvInput
{
public:
    /// Whether an MP4's list of edits is heeded, which tells the part of its sound that is to be heard.
    enum class Edits
    {
        Heeded,
        Ignored
    };

    /// Null where the file is of no known format or has no sound that can be decoded.
    static std::unique_ptr<AvInput> open(std::shared_ptr<const RegularFile> file, Edits edits = Edits::Heeded);

    const AVFormatContext& format() const { return *context; }
    const AVStream& stream() const { return *sound; }
    const AVCodecParameters& codec() const { return *sound->codecpar; }
    const std::shared_ptr<const RegularFile>& file() const { return source; }

    /// Whether the container is the one of this name, as the library calls it.
    bool is(const char* container) const;

    /// The next packet of the sound into @p packet; false at the end, or after stop().
    bool read(AVPacket& packet);

    /// A decoder for the sound, opened; null where there is none.
    AvCodec makeDecoder() const;

    /// Makes read() end soon.
    void stop() { stopped.store(true, std::memory_order_relaxed); }

private:
    explicit AvInput(std::shared_ptr<const RegularFile> file);

    bool openContainer(Edits edits);
    bool chooseSound();
    int readBytes(std::uint8_t* buffer, int size);
    std::int64_t seekBytes(std::int64_t offset, int whence);

    std::shared_ptr<const RegularFile> source;
    std::int64_t position = 0;
    std::atomic<bool> stopped = false;
    AvIo io;  // outlives the container, which reads through it
    AvFormat context;
    AVStream* sound = nullptr;
};

}  // namespace sound
