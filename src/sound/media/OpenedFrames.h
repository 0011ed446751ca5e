#pragma once

#include "engines/EngineError.h"
#include "sound/media/FrameStream.h"

#include <QString>
#include <memory>

namespace sound {

/// The frames of a sound in order, or why there are none: exactly one of the two is set.
struct OpenedFrames
{
    std::unique_ptr<FrameStream> stream;
    EngineError error = EngineError::None;
};

/// Opens a sound file, or the track of an audio CD that a .cda file names, for reading once from its beginning to
/// its end, without keeping anything of it. @p path is absolute.
///
/// InvalidSoundFile where it is no sound of a known format; for a CD what openCdTrack() tells. Nothing but the
/// named file is read, as DecodedSound says. Any thread; counting the frames reads the whole file, so it may block
/// for as long as the disc needs for that.
OpenedFrames openFrames(const QString& path);

}  // namespace sound
