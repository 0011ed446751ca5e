#pragma once

#include "sound/media/SoundFormat.h"
#include "sound/recorder/FileFrames.h"
#include "sound/units/Frames.h"

#include <QString>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace sound {

class RecordingFile;

/// What kind of file a recording goes to.
struct RecordingFormat
{
    SoundFormat format;
    SampleRate rate;
    int channels = 2;

    bool operator==(const RecordingFormat& other) const { return rate == other.rate && channels == other.channels; }
};

/// Writes captured sound to one file after the other, each frame to just one of them.
///
/// Files of the same rate and channels hold one sound, cut to the frame: also where the rate is not the captured
/// one and frames leave the converter later than they come, so that a file may be finished a moment after the next
/// one was begun. **Threads.** One at a time.
class FileSequence
{
public:
    explicit FileSequence(SampleRate captured);

    /// Finishes.
    ~FileSequence();

    bool isOpen() const { return !parts.empty(); }

    /// The frames that follow go to this file. False where it cannot be made: then all is finished.
    bool begin(const QString& path, const RecordingFormat& format);

    /// False when the disc is full or fails: then all is finished, and holds what came before.
    bool write(std::span<const float> stereo);

    /// The sound comes from elsewhere now, at this rate, and goes on in the same file.
    bool changeRate(SampleRate captured);

    /// Brings all that was written into the files and closes them. False where one could not be finished.
    bool finish();

private:
    struct Part;

    bool distribute();
    bool endConversion();
    bool closeComplete();

    SampleRate captured;
    RecordingFormat current;
    std::optional<FileFrames> conversion;
    std::vector<float> converted;
    std::deque<Part> parts;  // the last one is the file that is open, those before await their last frames
    FrameCount given;        // frames that left the conversion
};

}  // namespace sound
