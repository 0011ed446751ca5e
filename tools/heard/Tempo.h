#pragma once

#include "wave/StereoSound.h"

#include <optional>
#include <vector>

namespace heard {

/// How fast the original is heard, and from where.
struct TempoMatch
{
    double ratio = 1;     ///< Seconds of the original that pass in one second heard: 0.8 is slowed by 20%.
    double likeness = 0;  ///< 1 where the beginnings of notes agree in full.

    /// Where in the original the stretch may begin, in seconds: music repeats its rhythm, and where it does it
    /// takes more than the beginnings of notes to tell the places apart. The best first.
    std::vector<double> places;
};

/// Finds the ratio from 0.35 to 2.2 at which the beginnings of the notes heard fall on those of the original.
/// Nothing where they agree nowhere; a stretch of some seconds is needed.
std::optional<TempoMatch> tempoOf(const StereoSound& stretch, const StereoSound& original);

}  // namespace heard
