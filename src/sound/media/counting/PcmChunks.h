#pragma once

#include "sound/media/RegularFile.h"

#include <cstdint>
#include <optional>

namespace sound {

/// A stretch of a file, within its true size.
struct ByteRange
{
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

/// Where the samples lie in a RIFF WAVE, RF64, Wave64, AIFF or AIFF-C file; nothing where it is none of these or
/// has no samples.
///
/// A writer that never came to its end leaves a length of 0 or of all ones behind, and a file can have lost its
/// end: the samples then go as far as the file does. Where a RIFF WAVE file tells a length of 0 and has only other
/// chunks behind that, up to the end that it tells of itself, it is a sound without samples: the range is empty.
std::optional<ByteRange> findPcmSamples(const RegularFile& file);

struct WaveChunks
{
    ByteRange form;  ///< The body of the format chunk; empty where none stands before the samples.
    ByteRange samples;
};

/// The same for a RIFF WAVE or RF64 file, and what tells of its samples. Nothing for other files.
std::optional<WaveChunks> findWaveChunks(const RegularFile& file);

}  // namespace sound
