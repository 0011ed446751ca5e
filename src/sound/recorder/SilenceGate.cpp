#include "sound/recorder/SilenceGate.h"

#include <algorithm>

namespace sound {
namespace {

/// Multiplies frames by a ramp from @p from to @p to.
void ramp(std::span<float> stereo, float from, float to)
{
    const std::size_t frames = stereo.size() / 2;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const float place = (static_cast<float>(frame) + 0.5F) / static_cast<float>(frames);
        const float factor = from + (to - from) * place;
        stereo[2 * frame] *= factor;
        stereo[2 * frame + 1] *= factor;
    }
}

std::size_t samples(std::size_t frames)
{
    return frames * 2;
}

}  // namespace

SilenceGate::SilenceGate(SampleRate rate)
    : leadInFrames(static_cast<std::size_t>(framesIn(leadIn, rate).value))
    , fadeFrames(static_cast<std::size_t>(framesIn(fade, rate).value))
{
}

void SilenceGate::reset()
{
    opened = false;
    hasDropped = false;
    held.clear();
}

void SilenceGate::open()
{
    opened = true;
}

// What is held while it is open is just what is faded here.
void SilenceGate::close(std::vector<float>& kept)
{
    if (!opened)
        return;
    opened = false;
    ramp(held, 1, 0);
    keepAll(kept);
    hasDropped = true;
}

void SilenceGate::pass(std::span<const float> stereo, std::vector<float>& kept)
{
    if (opened && hasDropped) {
        const std::size_t begin = std::min(held.size(), samples(fadeFrames));
        ramp(std::span(held).first(begin), 0, 1);
        keepAll(kept);
    }
    held.insert(held.end(), stereo.begin(), stereo.end());
    const std::size_t most = samples(opened ? fadeFrames : leadInFrames);
    if (held.size() <= most)
        return;
    const std::size_t leaving = held.size() - most;
    if (opened)
        kept.insert(kept.end(), held.begin(), held.begin() + static_cast<std::ptrdiff_t>(leaving));
    else
        hasDropped = true;
    held.erase(held.begin(), held.begin() + static_cast<std::ptrdiff_t>(leaving));
}

void SilenceGate::release(std::vector<float>& kept)
{
    open();
    pass({}, kept);
    keepAll(kept);
}

void SilenceGate::keepAll(std::vector<float>& kept)
{
    kept.insert(kept.end(), held.begin(), held.end());
    held.clear();
    hasDropped = false;
}

}  // namespace sound
