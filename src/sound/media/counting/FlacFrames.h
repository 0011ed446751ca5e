#pragma once

#include "sound/media/RegularFile.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames of a FLAC file, told by the number that its last block bears; checked by its sums, and by going
/// through all blocks where the header tells another length. Nothing where there is no whole block.
std::optional<FrameCount> countFlacFrames(const RegularFile& file);

}  // namespace sound
