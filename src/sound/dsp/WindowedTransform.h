#pragma once

#include "sound/dsp/RealTransform.h"

#include <cstddef>
#include <vector>

namespace sound {

/// Takes short stretches of a sound apart into spectra and puts them together again, under a window both times.
/// Spectra that are taken step() apart, and put back where they were, add up to the sound.
///
/// **Threads.** Each is used by one thread at a time; they are made and destroyed by any.
class WindowedTransform
{
public:
    static constexpr std::size_t stepsAWindow = 8;

    /// @p windowSize in frames, a power of two from 16; @p steps, at least 4, go to one window.
    explicit WindowedTransform(std::size_t windowSize, std::size_t steps = stepsAWindow);

    std::size_t size() const { return window.size(); }
    std::size_t step() const { return window.size() / steps; }
    std::size_t bins() const { return transform.bins(); }

    /// Of size() samples, each @p stride behind the last; @p spectrum holds bins().
    void analyse(const float* first, std::size_t stride, Spectrum& spectrum);

    /// Adds what @p spectrum stands for to size() samples, each @p stride behind the last.
    void add(const Spectrum& spectrum, float* first, std::size_t stride);

    /// How much of the sound one spectrum brings back at this frame of its window; step() apart they add up to 1.
    float share(std::size_t frame) const { return window[frame] * window[frame] / overlap; }

private:
    std::size_t steps;
    float overlap;  // what the squares of the windows that lie over one frame add up to
    std::vector<float> window;
    RealTransform transform;
};

}  // namespace sound
