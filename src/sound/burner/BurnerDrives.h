#pragma once

#include "sound/disc/DiscDrive.h"

namespace sound {

/// Finds the drives that can be asked who they are, of which some may not write at all. Nothing is asked of a disc,
/// and no drive is held afterwards; one that another program uses is found too.
FindDrives burnerDrives();

}  // namespace sound
