#pragma once

#include "wave/StereoSound.h"

#include <optional>

namespace heard {

struct LoopPeriod
{
    double frames = 0;
    double likeness = 0;  ///< 1 where every pass is the same.
    bool byWaves =
        false;  ///< Found by the waves themselves, to a fraction of a frame; else by the notes' beginnings.
};

/// The shortest time, from a quarter of a second on, after which the sound says the same again. It takes at least
/// two passes and a half. Nothing where the sound does not repeat.
std::optional<LoopPeriod> loopPeriodOf(const StereoSound& stretch);

}  // namespace heard
