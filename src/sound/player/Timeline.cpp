#include "sound/player/Timeline.h"

#include <algorithm>

namespace sound {

void Timeline::append(TimelineEntry added, FrameCount frames)
{
    added.begin = last;
    last += frames.value;
    added.end = last;
    entries[next] = added;
    next = (next + 1) % capacity;
    count = std::min(count + 1, capacity);
}

const TimelineEntry& Timeline::entry(std::size_t back) const
{
    return entries[(next + capacity - 1 - back) % capacity];
}

const TimelineEntry& Timeline::at(std::int64_t frame) const
{
    std::size_t back = 0;
    while (back + 1 < count && entry(back).begin > frame)
        ++back;
    return entry(back);
}

Peaks Timeline::peaksBetween(std::int64_t from, std::int64_t to) const
{
    Peaks peaks;
    for (std::size_t back = 0; back < count && entry(back).begin >= from; ++back) {
        if (entry(back).begin < to)
            peaks = higher(peaks, entry(back).peaks);
    }
    return peaks;
}

}  // namespace sound
