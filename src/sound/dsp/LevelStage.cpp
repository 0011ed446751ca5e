#include "sound/dsp/LevelStage.h"

#include <algorithm>

namespace sound {
namespace {

constexpr float rampSeconds = 0.008F;
constexpr int fullGain = 100;
constexpr int fullBalance = 50;

}  // namespace

void LevelStage::Ramp::aim(float newTarget, float frames)
{
    if (newTarget == target)
        return;
    target = newTarget;
    step = (target - value) / frames;
}

void LevelStage::Ramp::advance()
{
    if (value == target)
        return;
    value += step;
    if ((step >= 0 && value >= target) || (step < 0 && value <= target))
        value = target;
}

void LevelStage::prepare(SampleRate rate)
{
    rampFrames = std::max(1.0F, rampSeconds * static_cast<float>(rate.hertz));
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
    left.value = left.target;
    right.value = right.target;
}

void LevelStage::process(float* stereo, FrameCount count)
{
    const bool atRest = left.value == left.target && right.value == right.target;
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
