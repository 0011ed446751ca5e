#pragma once

#include "engines/AudioProject.h"
#include "engines/DiscWriteError.h"
#include "sound/units/Frames.h"

#include <QString>
#include <compare>
#include <cstdint>
#include <optional>

namespace sound {

/// What tells whether a file has been changed, without reading it.
struct FileStamp
{
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::int64_t size = 0;
    std::int64_t changedAt = 0;  // nanoseconds

    bool operator==(const FileStamp&) const = default;
};

/// A sound file that is to be a track of a disc, as it was when it was added.
struct DiscTrack
{
    static constexpr SampleRate discRate{44100};

    QString file;  // absolute
    AudioProject::Format format = AudioProject::Wav;
    SampleRate rate;
    FrameCount length;  // at that rate, counted
    FileStamp stamp;

    /// Of the disc; the last begun counts.
    FrameCount discFrames() const;

    /// What the track needs on the disc: whole sectors, and no fewer than a track has.
    std::int64_t sectors() const;
};

/// Counts what is in the file. Nothing where it is no sound of a format that discs are made from, or has fewer
/// frames a second than a disc. May block for as long as it takes to read the file once.
std::optional<DiscTrack> readDiscTrack(const QString& file);

/// Whether the file is the one that was added, as far as that shows without reading it.
bool isUntouched(const DiscTrack& track);

/// Why the file is not the one that was added: it cannot be read any more, or its sound has another length or rate.
/// Other changes, of its tags say, are none. Quick, unless the file has been touched.
std::optional<DiscWriteError> changeOf(const DiscTrack& track);

DiscWriteError changedSourceError(const DiscTrack& track);

}  // namespace sound
