#include "sound/vocals/Rows.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {

std::vector<float> raisedCosine(std::size_t radius)
{
    std::vector<float> weights;
    const double unit = std::numbers::pi / static_cast<double>(radius + 1);
    for (std::size_t index = 0; index <= 2 * radius; ++index)
        weights.push_back(static_cast<float>((1 - std::cos(static_cast<double>(index + 1) * unit)) /
                                             static_cast<double>(2 * radius + 2)));
    return weights;
}

void smoothOverTime(const Rows& from, const std::vector<float>& weights, Rows& to)
{
    const std::size_t radius = weights.size() / 2;
    for (std::size_t index = 0; index < from.count(); ++index) {
        float* sum = to.row(index);
        std::fill_n(sum, to.width(), 0.0F);
        const std::size_t first = index < radius ? radius - index : 0;
        const std::size_t last = std::min(weights.size(), from.count() + radius - index);
        for (std::size_t neighbour = first; neighbour < last; ++neighbour) {
            const float* row = from.row(index + neighbour - radius);
            const float weight = weights[neighbour];
            for (std::size_t bin = 0; bin < from.width(); ++bin)
                sum[bin] += weight * row[bin];
        }
    }
}

void smoothOverBins(Rows& rows)
{
    for (std::size_t index = 0; index < rows.count(); ++index)
        smoothOverBins(rows.row(index), rows.width());
}

void smoothOverBins(float* row, std::size_t bins)
{
    float left = row[0];
    for (std::size_t bin = 0; bin < bins; ++bin) {
        const float middle = row[bin];
        const float right = row[std::min(bin + 1, bins - 1)];
        row[bin] = (left + right) / 4 + middle / 2;
        left = middle;
    }
}

}  // namespace sound
