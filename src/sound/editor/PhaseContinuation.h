#pragma once

#include "sound/dsp/WindowedTransform.h"
#include "sound/units/Frames.h"

#include <array>
#include <cstddef>
#include <vector>

namespace sound {

/// Lets the notes that sound from one piece into the next go on at the phase that they have.
///
/// A stretcher keeps the frequency of each partial, and begins it with the phase that it has in the source where
/// the piece begins. So two pieces differ, in what both render, by an angle for each partial that stays the same
/// for as long as it sounds. Here that angle is measured and the coming piece's partial is turned by it, until it
/// has died away or is struck again. Before that it goes back to its own phase, for an attack is only sharp where
/// all of its partials stand as they were rendered. What is no steady partial, and all treble, stays as it is, to
/// the bit.
///
/// **Threads.** One at a time.
class PhaseContinuation
{
public:
    /// @p channels is 1 or 2.
    PhaseContinuation(SampleRate rate, int channels);

    /// @p leaving is the end of a piece, SpectralJoin::length() frames, and sounds at the same time as the
    /// beginning of @p coming, which is no shorter. Both are interleaved.
    void carryOn(const float* leaving, std::vector<float>& coming);

private:
    struct Partial
    {
        float angle = 0;                // from the coming to the leaving piece, radians
        std::vector<std::size_t> path;  // the middle of its peak, for each window in which it sounds
        std::array<float, WindowedTransform::stepsAWindow> lately{};  // its power in the last windows, by turns
        float firstPower = 0;
        std::size_t end = 0;  // the window from which on it has its own phase
    };

    void findPartials(const float* leaving, const float* coming);
    void followPartials(const std::vector<float>& coming);
    bool soundsOn(Partial& partial, std::size_t index, std::size_t lowest) const;
    void turnPartials(std::vector<float>& coming);
    void turn(const Partial& partial, std::size_t index);
    void analyse(const std::vector<float>& coming, std::size_t index);
    void addDifference(std::vector<float>& coming, std::size_t index);

    std::size_t channels;
    std::size_t common;  // frames
    WindowedTransform transform;
    std::size_t firstWhole;  // the first window that does not begin before the piece
    std::vector<Partial> partials;
    std::vector<Spectrum> spectra;  // of the coming piece, for each channel
    std::vector<Spectrum> others;   // of the leaving one; of the difference that the turning makes
    std::vector<float> power;       // of the coming piece's spectra, as far up as partials are turned
    std::vector<float> stretch;     // of the coming piece, a window long
    std::vector<float> difference;  // to it, likewise
};

}  // namespace sound
