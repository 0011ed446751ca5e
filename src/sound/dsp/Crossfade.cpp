#include "sound/dsp/Crossfade.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

// A raised cosine: no corner at either end.
double eased(double progress)
{
    return 0.5 - 0.5 * std::cos(std::numbers::pi * progress);
}

// The middle of frame @p frame of @p count, so that neither end is a frame of full or no weight.
double progressAt(std::int64_t frame, std::int64_t count)
{
    return (static_cast<double>(frame) + 0.5) / static_cast<double>(count);
}

}  // namespace

double similarity(const float* one, const float* other, std::size_t samples)
{
    double product = 0;
    double onePower = 0;
    double otherPower = 0;
    for (std::size_t index = 0; index < samples; ++index) {
        const double a = one[index];
        const double b = other[index];
        product += a * b;
        onePower += a * a;
        otherPower += b * b;
    }
    const double norm = std::sqrt(onePower * otherPower);
    return norm > 0 ? std::clamp(product / norm, 0.0, 1.0) : 0.0;
}

FadeWeights fadeWeights(double progress, double alike)
{
    const double coming = eased(progress);
    const double leaving = 1 - coming;
    const double power = leaving * leaving + coming * coming + 2 * alike * leaving * coming;
    const double level = 1 / std::sqrt(power);
    return {static_cast<float>(leaving * level), static_cast<float>(coming * level)};
}

void crossfade(const float* leaving, float* coming, FrameCount count, int channels)
{
    const double alike = similarity(leaving, coming, static_cast<std::size_t>(count.value * channels));
    for (std::int64_t frame = 0; frame < count.value; ++frame) {
        const FadeWeights weights = fadeWeights(progressAt(frame, count.value), alike);
        for (int channel = 0; channel < channels; ++channel) {
            const std::int64_t index = frame * channels + channel;
            coming[index] = leaving[index] * weights.leaving + coming[index] * weights.coming;
        }
    }
}

void fadeOut(float* interleaved, FrameCount fade, FrameCount count, int channels)
{
    const std::int64_t faded = std::min(fade.value, count.value);
    for (std::int64_t frame = 0; frame < faded; ++frame) {
        const auto weight = static_cast<float>(1 - eased(progressAt(frame, faded)));
        for (int channel = 0; channel < channels; ++channel)
            interleaved[frame * channels + channel] *= weight;
    }
    std::fill(interleaved + faded * channels, interleaved + count.value * channels, 0.0F);
}

void fadeIn(float* interleaved, FrameCount fade, int channels)
{
    for (std::int64_t frame = 0; frame < fade.value; ++frame) {
        const auto weight = static_cast<float>(eased(progressAt(frame, fade.value)));
        for (int channel = 0; channel < channels; ++channel)
            interleaved[frame * channels + channel] *= weight;
    }
}

}  // namespace sound
