#include "sound/player/Settings.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr float greatestSpeedChange = 60;
constexpr float greatestPitchChange = 12;

// Cut to a range on both sides of 0; what is no number changes nothing.
float cut(float value, float greatest)
{
    return std::isfinite(value) ? std::clamp(value, -greatest, greatest) : 0;
}

// False of what is no number, too.
bool hasPlaceAndWidth(const EqualizerBand& band)
{
    return band.frequency > 0 && std::isfinite(band.frequency) && band.bandwidth > 0 &&
           band.bandwidth <= EqualizerBand::greatestBandwidth;
}

auto endOfBands(EqualizerBands& bands)
{
    return bands.band.begin() + static_cast<std::ptrdiff_t>(bands.count);
}

}  // namespace

double speedFactor(float percent)
{
    return 1 + static_cast<double>(cut(percent, greatestSpeedChange)) / 100;
}

double pitchFactor(float semitones)
{
    return std::exp2(static_cast<double>(cut(semitones, greatestPitchChange)) / 12);
}

EqualizerBand* findBand(EqualizerBands& bands, float frequency)
{
    const auto found = std::find_if(bands.band.begin(), endOfBands(bands),
                                    [&](const EqualizerBand& band) { return band.frequency == frequency; });
    return found == endOfBands(bands) ? nullptr : &*found;
}

float bandGain(float decibels)
{
    return cut(decibels, EqualizerBand::greatestGain);
}

bool addBand(EqualizerBands& bands, const EqualizerBand& band)
{
    if (!hasPlaceAndWidth(band) || bands.count == EqualizerBands::capacity ||
        findBand(bands, band.frequency) != nullptr)
        return false;
    bands.band[bands.count++] = {band.frequency, band.bandwidth, bandGain(band.gain)};
    std::sort(bands.band.begin(), endOfBands(bands),
              [](const EqualizerBand& a, const EqualizerBand& b) { return a.frequency < b.frequency; });
    return true;
}

}  // namespace sound
