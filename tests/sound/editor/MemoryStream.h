#pragma once

#include "sound/Signals.h"
#include "sound/editor/SourcePart.h"
#include "sound/media/FrameStream.h"

#include <algorithm>
#include <atomic>
#include <memory>

namespace sound::test {

/// Reads a sound in memory in order, some thousand frames at a time, as a decoder does.
class MemoryStream : public FrameStream
{
public:
    explicit MemoryStream(MemorySound wanted)
        : sound(std::move(wanted))
        , there(sound.length())
    {
    }

    SampleRate rate() const override { return sound.rate(); }
    int channels() const override { return sound.channels(); }
    FrameCount length() const override { return sound.length(); }

    bool next(std::vector<float>& interleaved) override
    {
        const std::int64_t count = std::min(atOnce, there.value - read.load());
        if (stopped || count <= 0)
            return false;
        const auto begin =
            sound.interleaved().begin() + static_cast<std::ptrdiff_t>(read.load() * sound.channels());
        interleaved.insert(interleaved.end(), begin, begin + static_cast<std::ptrdiff_t>(count * sound.channels()));
        read += count;
        return true;
    }

    void stop() override { stopped = true; }

    /// Lets the sound end early, as a damaged one does.
    void endAfter(FrameCount count) { there = count; }

    /// How many frames have been read so far; from any thread.
    std::int64_t framesRead() const { return read; }

private:
    static constexpr std::int64_t atOnce = 3001;

    MemorySound sound;
    FrameCount there;
    std::atomic<std::int64_t> read = 0;
    std::atomic<bool> stopped = false;
};

/// The whole of a sound, to be read once.
inline std::unique_ptr<SourcePart> wholeOf(const MemorySound& sound)
{
    return std::make_unique<SourcePart>(std::make_unique<MemoryStream>(sound), FramePosition{0}, sound.length());
}

/// Everything that comes out of a stretcher or a rendition.
template <typename Source>
std::vector<float> allOf(Source& source)
{
    std::vector<float> frames;
    while (source.next(frames)) {
    }
    return frames;
}

}  // namespace sound::test
