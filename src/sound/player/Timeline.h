#pragma once

#include "sound/dsp/PeakMeter.h"
#include "sound/player/PlayWindow.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace sound {

/// What one stretch of the output stands for.
struct TimelineEntry
{
    std::int64_t begin = 0;  ///< Its first output frame, counted since the player was made.
    std::int64_t end = 0;
    double position = 0;  ///< The running source frame that its first frame stands for.
    double slope = 0;     ///< Source frames an output frame.
    PlayWindow window;
    std::uint64_t serial = 0;
    std::uint64_t jump = 0;
    Peaks peaks;
    bool ended = false;  ///< The window's end lies before it.
};

/// The last stretches of output, so that it can be told what is heard now from how many frames are still under way.
/// Render thread; allocates nothing.
class Timeline
{
public:
    /// Appends a stretch of @p frames output frames; its begin and end are filled in.
    void append(TimelineEntry entry, FrameCount frames);

    /// Output frames appended since the beginning.
    std::int64_t end() const { return last; }

    /// The stretch that output frame @p frame lies in; the nearest one where it is forgotten or not written yet.
    const TimelineEntry& at(std::int64_t frame) const;

    /// The peaks of all stretches that begin in [from, to).
    Peaks peaksBetween(std::int64_t from, std::int64_t to) const;

private:
    static constexpr std::size_t capacity = 1024;  // ten seconds, more than any output delays

    const TimelineEntry& entry(std::size_t back) const;

    std::array<TimelineEntry, capacity> entries{};
    std::size_t next = 0;
    std::size_t count = 0;
    std::int64_t last = 0;
};

}  // namespace sound
