#pragma once

#include "sound/media/AvInput.h"
#include "sound/units/Frames.h"

namespace sound {

/// How many frames a decoder will make of the file, at the sound's own rate, with the encoder's delay and padding
/// cut where the file declares them. Counted from what is in the file: its headers are believed in nothing that
/// the file's own size and its packets do not bear out. 0 where there is none. Inside this folder only.
///
/// Does not touch @p input, which stands before the first packet.
FrameCount countFrames(const AvInput& input);

/// As countFrames(), by going through all packets of the file: right for every container, and slower than what
/// countFrames() knows of the one at hand.
FrameCount countFramesByPackets(const AvInput& input);

}  // namespace sound
