#pragma once

#include "wave/StereoSound.h"

#include <limits>

/// What a remover of voices has left of a sound and what it has put in. Decibels, over both channels; the sounds
/// that are compared have the same rate and length.
namespace vocalmixes {

/// The energy of @p wanted over that of the difference of the two: what of @p heard is not as it should be, be it
/// too much or too little. Infinite for a copy.
double signalToDistortion(const StereoSound& wanted, const StereoSound& heard);

/// How alike the two channels are: 1 for one signal in both, 0 for strangers, -1 for opposites.
double channelCorrelation(const StereoSound& sound);

/// The largest difference of two sounds in a part of the spectrum, in any stretch of a second and a half.
struct Null
{
    /// Against what the sound has there on the mean, or against 40 dB less than all of the sound if that is more.
    double ofThere = -std::numeric_limits<double>::infinity();

    /// Against all of the sound on the mean.
    double ofSound = -std::numeric_limits<double>::infinity();
};

/// A third of an octave and more below the low cut-off and above the high one, whichever null is worse. The sounds
/// last two seconds at least.
Null nullOutside(const StereoSound& original, const StereoSound& heard, double lowCutOff, double highCutOff);

}  // namespace vocalmixes
