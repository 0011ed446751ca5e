#pragma once

#include "sound/media/RegularFile.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames in the blocks of a WavPack file, told by going from block to block. A block that is lost in the
/// middle counts as long as its neighbours leave room for it. Nothing where there is no block.
std::optional<FrameCount> countWavPackFrames(const RegularFile& file);

}  // namespace sound
