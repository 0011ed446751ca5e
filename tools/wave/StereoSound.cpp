#include "wave/StereoSound.h"

#include <algorithm>
#include <cmath>

std::vector<float> mono(const StereoSound& sound)
{
    std::vector<float> both(sound.frames());
    std::transform(sound.left.begin(), sound.left.end(), sound.right.begin(), both.begin(),
                   [](float left, float right) { return (left + right) / 2; });
    return both;
}

StereoSound stretchOf(const StereoSound& sound, double fromSecond, double toSecond)
{
    const auto frameAt = [&sound](double second) {
        return static_cast<std::ptrdiff_t>(
            std::clamp(std::round(second * sound.rate), 0.0, static_cast<double>(sound.frames())));
    };
    const std::ptrdiff_t from = frameAt(fromSecond);
    const std::ptrdiff_t to = std::max(from, frameAt(toSecond));
    return {sound.rate,
            {sound.left.begin() + from, sound.left.begin() + to},
            {sound.right.begin() + from, sound.right.begin() + to}};
}
