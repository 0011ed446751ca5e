#pragma once

#include "sound/dsp/SampleRateConverter.h"
#include "sound/units/Frames.h"

#include <optional>
#include <span>
#include <vector>

namespace sound {

/// Captured frames as a file holds them: at its rate, in its one or two channels. Of one channel, the mean of left
/// and right.
class FileFrames
{
public:
    FileFrames(SampleRate captured, SampleRate wanted, int channels);

    /// Adds what comes out of these frames, and of those before, to @p frames.
    void convert(std::span<const float> stereo, std::vector<float>& frames);

    /// Adds what is still inside. Nothing may follow.
    void finish(std::vector<float>& frames);

    /// How many frames of the file belong to what has been taken, also those that are still inside.
    FrameCount due() const;

private:
    SampleRate from;
    SampleRate to;
    int channels;
    std::optional<SampleRateConverter> converter;
    std::vector<float> mixed;
    std::int64_t taken = 0;
};

}  // namespace sound
