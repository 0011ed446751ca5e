#pragma once

#include "practicetrack/Score.h"
#include "wave/StereoSound.h"

namespace practice {

inline constexpr int kRate = 44100;
inline constexpr double kRingOutSeconds = 2;

/// The score played and mixed: sixteen bars and their last chord, 34 seconds, peak at 1.5 decibels below full
/// scale. Every call returns the same samples.
StereoSound track();

}  // namespace practice
