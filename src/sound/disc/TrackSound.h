#pragma once

#include "engines/DiscWriteError.h"
#include "sound/disc/DiscTrack.h"
#include "sound/dsp/SampleRateConverter.h"
#include "sound/media/FrameStream.h"
#include "sound/media/SixteenBits.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace sound {

class TrackSound;

/// A track's sound, or why there is none.
struct OpenedTrackSound
{
    std::unique_ptr<TrackSound> sound;
    DiscWriteError error;
};

/// The sound of a track as a disc has it: 44100 Hz, two channels, 16 bits, the low byte first.
///
/// A sound that is so already passes bit for bit. What has one channel is on both, another rate is converted and
/// other samples are dithered.
///
/// **Threads.** One at a time.
class TrackSound
{
public:
    /// Counts the frames of the file again, which is to be the one that was added.
    static OpenedTrackSound open(const DiscTrack& track);

    /// Fills @p bytes, whole frames, with what follows. Behind the sound there is silence without an end.
    void read(std::span<std::byte> bytes);

    /// Frames of the file that were counted and were not there when it came to them.
    FrameCount missing() const { return ended ? counted - decoded : FrameCount{0}; }

private:
    TrackSound(std::unique_ptr<FrameStream> stream, const DiscTrack& track);

    bool fill();
    void bringToDiscForm(std::span<const float> frames);

    std::unique_ptr<FrameStream> stream;
    int channels;
    std::optional<SampleRateConverter> converter;
    SixteenBits sixteenBits;

    FrameCount counted;
    FrameCount decoded;
    FrameCount left;  // frames of the disc that the sound has still
    bool ended = false;

    std::vector<float> buffer;
    std::vector<float> converted;
    std::vector<std::int16_t> samples;
    std::size_t used = 0;  // bytes of the samples
};

}  // namespace sound
