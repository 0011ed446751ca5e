#pragma once

namespace sound {

/// How a sound is changed, each as a factor: 1 is unchanged.
struct Changes
{
    double tempo = 1;  ///< Speed without pitch.
    double pitch = 1;  ///< Frequency without speed.
    double rate = 1;   ///< Speed and frequency together.

    bool operator==(const Changes&) const = default;

    bool stretches() const { return tempo != 1 || pitch != 1; }
    bool resamples() const { return rate != 1; }
};

/// The factor of a change of tempo or rate in percent, which is cut to -60 to 60: what is promised, and measured.
double speedFactor(float percent);

/// The factor of a change of pitch in semitones, which is cut to -12 to 12.
double pitchFactor(float semitones);

}  // namespace sound
