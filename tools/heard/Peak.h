#pragma once

#include <cstddef>
#include <vector>

namespace heard {

/// Where the curve through three neighbouring values has its top, as a fraction of a step from the middle one;
/// between -0.5 and 0.5 where the middle one is the largest.
constexpr double topOf(double before, double middle, double after)
{
    const double bend = before - 2 * middle + after;
    return bend < 0 ? (before - after) / (2 * bend) : 0;
}

/// The index of the largest value from @p begin up to before @p end, with its fraction. The range is not empty.
inline double peakBetween(const std::vector<double>& values, std::size_t begin, std::size_t end)
{
    std::size_t largest = begin;
    for (std::size_t i = begin; i < end; ++i) {
        largest = values[i] > values[largest] ? i : largest;
    }
    const bool hasNeighbours = largest > 0 && largest + 1 < values.size();
    const double fraction = hasNeighbours ? topOf(values[largest - 1], values[largest], values[largest + 1]) : 0;
    return static_cast<double>(largest) + fraction;
}

}  // namespace heard
