#pragma once

#include <algorithm>
#include <cmath>
#include <random>

/// Peaks as a piece of music makes them, a hundred a second: a loud beat twice a second, softer sounds between the
/// beats that die away, and no two alike.
class MusicPeaks
{
public:
    struct Levels
    {
        short left;
        short right;
    };

    Levels next()
    {
        const bool beat = count % 50 == 0;
        const bool between = count % 25 == 0 || count % 17 == 0;
        ++count;
        envelope = std::max(envelope * 0.97, beat ? 1.0 : between ? 0.6 : 0.15);
        return {level(), level()};
    }

private:
    short level() { return static_cast<short>(std::lround(32767 * envelope * spread(generator))); }

    std::mt19937 generator{11};
    std::uniform_real_distribution<> spread{0.7, 1.0};
    double envelope = 0;
    int count = 0;
};
