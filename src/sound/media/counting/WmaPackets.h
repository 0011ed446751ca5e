#pragma once

#include "sound/media/AvInput.h"
#include "sound/units/Frames.h"

#include <optional>

namespace sound {

/// The frames in the packets of a Windows Media sound of version 1 or 2, told by the heads of the packets: the
/// times in the file are whole milliseconds and good for nothing here. Nothing where there is none. Inside this
/// folder only.
///
/// Goes through the packets of @p input.
std::optional<FrameCount> countWmaFrames(AvInput& input);

}  // namespace sound
