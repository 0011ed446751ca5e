#include "heard/Gaps.h"

namespace heard {

int gapsIn(const StereoSound& stretch)
{
    const auto shortest = static_cast<std::size_t>(stretch.rate / 1000);
    int gaps = 0;
    bool hasBegun = false;
    std::size_t zeros = 0;
    for (std::size_t i = 0; i < stretch.frames(); ++i) {
        if (stretch.left[i] == 0 && stretch.right[i] == 0) {
            ++zeros;
            continue;
        }
        gaps += hasBegun && zeros >= shortest ? 1 : 0;
        hasBegun = true;
        zeros = 0;
    }
    return gaps;
}

}  // namespace heard
