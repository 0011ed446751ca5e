#pragma once

#include "sound/media/AvInput.h"
#include "sound/media/FloatFrames.h"
#include "sound/media/FrameStream.h"

#include <atomic>

namespace sound {

/// Decodes a sound file from its beginning to its end. Inside this folder only.
///
/// A place that cannot be decoded is silence of its length, so that what follows stays where it belongs.
class FileDecoder : public FrameStream
{
public:
    /// Null where there is no frame to decode, or no decoder.
    static std::unique_ptr<FileDecoder> open(std::unique_ptr<AvInput> input);

    SampleRate rate() const override { return outputRate; }
    int channels() const override { return outputChannels; }
    FrameCount length() const override { return counted; }
    bool next(std::vector<float>& interleaved) override;
    void stop() override;

private:
    FileDecoder(std::unique_ptr<AvInput> input, AvCodec codec, FrameCount counted);

    void feedDecoder();
    void append(const AVFrame& frame, std::vector<float>& interleaved);
    void cutAtLength(std::vector<float>& interleaved, std::size_t before);
    FrameCount missingBefore(const AVFrame& frame);
    FrameCount nominalFrame() const;

    std::unique_ptr<AvInput> input;
    AvCodec codec;
    FrameCount counted;
    SampleRate outputRate;
    int outputChannels;
    FloatFrames conversion;
    AvPacket packet;
    AvFrame frame;

    std::int64_t smallestGap;  // in the times of frames that were decoded without complaint; 0: times tell none
    bool drained = false;      // the decoder has been told that nothing follows
    bool ended = false;
    std::int64_t lostPackets = 0;          // since the last good frame
    FrameCount lastFrame;                  // length of the last good frame
    FramePosition reached;                 // of the next frame to deliver
    std::int64_t origin = AV_NOPTS_VALUE;  // what the container calls the place of our first frame
    std::atomic<bool> stopped = false;
};

}  // namespace sound
