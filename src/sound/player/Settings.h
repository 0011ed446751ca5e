#pragma once

#include "sound/dsp/Equalizer.h"
#include "sound/player/Changes.h"

namespace sound {

/// How a player sounds, published whole by the main thread at each change. Holds across sounds.
struct Settings
{
    Changes changes;
    int gain = 100;   ///< 0 to 100.
    int balance = 0;  ///< -50 to 50.
    EqualizerBands equalizer;
};

}  // namespace sound
