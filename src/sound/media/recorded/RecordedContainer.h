#pragma once

#include "sound/media/GrowingFile.h"
#include "sound/media/SoundFormat.h"

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace sound {

/// The container of a recording under way: what is in the file is whole at every moment, and tells its length as
/// far as the format has a place for that. Inside this folder only.
///
/// **Order.** add() any number of times, then finish() once. **Threads.** One at a time.
class RecordedContainer
{
public:
    /// Writes what stands before the sound. Null where that fails. @p file and @p codec, which encodes the sound,
    /// outlive the container.
    static std::unique_ptr<RecordedContainer> begin(GrowingFile& file, SoundFormat::Family family,
                                                    const AVCodecContext& codec);

    virtual ~RecordedContainer() = default;

    /// Adds a packet, whose times are in frames of the sound and may be left changed. False when the disc is full
    /// or fails: the file then is whole without it, and nothing more can be added.
    virtual bool add(AVPacket& packet) = 0;

    /// Writes what stands behind the sound, and mends what stands before. False where that fails or add() did; the
    /// file then is whole as it was before.
    virtual bool finish() = 0;
};

}  // namespace sound
