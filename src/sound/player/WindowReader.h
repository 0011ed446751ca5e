#pragma once

#include "sound/dsp/FrameInput.h"
#include "sound/player/PlayWindow.h"
#include "sound/units/Frames.h"

#include <chrono>
#include <vector>

namespace sound {

class SampleSource;

/// Reads a sound through a window, frame after frame, over and over where the window repeats.
///
/// At the seam the last few milliseconds before the window's end, at most half of the window, are cross-faded into
/// what leads up to its begin in the sound itself, so that a cut through a wave does not click and the attack at
/// the begin stays whole. Each pass is exactly as long as the window. Outside the seam every frame is the sound's
/// own, bit for bit.
///
/// **Threads.** prepare() allocates and belongs to the main thread; the rest takes no lock and allocates nothing.
class WindowReader : public FrameInput
{
public:
    static constexpr std::chrono::milliseconds plainSeam{10};

    /// A stretcher takes a fade that is short beside its window of 46 ms for a jump, and swells there.
    static constexpr std::chrono::milliseconds stretchedSeam{30};

    void prepare(SampleRate rate, int channels);

    /// @p running is the running position of the next frame. @p seamTime is one of the two above.
    void open(const SampleSource& source, const PlayWindow& window, FramePosition running,
              std::chrono::milliseconds seamTime = plainSeam);
    void seek(FramePosition running);

    void next(FrameCount count, float* interleaved) override;

    FramePosition position() const { return running; }
    const PlayWindow& window() const { return playWindow; }

    /// Whether the frames from running position @p from on, @p count of them, are decoded already.
    static bool ready(const SampleSource& source, const PlayWindow& window, FramePosition from, FrameCount count);

    /// Whether this running position lies in the cross-fade at the seam.
    bool inSeam(FramePosition place) const;

private:
    void readSeam(FramePosition from, FrameCount count, float* interleaved);

    const SampleSource* source = nullptr;
    PlayWindow playWindow;
    FramePosition running;
    int channels = 1;
    SampleRate rate;
    FrameCount seam;
    double seamSimilarity = 0;
    std::vector<float> leadUp;
};

}  // namespace sound
