#pragma once

#include "sound/media/RegularFile.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames of the first sound in an Ogg file (Vorbis, Opus or FLAC), told by the positions that its pages bear,
/// and those of the sounds of the same kind that are chained behind it. Nothing where there is none.
///
/// A position is believed only as far as the packets since the last one can have brought it. @p firstPosition is
/// that of the first packet, for files that were cut from a longer sound and do not begin at 0.
std::optional<FrameCount> countOggFrames(const RegularFile& file, FramePosition firstPosition);

}  // namespace sound
