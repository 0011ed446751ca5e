#pragma once

#include "sound/dsp/WindowedTransform.h"
#include "sound/units/Frames.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace sound {

/// Leads over from one rendering of a sound to another one whose partials stand at other phases.
///
/// Two stretchers that began at different places agree in what sounds and how loud, and not in phase: a cross-fade
/// would let each partial dip by as much as the two cancel. Here both are taken apart into short overlapping
/// spectra; from one to the next, each partial's strength goes from the one's to the other's and its phase turns
/// the shorter way round, the whole of a spectral peak together, so that it keeps its shape. (The peaks as regions
/// of common phase: Laroche and Dolson, "Improved phase vocoder time-scale modification of audio", 1999.)
///
/// At its beginning the result is the leaving sound, at its end the coming one, to the last bits of a float.
///
/// **Threads.** One at a time.
class SpectralJoin
{
public:
    /// @p channels is 1 or 2.
    SpectralJoin(SampleRate rate, int channels);

    /// Over how many frames it leads: about a third of a second.
    static FrameCount length(SampleRate rate);

    /// All three hold length() frames, interleaved; @p joined may be one of the others.
    void join(const float* leaving, const float* coming, float* joined);

private:
    struct Pair
    {
        Spectrum leaving;
        Spectrum coming;
    };

    void analyse(const float* interleaved, std::size_t index, int channel, Spectrum& spectrum);
    void findPeaks();
    void turnPeaks(bool first);
    void mix(const Pair& pair, float progress, Spectrum& mixed) const;
    void keepStrength(std::size_t index, int channel);
    void addUp();
    Spectrum& between(std::size_t index, int channel)
    {
        return spectra[index * pairs.size() + static_cast<std::size_t>(channel)];
    }

    int channels;
    WindowedTransform transform;
    std::vector<Pair> pairs;                 // for each channel
    std::vector<std::complex<float>> cross;  // from the leaving to the coming sound, of all channels
    std::vector<float> power;
    std::vector<std::size_t> peakOf;  // for each bin
    std::vector<float> turn;          // for each bin, going on from spectrum to spectrum
    Spectrum really;                  // what is in the sum
    std::vector<Spectrum> spectra;    // between the two, for each step and channel
    std::vector<float> sum;           // of them, interleaved
    std::vector<float> rest;          // what sounds where they do not reach
    std::vector<float> covered;       // how much of each frame is in the sum
};

}  // namespace sound
