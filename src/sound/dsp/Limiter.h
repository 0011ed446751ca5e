#pragma once

#include "sound/units/Frames.h"

#include <vector>

namespace sound {

/// Keeps a stereo sound within full scale. Below full scale not a bit is changed.
///
/// A peak above it is turned down together with what is around it: within a block the gain falls over a millisecond
/// before the peak, and it comes back over a tenth of a second. Render thread; only the constructor allocates.
class Limiter
{
public:
    explicit Limiter(FrameCount largestBlock);

    void prepare(SampleRate rate);
    void reset();
    void process(float* stereo, FrameCount count);

private:
    std::vector<float> wanted;
    float gain = 1;
    float attackStep = 1;
    float releasePart = 0;
};

}  // namespace sound
