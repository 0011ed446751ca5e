#pragma once

#include "sound/units/Frames.h"

namespace sound {

/// The largest deflections of a stretch of stereo sound, full scale is 1.
struct Peaks
{
    float left = 0;
    float right = 0;
};

Peaks peaksOf(const float* stereo, FrameCount count);

/// The larger of the two, a side.
Peaks higher(Peaks one, Peaks other);

/// As a meter shows it: 0 to 32767, full scale and above is 32767.
short meterLevel(float peak);

}  // namespace sound
