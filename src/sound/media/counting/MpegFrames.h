#pragma once

#include "sound/media/RegularFile.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames of an MPEG audio file (MP3, MP2, MP1), without the encoder's delay and padding where its tag declares
/// them, and without the frame that holds nothing but the tag; at the rate that all of it is decoded to. Nothing
/// where the heads of the frames cannot be followed.
std::optional<FrameCount> countMpegFrames(const RegularFile& file, SampleRate rate);

}  // namespace sound
