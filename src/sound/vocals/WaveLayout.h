#pragma once

#include "engines/VocalRemoverEngine.h"
#include "sound/media/RegularFile.h"
#include "sound/media/WaveSamples.h"
#include "sound/units/Frames.h"

#include <cstdint>

namespace sound {

/// How a RIFF WAVE file keeps a sound in two channels, and where.
struct WaveLayout
{
    WaveSamples samples = WaveSamples::Float32;
    SampleRate rate;
    std::int64_t begin = 0;  ///< Of the first frame, in bytes.
    FrameCount length;
};

constexpr int bytesPerFrame(WaveSamples samples)
{
    return 2 * bytesPerSample(samples);
}

struct ReadWaveLayout
{
    VocalRemoval result = VocalRemoval::Done;
    WaveLayout layout;  ///< Means nothing unless it is Done.
};

/// Reads the head of a file, up to its sound, and takes nothing on trust: what is there must agree with itself and
/// with the size of the file. Otherwise the result is the first thing that is wrong, NotRiff to CannotReadInput.
///
/// Chunks that are no part of a sound are passed over, and what stands behind the sound is not looked at. The sound
/// ends with the file where it should be longer, and where its size was never told (0 or all ones, as writers leave
/// it that did not come to their end). A part of a frame at its end is no frame.
///
/// Any thread.
ReadWaveLayout readWaveLayout(const RegularFile& file);

}  // namespace sound
