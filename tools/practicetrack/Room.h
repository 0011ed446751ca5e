#pragma once

#include "wave/StereoSound.h"

namespace practice {

/// What a small wooden room gives back of a sound, without the sound itself.
StereoSound roomOf(const StereoSound& dry);

}  // namespace practice
