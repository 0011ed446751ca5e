#include "sound/editor/WindowedTransform.h"

#include <fftw3.h>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {

void WindowedTransform::FreePlan::operator()(fftwf_plan_s* plan) const
{
    fftwf_destroy_plan(plan);
}

WindowedTransform::WindowedTransform(std::size_t windowSize)
    : window(windowSize)
    , time(windowSize)
    , frequencies(windowSize / 2 + 1)
{
    auto* ofFrequencies = reinterpret_cast<fftwf_complex*>(frequencies.data());
    const auto size = static_cast<int>(windowSize);
    forward.reset(fftwf_plan_dft_r2c_1d(size, time.data(), ofFrequencies, FFTW_ESTIMATE));
    backward.reset(fftwf_plan_dft_c2r_1d(size, ofFrequencies, time.data(), FFTW_ESTIMATE));
    for (std::size_t frame = 0; frame < windowSize; ++frame) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(frame) / static_cast<double>(windowSize);
        window[frame] = static_cast<float>(0.5 - 0.5 * std::cos(angle));
    }
}

WindowedTransform::~WindowedTransform() = default;

void WindowedTransform::analyse(const float* first, std::size_t stride, Spectrum& spectrum)
{
    for (std::size_t frame = 0; frame < window.size(); ++frame)
        time[frame] = first[frame * stride] * window[frame];
    fftwf_execute(forward.get());
    std::copy(frequencies.begin(), frequencies.end(), spectrum.begin());
}

void WindowedTransform::add(const Spectrum& spectrum, float* first, std::size_t stride)
{
    const float scale = 1 / (overlap * static_cast<float>(window.size()));
    std::copy(spectrum.begin(), spectrum.end(), frequencies.begin());
    fftwf_execute(backward.get());
    for (std::size_t frame = 0; frame < window.size(); ++frame)
        first[frame * stride] += time[frame] * window[frame] * scale;
}

}  // namespace sound
