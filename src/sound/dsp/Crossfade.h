#pragma once

#include "sound/units/Frames.h"

#include <cstddef>

namespace sound {

/// The two weights at one moment of a cross-fade.
struct FadeWeights
{
    float leaving = 0;
    float coming = 0;
};

/// How alike two stretches of sound are: their correlation, 0 (unrelated, or opposed) to 1 (the same but for
/// level).
double similarity(const float* one, const float* other, std::size_t samples);

/// The weights at @p progress, 0 to 1, of a fade between sounds of this similarity.
///
/// Weights that add up to 1 would let unrelated sounds dip by 3 dB half way, weights of equal power would let like
/// ones swell by 3 dB: these keep the power of the sum at every similarity.
FadeWeights fadeWeights(double progress, double similarity);

/// Fades from @p leaving to @p coming over all @p count frames, into @p coming.
void crossfade(const float* leaving, float* coming, FrameCount count, int channels);

/// Fades out over the first @p fade frames of @p count, silence behind them.
void fadeOut(float* interleaved, FrameCount fade, FrameCount count, int channels);

/// Fades in over the first @p fade frames.
void fadeIn(float* interleaved, FrameCount fade, int channels);

}  // namespace sound
