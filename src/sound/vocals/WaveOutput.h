#pragma once

#include "sound/media/WaveSamples.h"
#include "sound/media/WholeFile.h"
#include "sound/units/Frames.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>

namespace sound {

/// A RIFF WAVE file in two channels whose parts are written in any order. It is there whole under its name, or not
/// at all, as a WholeFile is.
///
/// **Order.** write() until each frame has been written once, bringToDisc() if wanted, then finish() once.
/// **Threads.** write() from any; all else one at a time.
class WaveOutput
{
public:
    /// Makes the folders that are missing. Null where the file cannot be made.
    static std::unique_ptr<WaveOutput> create(const QString& path, WaveSamples samples, SampleRate rate,
                                              FrameCount length);

    /// Frames as they are to stand in the file. False when the disc is full or fails; the file can then not be
    /// finished.
    bool write(FramePosition from, std::span<const std::uint8_t> packed);

    /// As those of WholeFile.
    bool bringToDisc() { return file->bringToDisc(); }
    bool finish() { return file->finish(); }

private:
    WaveOutput(std::unique_ptr<WholeFile> file, WaveSamples samples, std::int64_t begin);

    std::mutex mutex;
    std::unique_ptr<WholeFile> file;
    WaveSamples samples;
    std::int64_t begin;  // of the first frame, in bytes
};

}  // namespace sound
