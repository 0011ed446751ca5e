#include "sound/recorder/LevelWatch.h"

#include "sound/recorder/CaptureLevel.h"

#include <algorithm>
#include <cmath>

namespace sound {

LevelWatch::LevelWatch(SampleRate sampleRate)
    : rate(sampleRate)
{
}

void LevelWatch::setThreshold(int level)
{
    threshold = static_cast<float>(level) / levelsToFullScale;
}

void LevelWatch::setShortestPause(Milliseconds length)
{
    shortestPause = length;
}

void LevelWatch::restart()
{
    last.reset();
    pause = {0};
}

FrameCount LevelWatch::longEnough() const
{
    return framesIn(std::max(shortestPause, hangOver), rate);
}

std::optional<LevelWatch::Found> LevelWatch::watch(std::span<const float> stereo)
{
    const auto frames = static_cast<std::int64_t>(stereo.size() / 2);
    const FrameCount enough = longEnough();
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const auto sample = static_cast<std::size_t>(frame) * 2;
        const bool loud = std::max(std::abs(stereo[sample]), std::abs(stereo[sample + 1])) > threshold;
        if (loud) {
            pause = {0};
            if (last != Change::Sound) {
                last = Change::Sound;
                return Found{{frame}, Change::Sound};
            }
        } else {
            pause = pause + FrameCount{1};
            if (pause >= enough && last != Change::Silence) {
                last = Change::Silence;
                return Found{{frame + 1}, Change::Silence};
            }
        }
    }
    return std::nullopt;
}

}  // namespace sound
