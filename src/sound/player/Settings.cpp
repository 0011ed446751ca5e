#include "sound/player/Settings.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

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

EqualizerBand* findBand(EqualizerBands& bands, float frequency)
{
    const auto found = std::find_if(bands.band.begin(), endOfBands(bands),
                                    [&](const EqualizerBand& band) { return band.frequency == frequency; });
    return found == endOfBands(bands) ? nullptr : &*found;
}

float bandGain(float decibels)
{
    constexpr float greatest = EqualizerBand::greatestGain;
    return std::isfinite(decibels) ? std::clamp(decibels, -greatest, greatest) : 0;
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
