#pragma once

#include "sound/vocals/BassHarmonics.h"
#include "sound/vocals/Rows.h"

#include <cstddef>

namespace sound {

/// The spectra of a stereo sound, turned so that the voice is in one of its two channels only: along is the sound
/// in the voice's direction, across what stands at right angles to it and holds nothing of the voice.
struct TurnedSpectra
{
    TurnedSpectra(std::size_t windows, std::size_t bins, std::size_t bassBins);

    Rows alongReal, alongImaginary;
    Rows acrossReal, acrossImaginary;
    Rows bass;  // power along, of the bins from 0 on
};

/// Tells what of the sound along is the voice.
///
/// An instrument to the side is in both channels, along and across, in a proportion that is its own. Where the
/// voice is weak that proportion can be heard, and since an instrument keeps its place, it holds for the moments
/// when the voice covers it: what is across then tells the instrument's part along, to be left where it is, with
/// its phase and at its level. So the proportion is the one of least squares over a quarter of a second on either
/// side, and each moment counts for the less, the more voice is in it (the weights that make it the likeliest one
/// for a voice of changing strength).
///
/// What remains along is the voice, the instruments in its direction and the room. How much of it is music is
/// reckoned from how strong the music is across, and from the bass that lies below (BassHarmonics); a soft mask
/// leaves that share. It is smoothed over time and frequency and never quite closed, for holes that come and go are
/// heard as a warbling.
class VoiceEstimate
{
public:
    /// How many windows before and behind one decide about it, and how many bins below and above.
    static constexpr std::size_t windowsAround = 25;
    static constexpr std::size_t binsAround = 5;

    /// The first bin of @p sound, which outlives the estimate, is bin @p firstBin of the whole spectrum.
    VoiceEstimate(TurnedSpectra& sound, std::size_t firstBin, const BassHarmonics& harmonics);

    /// The voice takes the place of the sound along. Only once. The outermost windowsAround windows and binsAround
    /// bins are left as anything.
    void estimate();

private:
    void relate();
    void measureRest();
    void weigh();
    void decideShares();
    void takeShares();

    TurnedSpectra& sound;
    std::size_t firstBin;
    const BassHarmonics& harmonics;

    Rows weight;  // of each moment in the proportion
    Rows real;    // of the proportion, along to across
    Rows imaginary;
    Rows acrossPower;  // smoothed
    Rows rest;         // power along that the proportion does not tell, smoothed
    Rows share;        // of the music in the rest, as an amplitude
    Rows work;
};

}  // namespace sound
