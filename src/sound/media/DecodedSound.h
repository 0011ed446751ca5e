#pragma once

#include "engines/EngineError.h"
#include "sound/media/SampleSource.h"

#include <QString>
#include <memory>

namespace sound {

class DecodedSound;

/// A sound, or why there is none: exactly one of the two is set.
struct OpenedSound
{
    std::unique_ptr<DecodedSound> sound;
    EngineError error = EngineError::None;
};

/// A sound file, or a track of an audio CD, that is decoded into memory by a thread of its own.
///
/// open() counts what is in the file, so that length() is the truth and not what a header claims, and returns
/// before the decoding has got far; the rest appears behind available(). Encoder delay and padding that the file
/// declares are cut. What cannot be decoded in the middle of a file is silence of its length.
///
/// Files are not to be trusted: only known formats are opened, only the named file is read (no playlist, no
/// address, no reference to another file), and neither the memory nor the time taken depends on what a header
/// claims.
class DecodedSound : public SampleSource
{
public:
    /// Any thread. @p path is absolute; a .cda file names a track of the audio CD it lies on, or of a disc image (a
    /// .cue beside its .bin) in the same folder.
    static OpenedSound open(const QString& path);

    /// True when the decoder has stopped: at the end, or because of an error or of no more room.
    virtual bool finished() const = 0;

    /// Blocks until @p count frames are available() or decoding has stopped; for tests and jobs, never for the
    /// render thread. Returns whether they are available.
    virtual bool waitFor(FrameCount count) const = 0;

    /// None, or what stopped the decoding early. Valid once finished().
    virtual EngineError decodeError() const = 0;
};

}  // namespace sound
