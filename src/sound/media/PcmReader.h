#pragma once

#include "sound/media/AvInput.h"
#include "sound/media/FrameStream.h"
#include "sound/media/PcmSamples.h"
#include "sound/media/counting/PcmChunks.h"

#include <atomic>

namespace sound {

/// Reads plain samples straight from the file, for there is nothing to decode. Inside this folder only.
class PcmReader : public FrameStream
{
public:
    /// Null where the sound of @p input is of another kind, has more than two channels, or no frame.
    static std::unique_ptr<PcmReader> open(const AvInput& input);

    SampleRate rate() const override { return frameRate; }
    int channels() const override { return channelCount; }
    FrameCount length() const override;
    bool next(std::vector<float>& interleaved) override;
    void stop() override { stopped.store(true, std::memory_order_relaxed); }

private:
    PcmReader(const AvInput& input, ByteRange samples, PcmForm form);
    std::size_t frameSize() const
    {
        return static_cast<std::size_t>(bytesPerSample(form)) * static_cast<std::size_t>(channelCount);
    }

    std::shared_ptr<const RegularFile> file;
    SampleRate frameRate;
    int channelCount;
    ByteRange range;  // what is still to be read
    std::int64_t frames;
    PcmForm form;
    std::vector<std::uint8_t> bytes;
    std::atomic<bool> stopped = false;
};

}  // namespace sound
