#pragma once

#include "wave/StereoSound.h"

namespace heard {

/// How far a stretch is from being a copy of a part of the original.
struct Difference
{
    double originalSecond = 0;  ///< Where in the original the stretch begins, to the frame.
    double largest = 0;         ///< The largest difference of any sample; 0 is a copy to the bit.
};

/// Lays the stretch where it fits best and compares sample by sample. Both sounds have the same rate, and the
/// stretch is the shorter one.
Difference differenceOf(const StereoSound& stretch, const StereoSound& original);

}  // namespace heard
