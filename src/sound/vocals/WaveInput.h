#pragma once

#include "sound/vocals/WaveLayout.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <span>

namespace sound {

class WaveInput;

struct OpenedWaveInput
{
    std::unique_ptr<const WaveInput> input;  ///< Null unless the result is Done.
    VocalRemoval result = VocalRemoval::Done;
};

/// A sound in a RIFF WAVE file, in two channels, of which every part can be read at any time.
///
/// **Threads.** Any.
class WaveInput
{
public:
    /// Otherwise CannotOpenInput, or what readWaveLayout() finds. Nothing but a regular file is ever opened.
    static OpenedWaveInput open(const QString& path);

    WaveSamples samples() const { return layout.samples; }
    SampleRate rate() const { return layout.rate; }
    FrameCount length() const { return layout.length; }

    /// Fills @p packed with the frames from @p from on as they stand in the file, none of them before the beginning
    /// or beyond the end. False where the file does not have them any more.
    bool read(FramePosition from, std::span<std::uint8_t> packed) const;

private:
    WaveInput(std::shared_ptr<const RegularFile> file, const WaveLayout& layout);

    std::shared_ptr<const RegularFile> file;
    WaveLayout layout;
};

}  // namespace sound
