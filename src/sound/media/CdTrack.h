#pragma once

#include "sound/media/OpenedFrames.h"

#include <QString>
#include <cstdint>
#include <optional>
#include <span>

namespace sound {

/// The number of the track that the content of a .cda file names; nothing where it is no such file.
std::optional<int> trackNamedBy(std::span<const std::uint8_t> stub);

/// Opens the track that the .cda file at @p path names: of the disc image in the same folder (a .cue beside the
/// .bin of the same name) where there is one, else of the drive whose disc the file lies on.
///
/// InvalidSoundFile where the file is no such stub, InvalidDrive where it lies on no CD, DriveNotReady where the
/// disc cannot be read, InvalidCdTrack and NotAnAudioTrack as they say. The length is the disc's, whatever the stub
/// claims.
OpenedFrames openCdTrack(const QString& path);

}  // namespace sound
