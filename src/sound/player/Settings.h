#pragma once

#include "sound/dsp/Changes.h"
#include "sound/dsp/Equalizer.h"

namespace sound {

/// How a player sounds, published whole by the main thread at each change. Holds across sounds.
struct Settings
{
    Changes changes;
    int gain = 100;   ///< 0 to 100.
    int balance = 0;  ///< -50 to 50.
    EqualizerBands equalizer;
};

/// The band whose centre this is, or null.
EqualizerBand* findBand(EqualizerBands& bands, float frequency);

/// A gain in decibels as a band may have it: cut to EqualizerBand::greatestGain, and 0 where it is no number.
float bandGain(float decibels);

/// Adds a band at its place, lowest first, with its gain cut as bandGain() does. False where there is no room, or
/// one of the same centre, or where its centre or width is none.
bool addBand(EqualizerBands& bands, const EqualizerBand& band);

}  // namespace sound
