#pragma once

#include "sound/media/WaveSamples.h"
#include "sound/units/Frames.h"

#include <cstdint>
#include <vector>

namespace sound {

/// All that stands before the samples of a RIFF WAVE file of so many frames. Of one size whatever the length, so
/// that it can be written first and mended last: a file beyond 4 GiB becomes an RF64, whose 64-bit sizes take the
/// place of a chunk that was kept free for them.
std::vector<std::uint8_t> waveHead(SampleRate rate, int channels, WaveSamples samples, FrameCount length);

}  // namespace sound
