#include "sound/dsp/TimeMap.h"

#include <algorithm>

namespace sound {

void TimeMap::start(double output, double input, double inputPerOutput)
{
    bends[0] = {output, input, inputPerOutput};
    count = 1;
}

const TimeMap::Bend& TimeMap::bendFor(double output) const
{
    std::size_t index = count - 1;
    while (index > 0 && bends[index].output > output)
        --index;
    return bends[index];
}

double TimeMap::inputAt(double output) const
{
    const Bend& bend = bendFor(output);
    return bend.input + (output - bend.output) * bend.slope;
}

double TimeMap::slopeAt(double output) const
{
    return bendFor(output).slope;
}

void TimeMap::scaleOutputAfter(double output, double factor)
{
    if (factor == 1.0)
        return;
    const Bend pivot{output, inputAt(output), slopeAt(output) / factor};

    std::size_t first = 0;
    while (first < count && bends[first].output <= output)
        ++first;
    for (std::size_t index = first; index < count; ++index) {
        bends[index].output = output + (bends[index].output - output) * factor;
        bends[index].slope /= factor;
    }
    if (count == capacity) {
        if (first > 0)
            bends[first - 1] = pivot;
        return;
    }
    std::copy_backward(bends.begin() + static_cast<std::ptrdiff_t>(first),
                       bends.begin() + static_cast<std::ptrdiff_t>(count),
                       bends.begin() + static_cast<std::ptrdiff_t>(count) + 1);
    bends[first] = pivot;
    ++count;
}

void TimeMap::bendAtInput(double input, double inputPerOutput)
{
    while (count > 1 && bends[count - 1].input >= input)
        --count;
    const Bend& last = bends[count - 1];
    const double output = std::max(last.output, last.output + (input - last.input) / last.slope);
    const Bend bend{output, last.input + (output - last.output) * last.slope, inputPerOutput};
    if (count == capacity)
        bends[capacity - 1] = bend;
    else
        bends[count++] = bend;
}

void TimeMap::forgetBefore(double output)
{
    std::size_t first = 0;
    while (first + 1 < count && bends[first + 1].output <= output)
        ++first;
    if (first == 0)
        return;
    std::copy(bends.begin() + static_cast<std::ptrdiff_t>(first),
              bends.begin() + static_cast<std::ptrdiff_t>(count), bends.begin());
    count -= first;
}

}  // namespace sound
