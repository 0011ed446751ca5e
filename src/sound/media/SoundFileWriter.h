#pragma once

#include "engines/EngineError.h"
#include "sound/media/SoundFormat.h"
#include "sound/media/SoundTags.h"
#include "sound/units/Frames.h"

#include <QString>
#include <memory>
#include <span>

namespace sound {

class SoundFileWriter;

/// A writer, or why there is none: exactly one of the two is set.
struct OpenedSoundFileWriter
{
    std::unique_ptr<SoundFileWriter> writer;
    EngineError error = EngineError::None;
};

/// Writes a sound file of any format, which is there whole under its name or not at all, as a WholeFile is.
///
/// Read back, WAV and FLAC hold just the frames that were written. MP3, MP4 and Ogg Vorbis tell what their encoders
/// add, so that players which heed it play just as many frames, each in its place. AAC and WMA have no means for
/// that: AAC begins with 1024 frames of silence and ends with up to as many, WMA ends with 2048 to 4095.
///
/// Tags are written as far as the format holds them, and a cover that cannot be kept is left out: the sound is what
/// matters. The same calls make the same file, to the byte.
///
/// **Order.** write() any number of times, then finish() once. A writer that goes unfinished leaves nothing behind.
/// **Threads.** One at a time.
class SoundFileWriter
{
public:
    /// Makes the folders that are missing. @p channels is 1 or 2.
    ///
    /// InvalidExportSettings where the format does not hold this rate or these settings, FileCreationFailed where
    /// the file cannot be made.
    static OpenedSoundFileWriter create(const QString& path, const SoundFormat& format, SampleRate rate,
                                        int channels, const SoundTags& tags = {});

    virtual ~SoundFileWriter() = default;

    /// Adds whole frames, at full scale from -1 to 1. Formats of 16 bits cut what is beyond and get dither (see
    /// SixteenBits); AAC and MP4 are turned down where they come near it, and the others keep it. False when the
    /// disc is full or fails; the file can then not be finished.
    virtual bool write(std::span<const float> interleaved) = 0;

    /// None, or FileCreationFailed.
    virtual EngineError finish() = 0;
};

}  // namespace sound
