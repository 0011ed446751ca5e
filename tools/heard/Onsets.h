#pragma once

#include "wave/StereoSound.h"

#include <cstddef>
#include <vector>

namespace heard {

/// How strongly something new begins, moment by moment.
struct Onsets
{
    double rate = 0;  ///< Moments a second.
    std::vector<double> strength;
};

/// A course in time for each of some bands of frequency, lowest first.
struct Bands
{
    double rate = 0;
    std::vector<std::vector<double>> bands;
};

/// The loudness of each single line of the spectrum up to 4 kHz, moment by moment: fine enough to tell notes apart,
/// too slow to tell when exactly they begin.
Bands spectrogramOf(const StereoSound& sound);

/// Measures the growth of the sound in every band, half an octave wide, in steps of @p hop frames. The first moment
/// belongs to the first frame.
Bands bandOnsetsOf(const StereoSound& sound, std::size_t hop);

/// All frequencies together, a quiet cymbal counting beside a loud bass; a change of pitch as a whole does not
/// matter.
Onsets onsetsOf(const StereoSound& sound);

/// The same, blurred to about this many seconds and with fewer moments by the divisor.
Onsets blurred(const Onsets& onsets, double seconds, std::size_t divisor);

}  // namespace heard
