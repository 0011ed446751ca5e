#include "vocalremover/pictures/ActiveStretch.h"

#include "support/Numbers.h"

#include <algorithm>

namespace {

/// Ten of the units of which a window has fifteen to a pixel.
constexpr double hair = 10.0 / 15.0;

double share(int part, int whole)
{
    if (whole <= 0)
        return part > 0 ? 1 : 0;
    return std::clamp(static_cast<double>(part) / whole, 0.0, 1.0);
}

}  // namespace

int ActiveStretch::firstPixel() const
{
    return roundHalfToEven(begin);
}

int ActiveStretch::pixels() const
{
    return roundHalfToEven(end()) - firstPixel();
}

ActiveStretch lowCutStretch(double top, double height, int value, int maximum)
{
    return {top, height - height * share(value, maximum)};
}

ActiveStretch highCutStretch(double top, double height, int value, int minimum)
{
    const double left = height - height * share(minimum, value);
    return {height - left + top, left};
}

ActiveStretch gainStretch(double left, double width, int value, int maximum)
{
    const double rest = width - width * share(value, maximum);
    return {width - rest + left + hair, rest};
}
