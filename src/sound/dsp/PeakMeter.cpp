#include "sound/dsp/PeakMeter.h"

#include <algorithm>
#include <cmath>

namespace sound {

Peaks peaksOf(const float* stereo, FrameCount count)
{
    Peaks peaks;
    for (std::int64_t frame = 0; frame < count.value; ++frame) {
        peaks.left = std::max(peaks.left, std::abs(stereo[2 * frame]));
        peaks.right = std::max(peaks.right, std::abs(stereo[2 * frame + 1]));
    }
    return peaks;
}

Peaks higher(Peaks one, Peaks other)
{
    return {std::max(one.left, other.left), std::max(one.right, other.right)};
}

short meterLevel(float peak)
{
    return static_cast<short>(std::lround(std::clamp(peak, 0.0F, 1.0F) * 32767));
}

}  // namespace sound
