#pragma once

#include "sound/media/AvInput.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames of an MP4 sound, told by its tables as far as the coded frames that they name lie in the file,
/// without the encoder's delay and without the padding of its last coded frame. Nothing where the file has no such
/// tables. Inside this folder only.
std::optional<FrameCount> countMp4Frames(const AvInput& input);

}  // namespace sound
