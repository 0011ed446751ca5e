#include "sound/dsp/Limiter.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr float attackSeconds = 0.001F;
constexpr double releaseSeconds = 0.1;
constexpr double recoveredFrom = 0.9999;  // closer to 1 than any ear or 13 bits can tell

}  // namespace

Limiter::Limiter(FrameCount largestBlock, float highest)
    : wanted(static_cast<size_t>(largestBlock.value), 1.0F)
    , ceiling(highest)
{
}

void Limiter::prepare(SampleRate rate)
{
    attackStep = 1 / std::max(1.0F, attackSeconds * static_cast<float>(rate.hertz));
    releasePart = 1 - std::exp(-1 / (releaseSeconds * rate.hertz));
    reset();
}

void Limiter::reset()
{
    gain = 1;
}

void Limiter::process(float* stereo, FrameCount count)
{
    const auto frames = static_cast<size_t>(count.value);
    float highest = 0;
    for (size_t frame = 0; frame < frames; ++frame) {
        const float peak = std::max(std::abs(stereo[2 * frame]), std::abs(stereo[2 * frame + 1]));
        wanted[frame] = peak > ceiling ? ceiling / peak : 1;
        highest = std::max(highest, peak);
    }
    if (highest <= ceiling && gain == 1)
        return;

    for (size_t frame = frames; frame > 1; --frame)
        wanted[frame - 2] = std::min(wanted[frame - 2], wanted[frame - 1] + attackStep);
    for (size_t frame = 0; frame < frames; ++frame) {
        const double recovered = gain + (1 - gain) * releasePart;
        gain = std::min<double>(wanted[frame], recovered > recoveredFrom ? 1 : recovered);
        const auto factor = static_cast<float>(gain);
        stereo[2 * frame] = std::clamp(stereo[2 * frame] * factor, -ceiling, ceiling);
        stereo[2 * frame + 1] = std::clamp(stereo[2 * frame + 1] * factor, -ceiling, ceiling);
    }
}

}  // namespace sound
