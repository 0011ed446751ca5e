#pragma once

#include <array>
#include <cstddef>

namespace sound {

/// Which place of its input a stretching block's output stands for: a line with bends, from output frames to input
/// frames.
///
/// Both axes are real numbers of frames. A change of speed that is made now is not heard at once but at some place
/// further on, when what is already inside the block has left it; the map therefore reaches a little into the
/// future. Render thread; allocates nothing.
class TimeMap
{
public:
    /// Forgets everything: from output @p output on, which stands for input @p input, each output frame takes
    /// @p inputPerOutput frames of input.
    void start(double output, double input, double inputPerOutput);

    double inputAt(double output) const;

    /// Input frames an output frame at @p output.
    double slopeAt(double output) const;

    /// Everything after @p output comes to lie @p factor times as far from it in output frames: what waits inside
    /// the block is played faster (below 1) or slower.
    void scaleOutputAfter(double output, double factor);

    /// From input place @p input on the slope is @p inputPerOutput; bends beyond it are dropped.
    void bendAtInput(double input, double inputPerOutput);

    /// Bends before @p output are no longer asked for.
    void forgetBefore(double output);

private:
    struct Bend
    {
        double output = 0;
        double input = 0;
        double slope = 1;
    };

    // More bends than changes can be made before the first has left the block; a further one replaces the last.
    static constexpr std::size_t capacity = 64;

    const Bend& bendFor(double output) const;

    std::array<Bend, capacity> bends{};
    std::size_t count = 1;
};

}  // namespace sound
