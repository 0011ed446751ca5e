#pragma once

#include "heard/Tempo.h"
#include "wave/StereoSound.h"

namespace heard {

/// How much higher than the original a stretch of it is heard.
struct PitchMatch
{
    double cents = 0;           ///< Hundredths of a semitone, up to 13 semitones either way.
    double originalSecond = 0;  ///< Where in the original the stretch begins.
    double likeness = 0;        ///< 1 where the spectra, laid over each other, are the same.
};

/// Compares the mean spectra, over a logarithmic scale of frequency, of the stretch and of that part of the
/// original which it is by its tempo; of several such parts, the one whose notes agree best. The match has a place.
PitchMatch pitchOf(const StereoSound& stretch, const StereoSound& original, const TempoMatch& tempo);

}  // namespace heard
