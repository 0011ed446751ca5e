#pragma once

namespace sound {

/// How a sound is changed while it plays, each as a factor: 1 is unchanged.
struct Changes
{
    double tempo = 1;  ///< Speed without pitch.
    double pitch = 1;  ///< Frequency without speed.
    double rate = 1;   ///< Speed and frequency together.

    bool operator==(const Changes&) const = default;

    bool stretches() const { return tempo != 1 || pitch != 1; }
    bool resamples() const { return rate != 1; }
};

}  // namespace sound
