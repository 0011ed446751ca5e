#include "sound/dsp/Changes.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr float greatestSpeedChange = 60;
constexpr float greatestPitchChange = 12;

// Cut to a range on both sides of 0; what is no number changes nothing.
float cut(float value, float greatest)
{
    return std::isfinite(value) ? std::clamp(value, -greatest, greatest) : 0;
}

}  // namespace

double speedFactor(float percent)
{
    return 1 + static_cast<double>(cut(percent, greatestSpeedChange)) / 100;
}

double pitchFactor(float semitones)
{
    return std::exp2(static_cast<double>(cut(semitones, greatestPitchChange)) / 12);
}

}  // namespace sound
