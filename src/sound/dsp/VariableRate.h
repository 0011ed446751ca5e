#pragma once

#include "sound/dsp/FrameInput.h"
#include "sound/dsp/TimeMap.h"
#include "sound/units/Frames.h"

#include <memory>
#include <vector>

struct soxr;

namespace sound {

/// Plays its input faster or slower as a turntable does, pitch and speed together: libsoxr's variable-rate
/// resampler, with an exact account of which input frame each output frame stands for.
///
/// prepare() first, then start(), then render() as often as wanted; start() again at any time.
///
/// **Threads.** prepare() allocates and belongs to the main thread; the rest takes no lock and allocates nothing:
/// the resampler is never reset, which would allocate, but fed on, with silence between two runs and what it still
/// holds of the earlier one dropped.
class VariableRate
{
public:
    VariableRate();
    ~VariableRate();

    void prepare(int channels, FrameCount block);

    /// How many frames before the one that is to be heard first the input must begin.
    static FrameCount lead();

    /// Begins anew; the next frame of render() is the one nearest to the input's frame number lead(), counted from
    /// where the input stands now. @p speed is input frames an output frame, 0.4 to 1.6.
    void start(FrameInput& input, double speed);

    /// Heard from the next frame on.
    void change(double speed);

    void render(FrameInput& input, FrameCount count, float* interleaved);

    /// Which frame of the input, counted from where it stood at start(), the one is that render() gives @p ahead
    /// frames from now.
    double inputAt(double ahead) const;

private:
    struct Delete
    {
        void operator()(soxr* resampler) const;
    };

    void produce(FrameInput& input, FrameCount count, float* interleaved);

    std::unique_ptr<soxr, Delete> resampler;
    int channels = 0;
    FrameCount block;
    double speed = 1;
    double fed = 0;       // input frames given to the resampler since it was made
    double produced = 0;  // output frames taken from it
    double origin = 0;    // what was fed before start()
    TimeMap map;          // from produced frames to frames fed
    std::vector<float> pending;
    std::size_t pendingBegin = 0;  // in frames
    std::size_t pendingEnd = 0;
};

}  // namespace sound
