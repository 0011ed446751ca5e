#pragma once

#include <cstddef>
#include <vector>

namespace sound {

/// A number for each window of a sound and each bin of its spectrum: a row a window.
class Rows
{
public:
    Rows(std::size_t count, std::size_t width)
        : rowWidth(width)
        , numbers(count * width)
    {
    }

    std::size_t count() const { return rowWidth == 0 ? 0 : numbers.size() / rowWidth; }
    std::size_t width() const { return rowWidth; }
    float* row(std::size_t index) { return numbers.data() + index * rowWidth; }
    const float* row(std::size_t index) const { return numbers.data() + index * rowWidth; }

private:
    std::size_t rowWidth;
    std::vector<float> numbers;
};

/// The weights of 2 * @p radius + 1 neighbours under a raised cosine; they add up to 1.
std::vector<float> raisedCosine(std::size_t radius);

/// Each number becomes the mean of its neighbours in time. Before the first row and behind the last there is
/// nothing.
void smoothOverTime(const Rows& from, const std::vector<float>& weights, Rows& to);

/// Each number becomes the mean of its neighbours in frequency: a half of itself, a quarter of either.
void smoothOverBins(Rows& rows);
void smoothOverBins(float* row, std::size_t bins);

}  // namespace sound
