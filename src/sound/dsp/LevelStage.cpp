#include "sound/dsp/LevelStage.h"

#include <algorithm>

namespace sound {
namespace {

constexpr float rampSeconds = 0.008F;
constexpr int fullGain = 100;
constexpr int fullBalance = 50;

}  // namespace

void LevelStage::Ramp::aim(float newTarget, int frames)
{
    if (newTarget == target)
        return;
    target = newTarget;
    step = (target - value) / static_cast<float>(frames);
    framesLeft = frames;
}

// Counted, since steps that are too small for the value's last bit would never arrive.
void LevelStage::Ramp::advance()
{
    if (framesLeft == 0)
        return;
    --framesLeft;
    value = framesLeft == 0 ? target : value + step;
}

void LevelStage::Ramp::settle()
{
    value = target;
    framesLeft = 0;
}

void LevelStage::prepare(SampleRate rate)
{
    rampFrames = std::max(1, static_cast<int>(rampSeconds * static_cast<float>(rate.hertz)));
    settle();
}

void LevelStage::set(int gain, int balance)
{
    const float part = static_cast<float>(std::clamp(gain, 0, fullGain)) / fullGain;
    const float amplitude = part * part;
    const float side = static_cast<float>(std::clamp(balance, -fullBalance, fullBalance)) / fullBalance;
    left.aim(amplitude * std::min(1.0F, 1 - side), rampFrames);
    right.aim(amplitude * std::min(1.0F, 1 + side), rampFrames);
}

void LevelStage::settle()
{
    left.settle();
    right.settle();
}

void LevelStage::process(float* stereo, FrameCount count)
{
    const bool atRest = left.framesLeft == 0 && right.framesLeft == 0;
    if (atRest && left.value == 1 && right.value == 1)
        return;
    for (std::int64_t frame = 0; frame < count.value; ++frame) {
        left.advance();
        right.advance();
        stereo[2 * frame] *= left.value;
        stereo[2 * frame + 1] *= right.value;
    }
}

}  // namespace sound
