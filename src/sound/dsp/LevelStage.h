#pragma once

#include "sound/units/Frames.h"

namespace sound {

/// Gain and balance of a stereo sound, each change spread over a few milliseconds. With both at rest in their
/// neutral places not a bit of the sound is changed. Render thread.
class LevelStage
{
public:
    void prepare(SampleRate rate);

    /// @p gain 0 to 100: amplitude is its square, which to the ear falls evenly. @p balance -50 to 50: turns one
    /// side down, never the other up.
    void set(int gain, int balance);

    /// Jumps to what was set last, where there is no sound that could click.
    void settle();

    void process(float* stereo, FrameCount count);

private:
    struct Ramp
    {
        float value = 1;
        float target = 1;
        float step = 0;
        int framesLeft = 0;

        void aim(float newTarget, int frames);
        void advance();
        void settle();
    };

    Ramp left;
    Ramp right;
    int rampFrames = 1;
};

}  // namespace sound
