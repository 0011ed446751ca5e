#pragma once

#include "engines/EngineError.h"
#include "sound/media/AvHandles.h"
#include "sound/media/SixteenBits.h"
#include "sound/media/SoundFormat.h"
#include "sound/units/Frames.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace sound {

class SoundEncoder;

/// An encoder, or why there is none: exactly one of the two is set.
struct OpenedEncoder
{
    std::unique_ptr<SoundEncoder> encoder;
    EngineError error = EngineError::None;
};

/// Makes packets of interleaved float frames. Inside this folder only.
///
/// **Order.** encode() any number of times, then drain() once; after a false of either, nothing. **Threads.** One
/// at a time.
class SoundEncoder
{
public:
    /// Takes a packet, whose times are in frames of the sound; false where it cannot be kept.
    using Sink = std::function<bool(AVPacket& packet)>;

    /// InvalidExportSettings where the format cannot hold a sound of this rate and these channels, or does not have
    /// such settings.
    static OpenedEncoder open(const SoundFormat& format, SampleRate rate, int channels);

    const AVCodecContext& codec() const { return *context; }

    /// False where the sink or the encoder fails.
    bool encode(std::span<const float> interleaved, const Sink& sink);

    /// Brings the packets that are still on their way.
    bool drain(const Sink& sink);

private:
    SoundEncoder(AvCodec codec, FrameCount silenceAround);

    bool begin(const Sink& sink);
    bool encodeAll(std::span<const float> interleaved, const Sink& sink);
    bool makeRoom();
    void take(std::span<const float> interleaved);
    bool encodeGathered(const Sink& sink);
    bool handOn(const Sink& sink);

    AvCodec context;
    int channels;
    int framesAtOnce;
    std::vector<float> silence;  // before and behind the sound
    bool begun = false;
    AvFrame frame;
    AvPacket packet;
    int gathered = 0;  // frames in the frame
    std::int64_t encoded = 0;
    SixteenBits toSixteenBits;
};

}  // namespace sound
