#pragma once

#include "sound/dsp/Changes.h"
#include "sound/dsp/Limiter.h"
#include "sound/dsp/SampleRateConverter.h"
#include "sound/editor/ParallelStretcher.h"
#include "sound/editor/SourcePart.h"
#include "sound/units/Frames.h"

#include <atomic>
#include <memory>
#include <vector>

namespace sound {

/// How a sound is to come out.
struct RenditionSettings
{
    Changes changes;
    double gain = 1;  ///< A factor of the amplitude.
    SampleRate rate;
    int channels = 2;  ///< 1 or 2.
};

/// A sound as it is saved: changed as the player would play it, at another rate and with other channels.
///
/// What is not asked for is not done: at the source's own rate, unchanged, the source's frames come out bit for
/// bit. What the changes bring above full scale is limited as the player does.
///
/// **Threads.** One at a time; stop() from any.
class Rendition
{
public:
    Rendition(std::unique_ptr<SourcePart> source, const RenditionSettings& settings, int workers);
    ~Rendition();

    /// How many frames come out: the source's length by tempo and rate, to the nearest frame.
    FrameCount length() const { return total; }

    /// Adds the next frames to @p interleaved. False, with nothing added, when all have come, and after stop().
    bool next(std::vector<float>& interleaved);

    /// How far the work is, 0 to 1; ahead of what next() has given. Any thread.
    double progress() const;

    /// Makes next() return soon.
    void stop();

    int channels() const { return settings.channels; }

    /// What the source fell short of its length by; silence stands there.
    FrameCount missing() const { return source->missing(); }

    /// How much may be missing from a damaged sound.
    FrameCount bearable() const { return {source->rate().hertz / 2}; }

private:
    bool draw();
    void convert();

    std::unique_ptr<SourcePart> source;
    RenditionSettings settings;
    FrameCount total;
    std::atomic<FrameCount> given;
    std::unique_ptr<ParallelStretcher> stretcher;    // null where nothing is stretched
    std::unique_ptr<SampleRateConverter> converter;  // null where the rate stays
    Limiter limiter;
    std::atomic<bool> stopped = false;
    bool drawn = false;          // all of the source, stretched
    std::vector<float> piece;    // of the stretched sound
    std::vector<float> waiting;  // of the converted sound, with the source's channels
    std::vector<float> stereo;
};

}  // namespace sound
