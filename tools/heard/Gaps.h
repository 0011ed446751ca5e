#pragma once

#include "wave/StereoSound.h"

namespace heard {

/// How often the sound breaks off: the stretches of nothing but zeros on both sides, of a millisecond or more, that
/// lie between sound and sound.
int gapsIn(const StereoSound& stretch);

}  // namespace heard
