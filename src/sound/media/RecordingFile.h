#pragma once

#include "engines/EngineError.h"
#include "sound/media/SoundFormat.h"
#include "sound/units/Frames.h"

#include <QString>
#include <memory>
#include <span>

namespace sound {

class RecordingFile;

/// A file, or why there is none: exactly one of the two is set.
struct OpenedRecordingFile
{
    std::unique_ptr<RecordingFile> file;
    EngineError error = EngineError::None;
};

/// Writes a recording while it is made. The file is there under its own name from the begin, and holds at every
/// moment what has been recorded, whole, up to the last half of a second: whatever ends the program, any player
/// plays it as it is. The machine may end too: what is older than a second or so is on the disc.
///
/// Finished it is what a SoundFileWriter makes of the same sound, and holds the same frames in the same places.
///
/// **Order.** write() any number of times, then finish() once. **Threads.** One at a time; it has another of its
/// own, for the disc.
class RecordingFile
{
public:
    /// Makes the folders that are missing, and takes the place of the file that bore the name. @p rate is that of
    /// the file, @p channels is 1 or 2.
    ///
    /// InvalidExportSettings where the format does not hold this rate or these settings, FileCreationFailed where
    /// the file cannot be made; what bore the name is then untouched.
    static OpenedRecordingFile create(const QString& path, const SoundFormat& format, SampleRate rate,
                                      int channels);

    /// Finishes what is not finished.
    virtual ~RecordingFile() = default;

    /// Adds whole frames, any number of them, as SoundFileWriter::write() does. It does not wait for the disc.
    /// False when the disc is full or fails: the file is then whole as far as it got, and takes no more.
    virtual bool write(std::span<const float> interleaved) = 0;

    /// Brings all to the disc, and waits for that. None, or FileCreationFailed where something of what was written
    /// is not in the file, which is whole nevertheless.
    virtual EngineError finish() = 0;
};

}  // namespace sound
