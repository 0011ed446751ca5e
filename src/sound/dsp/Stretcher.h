#pragma once

#include "sound/dsp/FrameInput.h"
#include "sound/dsp/TimeMap.h"
#include "sound/units/Frames.h"

#include <memory>
#include <vector>

namespace RubberBand {
class RubberBandStretcher;
}

namespace sound {

/// Changes tempo without pitch and pitch without tempo: Rubber Band's R3 engine in real-time mode, with an exact
/// account of which input frame each output frame stands for.
///
/// prepare() first, then start(), then render() as often as wanted; start() again at any time. The input is fed for
/// ever in blocks of one size, since the library's alignment depends on the size.
///
/// **Threads.** prepare() allocates and belongs to the main thread; the rest takes no lock and allocates nothing
/// but what the library itself does at a start: one or two small pieces, given back at once.
class Stretcher
{
public:
    Stretcher();
    ~Stretcher();

    void prepare(SampleRate rate, int channels, FrameCount block);

    /// How many frames before the one that is to be heard first the input must begin, so that the library's windows
    /// are full there.
    FrameCount lead() const;

    /// Begins anew with an input that stands lead() frames before input place @p first. Once it is primed, the next
    /// frame of render() is @p first. @p timeRatio is output length over input length, @p pitchScale output
    /// frequency over input frequency.
    void begin(FramePosition first, double timeRatio, double pitchScale);

    /// Does the first half of the priming, if it is not done yet: as long as about five blocks of rendering.
    void primeHalf(FrameInput& input);

    /// Does the rest of it.
    void prime(FrameInput& input);

    /// Changes both while running. A pitch is heard at once; a ratio when the library's window has passed.
    void change(double timeRatio, double pitchScale);

    void render(FrameInput& input, FrameCount count, float* interleaved);

    /// How many frames render() has given since begin().
    double rendered() const { return given; }

    /// The input place of the frame that is number @p frame since begin(); the last thousands are remembered.
    double inputAt(double frame) const;

private:
    void feed(FrameInput& input);
    void drop(FrameInput& input, FrameCount rest);
    FrameCount take(FrameCount count, float* interleaved);

    std::unique_ptr<RubberBand::RubberBandStretcher> stretcher;
    int channels = 0;
    FrameCount block;
    FrameCount startPad;
    double timeRatio = 1;
    double pitchScale = 1;
    FramePosition fed;  // the input place of the next frame to feed
    FrameCount toDrop;  // of the output, until it is primed
    FrameCount halfOfDrop;
    double given = 0;  // output frames since start
    TimeMap map;       // from frames given to input places
    std::vector<float> interleavedBlock;
    std::vector<std::vector<float>> planes;
    std::vector<float*> planePointers;
};

}  // namespace sound
