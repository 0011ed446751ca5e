#pragma once

#include "sound/units/Frames.h"

#include <vector>

namespace sound {

/// Keeps a stereo sound within a ceiling, which is full scale unless told otherwise. Below it not a bit is changed.
///
/// A peak above it is turned down together with what is around it: within a block the gain falls over a millisecond
/// before the peak, and it comes back over a tenth of a second. Render thread; only the constructor allocates.
class Limiter
{
public:
    explicit Limiter(FrameCount largestBlock, float ceiling = 1);

    void prepare(SampleRate rate);
    void reset();
    void process(float* stereo, FrameCount count);

private:
    std::vector<float> wanted;
    float ceiling;
    double gain = 1;  // its last steps back to 1 are smaller than a float's last bit
    float attackStep = 1;
    double releasePart = 0;
};

}  // namespace sound
