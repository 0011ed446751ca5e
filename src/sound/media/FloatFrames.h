#pragma once

#include "sound/units/Frames.h"

#include <memory>
#include <vector>

extern "C" {
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
}

namespace sound {

/// Turns what a decoder delivers into interleaved float frames of one rate and one or two channels. Inside this
/// folder only.
///
/// Frames that have that rate and that number of channels are converted exactly: integers are divided by the
/// power of two that is their full scale. More channels are mixed down to two with the usual coefficients. A
/// sound that changes its rate or its channels on the way is brought back to those it began with.
class FloatFrames
{
public:
    FloatFrames(SampleRate rate, int channels);

    /// Appends the frames of @p decoded to @p interleaved. False where they are of no kind that can be converted.
    bool append(const AVFrame& decoded, std::vector<float>& interleaved);

private:
    struct ResamplerFreer
    {
        void operator()(SwrContext* resampler) const { swr_free(&resampler); }
    };

    /// What the resampler is set up for.
    struct Layout
    {
        int rate = 0;
        int format = -1;
        int channels = 0;
        std::uint64_t mask = 0;

        bool operator==(const Layout&) const = default;
    };

    bool appendMixed(const AVFrame& decoded, std::vector<float>& interleaved);
    bool prepareResampler(const AVFrame& decoded);

    SampleRate rate;
    int channels;
    Layout prepared;
    std::unique_ptr<SwrContext, ResamplerFreer> resampler;
};

}  // namespace sound
