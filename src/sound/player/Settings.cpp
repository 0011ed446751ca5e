#include "sound/player/Settings.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr float greatestSpeedChange = 60;
constexpr float greatestPitchChange = 12;

// Cut to a range on both sides of 0; what is no number changes nothing.
double cut(float value, float greatest)
{
    return std::isfinite(value) ? std::clamp(value, -greatest, greatest) : 0;
}

auto endOfBands(EqualizerBands& bands)
{
    return bands.band.begin() + static_cast<std::ptrdiff_t>(bands.count);
}

}  // namespace

double speedFactor(float percent)
{
    return 1 + cut(percent, greatestSpeedChange) / 100;
}

double pitchFactor(float semitones)
{
    return std::exp2(cut(semitones, greatestPitchChange) / 12);
}

EqualizerBand* findBand(EqualizerBands& bands, float frequency)
{
    const auto found = std::find_if(bands.band.begin(), endOfBands(bands),
                                    [&](const EqualizerBand& band) { return band.frequency == frequency; });
    return found == endOfBands(bands) ? nullptr : &*found;
}

bool addBand(EqualizerBands& bands, const EqualizerBand& band)
{
    if (bands.count == EqualizerBands::capacity || findBand(bands, band.frequency) != nullptr)
        return false;
    bands.band[bands.count++] = band;
    std::sort(bands.band.begin(), endOfBands(bands),
              [](const EqualizerBand& a, const EqualizerBand& b) { return a.frequency < b.frequency; });
    return true;
}

}  // namespace sound
