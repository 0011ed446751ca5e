#include "sound/player/PlayWindow.h"

#include <cmath>

namespace sound {

PlayWindow wholeOf(FrameCount length)
{
    return {{0}, endOf(length), false};
}

FramePosition foldedIn(const PlayWindow& window, FramePosition running)
{
    if (!window.repeats || running < window.end)
        return running;
    return {window.begin.value + (running.value - window.begin.value) % window.length().value};
}

double foldedIn(const PlayWindow& window, double running)
{
    const auto end = static_cast<double>(window.end.value);
    if (!window.repeats || running < end)
        return running;
    const auto begin = static_cast<double>(window.begin.value);
    return begin + std::fmod(running - begin, static_cast<double>(window.length().value));
}

}  // namespace sound
