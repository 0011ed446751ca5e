#pragma once

#include "engines/EngineError.h"
#include "sound/media/WaveHead.h"
#include "sound/media/WholeFile.h"
#include "sound/units/Frames.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sound {

/// Writes a RIFF WAVE file that is there whole under its name, or not at all, as a WholeFile is.
///
/// **Order.** write() any number of times, then finish() once. **Threads.** One at a time.
class WaveWriter
{
public:
    /// Makes the folders that are missing. Null where the file cannot be made. @p channels is 1 or 2.
    static std::unique_ptr<WaveWriter> create(const QString& path, SampleRate rate, int channels,
                                              WaveSamples samples);

    /// Adds frames, packed as packSamples() does. False when the disc is full or fails; the file can then not be
    /// finished.
    bool write(std::span<const float> interleaved);

    /// None, or FileCreationFailed.
    EngineError finish();

private:
    WaveWriter(std::unique_ptr<WholeFile> file, SampleRate rate, int channels, WaveSamples samples);

    bool flush();

    std::unique_ptr<WholeFile> file;
    SampleRate rate;
    int channels;
    WaveSamples samples;
    std::int64_t samplesWritten = 0;
    std::int64_t end = 0;  // of the file so far
    std::vector<std::uint8_t> gathered;
    bool failed = false;
};

}  // namespace sound
