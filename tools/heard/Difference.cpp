#include "heard/Difference.h"

#include "heard/Fourier.h"

#include <algorithm>
#include <cmath>

namespace heard {

namespace {

std::vector<double> exactMono(const StereoSound& sound)
{
    const std::vector<float> samples = mono(sound);
    return {samples.begin(), samples.end()};
}

}  // namespace

Difference differenceOf(const StereoSound& stretch, const StereoSound& original)
{
    const std::vector<double> products = Correlator(exactMono(original)).with(exactMono(stretch));
    const std::size_t places = original.frames() - std::min(original.frames(), stretch.frames()) + 1;
    const auto best = static_cast<std::size_t>(
        std::max_element(products.begin(), products.begin() + static_cast<std::ptrdiff_t>(places)) -
        products.begin());

    Difference difference{static_cast<double>(best) / original.rate, 0};
    const std::size_t count = std::min(stretch.frames(), original.frames() - best);
    for (std::size_t i = 0; i < count; ++i) {
        const float left = std::abs(stretch.left[i] - original.left[best + i]);
        const float right = std::abs(stretch.right[i] - original.right[best + i]);
        difference.largest = std::max({difference.largest, double{left}, double{right}});
    }
    return difference;
}

}  // namespace heard
