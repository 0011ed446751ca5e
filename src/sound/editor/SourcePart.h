#pragma once

#include "sound/media/FrameStream.h"
#include "sound/units/Frames.h"

#include <memory>
#include <vector>

namespace sound {

/// A stretch of a sound, read once in order: always as many frames as were asked for. What a damaged sound lacks is
/// silence.
///
/// **Threads.** One at a time; stop() from any.
class SourcePart
{
public:
    SourcePart(std::unique_ptr<FrameStream> stream, FramePosition begin, FrameCount length);

    SampleRate rate() const { return stream->rate(); }
    int channels() const { return stream->channels(); }
    FrameCount length() const { return count; }

    /// Adds up to @p wanted frames to @p interleaved and returns how many; fewer only at the end, and after stop().
    FrameCount read(FrameCount wanted, std::vector<float>& interleaved);

    /// How many of the frames that read() gave were not there.
    FrameCount missing() const { return lacking; }

    /// Makes a read() under way return soon.
    void stop() { stream->stop(); }

private:
    void fill();

    std::unique_ptr<FrameStream> stream;
    FrameCount toSkip;
    FrameCount count;
    FrameCount given;
    FrameCount lacking;
    std::vector<float> decoded;
    std::size_t used = 0;  // samples of it
    bool ended = false;
};

}  // namespace sound
