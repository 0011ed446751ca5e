#include "sound/dsp/WindowedTransform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {

WindowedTransform::WindowedTransform(std::size_t windowSize, std::size_t steps)
    : steps(steps)
    , overlap(3.0F / 8 * static_cast<float>(steps))
    , window(windowSize)
    , transform(windowSize)
{
    for (std::size_t frame = 0; frame < windowSize; ++frame) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(frame) / static_cast<double>(windowSize);
        window[frame] = static_cast<float>(0.5 - 0.5 * std::cos(angle));
    }
}

void WindowedTransform::analyse(const float* first, std::size_t stride, Spectrum& spectrum)
{
    for (std::size_t frame = 0; frame < window.size(); ++frame)
        transform.time[frame] = first[frame * stride] * window[frame];
    transform.forward();
    std::copy(transform.frequencies.begin(), transform.frequencies.end(), spectrum.begin());
}

void WindowedTransform::add(const Spectrum& spectrum, float* first, std::size_t stride)
{
    const float scale = 1 / (overlap * static_cast<float>(window.size()));
    std::copy(spectrum.begin(), spectrum.end(), transform.frequencies.begin());
    transform.backward();
    for (std::size_t frame = 0; frame < window.size(); ++frame)
        first[frame * stride] += transform.time[frame] * window[frame] * scale;
}

}  // namespace sound
