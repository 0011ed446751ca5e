#pragma once

#include "vocalmixes/Mix.h"

#include <optional>
#include <vector>

namespace vocalmixes {

/// What of each part is left in a sound, in decibels: 0 is as much as there was, less than 0 a part that has become
/// softer.
struct Levels
{
    std::vector<double> instruments;  ///< In the order of the mix.
    double voice = 0;
};

/// The gains of the parts whose sum comes closest to the sound, by least squares over both channels where the voice
/// sounds: what is left of a part counts only as far as it is still that part's sound, whatever else plays at the
/// same time. Nothing where two parts are the same sound.
std::optional<Levels> levelsIn(const StereoSound& heard, const Mix& mix);

/// Where in the image a sound stands: the pan, -100 to 100, at which a single channel would have its levels.
double placeOf(const StereoSound& sound);

}  // namespace vocalmixes
