#pragma once

#include "sound/media/GrowingFile.h"
#include "sound/units/Frames.h"

#include <cstdint>
#include <memory>

namespace sound {

/// How far a file has come.
struct Growth
{
    std::int64_t bytes = 0;
    std::int64_t packets = 0;  // of the encoder
    FrameCount frames;
};

/// The places in the head of a file that tell how long it is. The library fills them when it is finished; a player
/// that reads the file before that is to find the truth there too. Inside this folder only.
class LengthInHead
{
public:
    virtual ~LengthInHead() = default;

    /// False where the disc fails.
    virtual bool tell(const Growth& growth) = 0;
};

/// Of MP3: the number of coded frames and of bytes in the Info tag, and the encoder's @p delay, which the library
/// fills in last too. Null where the file does not begin with such a tag.
std::unique_ptr<LengthInHead> lengthInInfoTag(GrowingFile& file, FrameCount delay);

/// Of WMA: the duration, the number of packets and of bytes in the file's properties and before its data. Null
/// where the file is not such a one. The sound is of @p rate.
std::unique_ptr<LengthInHead> lengthInAsfHead(GrowingFile& file, SampleRate rate);

}  // namespace sound
