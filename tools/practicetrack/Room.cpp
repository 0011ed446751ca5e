#include "practicetrack/Room.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace practice {

namespace {

constexpr std::size_t kWalls = 4;

// Four delays whose lengths share no factor; each hears all of the others' echoes, so that echoes grow dense and no
// note stands out.
constexpr std::array<double, kWalls> kDelaySeconds{.0297, .0371, .0411, .0437};
constexpr double kReverberationSeconds = .55;
constexpr double kDamping = .45;

}  // namespace

StereoSound roomOf(const StereoSound& dry)
{
    std::array<std::vector<double>, kWalls> walls;
    std::array<double, kWalls> keep{};
    for (std::size_t wall = 0; wall < kWalls; ++wall) {
        walls[wall].resize(static_cast<std::size_t>(kDelaySeconds[wall] * dry.rate));
        keep[wall] = std::pow(10.0, -3 * kDelaySeconds[wall] / kReverberationSeconds);
    }

    StereoSound wet{dry.rate, std::vector<float>(dry.frames()), std::vector<float>(dry.frames())};
    std::array<double, kWalls> soft{};
    for (std::size_t frame = 0; frame < dry.frames(); ++frame) {
        std::array<double, kWalls> echo{};
        double sum = 0;
        for (std::size_t wall = 0; wall < kWalls; ++wall) {
            const double heard = walls[wall][frame % walls[wall].size()];
            soft[wall] += (1 - kDamping) * (heard - soft[wall]);
            echo[wall] = soft[wall] * keep[wall];
            sum += echo[wall];
        }
        for (std::size_t wall = 0; wall < kWalls; ++wall) {
            const double side = wall % 2 == 0 ? dry.left[frame] : dry.right[frame];
            walls[wall][frame % walls[wall].size()] = side + echo[wall] - sum / 2;  // a Householder mirror
        }
        wet.left[frame] = static_cast<float>(echo[0] + echo[2]);
        wet.right[frame] = static_cast<float>(echo[1] + echo[3]);
    }
    return wet;
}

}  // namespace practice
