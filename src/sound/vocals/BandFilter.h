#pragma once

#include "sound/dsp/RealTransform.h"

#include <cstddef>
#include <span>

namespace sound {

/// Lets through what lies between two frequencies, without any shift of time or phase. A third of an octave outside
/// them it lets less than -90 dB through.
///
/// A windowed sinc (Kaiser, "Nonrecursive digital filter design using the I0-sinh window function", 1974) whose
/// convolution is done block by block in the frequency domain.
class BandFilter
{
public:
    /// All in hertz; 0 < @p low < @p high. A block will hold a power of two of samples, at least @p leastBlock.
    BandFilter(double rate, double low, double high, std::size_t leastBlock);

    /// How many samples before and behind a block decide about it.
    std::size_t reach() const { return transform.size() / 4; }

    /// How many samples are filtered at a time.
    std::size_t block() const { return transform.size() / 2; }

    /// Takes reach() samples, a block, and reach() samples again; brings the block.
    void filter(std::span<const float> from, std::span<float> to);

private:
    RealTransform transform;
    std::vector<float> response;  // of each bin: it is symmetrical, so that it has no phase
};

}  // namespace sound
