#pragma once

#include "sound/vocals/VocalCanceller.h"

#include <cmath>
#include <cstddef>
#include <functional>
#include <numbers>
#include <vector>

namespace sound::test {

/// Interleaved left and right.
using Stereo = std::vector<float>;

inline Stereo silence(std::size_t frames)
{
    return Stereo(2 * frames);
}

/// Adds a wave at its place in the image, at equal power.
inline void addAt(Stereo& sound, int pan, const std::function<double(std::size_t frame)>& wave)
{
    const double angle = (pan + 100) / 200.0 * std::numbers::pi / 2;
    for (std::size_t frame = 0; frame < sound.size() / 2; ++frame) {
        const double sample = wave(frame);
        sound[2 * frame] += static_cast<float>(std::cos(angle) * sample);
        sound[2 * frame + 1] += static_cast<float>(std::sin(angle) * sample);
    }
}

inline std::function<double(std::size_t)> tone(double hertz, SampleRate rate, double amplitude = 0.25)
{
    return [=](std::size_t frame) {
        return amplitude * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(frame) / rate.hertz);
    };
}

/// What a canceller leaves of a whole sound, taken in stretches of so many of its grid steps, or in one.
inline Stereo withoutVoice(const Stereo& sound, SampleRate rate, const VoicePlace& place,
                           std::size_t gridSteps = 1000000)
{
    VocalCanceller canceller(rate, place);
    const auto around = static_cast<std::size_t>(canceller.surroundings().value);
    const std::size_t frames = sound.size() / 2;
    const std::size_t stretch = gridSteps * static_cast<std::size_t>(canceller.grid().value);
    Stereo padded(2 * (frames + 2 * around));
    std::copy(sound.begin(), sound.end(), padded.begin() + static_cast<std::ptrdiff_t>(2 * around));
    Stereo result(sound.size());
    for (std::size_t begin = 0; begin < frames; begin += stretch) {
        const std::size_t count = std::min(stretch, frames - begin);
        canceller.remove(std::span(padded).subspan(2 * begin, 2 * (count + 2 * around)),
                         std::span(result).subspan(2 * begin, 2 * count));
    }
    return result;
}

/// The middle of a channel, without what the ends do to it: a quarter of it is cut off on either side.
inline std::vector<float> middleOf(const Stereo& sound, int channel)
{
    std::vector<float> mono;
    const std::size_t frames = sound.size() / 2;
    for (std::size_t frame = frames / 4; frame < frames - frames / 4; ++frame)
        mono.push_back(sound[2 * frame + static_cast<std::size_t>(channel)]);
    return mono;
}

}  // namespace sound::test
