#include "sound/dsp/Equalizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr std::int64_t framesAStep = 16;
constexpr float decibelsASecond = 1500;     // a band's whole range in a fiftieth of a second
constexpr double highestPartOfRate = 0.45;  // centres above it would be bent out of shape by the half rate

}  // namespace

void Equalizer::prepare(SampleRate rate)
{
    hertz = rate.hertz;
    stepDecibels = decibelsASecond * static_cast<float>(framesAStep) / static_cast<float>(rate.hertz);
    settle();
}

void Equalizer::set(const EqualizerBands& bands)
{
    // Bands are only ever added, so that filter i is always the band of its index.
    count = std::min(bands.count, EqualizerBands::capacity);
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        const EqualizerBand& band = bands.band[index];
        if (filter.frequency != band.frequency || filter.bandwidth != band.bandwidth) {
            filter = {};
            filter.frequency = band.frequency;
            filter.bandwidth = band.bandwidth;
        }
        filter.target = bands.enabled ? band.gain : 0;
    }
}

void Equalizer::settle()
{
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        filter.gain = filter.target;
        filter.first = filter.second = {};
        filter.tune(hertz);
    }
}

void Equalizer::Filter::tune(double rate)
{
    const double amplitude = std::pow(10.0, gain / 40.0);
    const double octaves = bandwidth / 12.0;
    const double angle = 2 * std::numbers::pi * frequency / rate;
    // Bandwidth to quality with the bilinear transform's warping taken out (R. Bristow-Johnson's cookbook).
    const double sinh = std::sinh(std::numbers::ln2 / 2 * octaves * angle / std::sin(angle));
    const double g = std::tan(angle / 2);
    const double k = 2 * sinh / amplitude;
    a1 = 1 / (1 + g * (g + k));
    a2 = g * a1;
    a3 = g * a2;
    m1 = k * (amplitude * amplitude - 1);
}

void Equalizer::step(Filter& filter) const
{
    if (filter.gain == filter.target)
        return;
    filter.gain += std::clamp(filter.target - filter.gain, -stepDecibels, stepDecibels);
    filter.tune(hertz);
}

void Equalizer::process(float* stereo, FrameCount frames)
{
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        if (filter.frequency > highestPartOfRate * hertz)
            continue;
        if (filter.gain == 0 && filter.target == 0) {
            filter.first = filter.second = {};
            continue;
        }
        for (std::int64_t begin = 0; begin < frames.value; begin += framesAStep) {
            step(filter);
            const std::int64_t end = std::min(begin + framesAStep, frames.value);
            for (std::size_t side = 0; side < 2; ++side) {
                double first = filter.first[side];
                double second = filter.second[side];
                for (std::int64_t frame = begin; frame < end; ++frame) {
                    float& sample = stereo[2 * frame + static_cast<std::int64_t>(side)];
                    const double v3 = sample - second;
                    const double v1 = filter.a1 * first + filter.a2 * v3;
                    const double v2 = second + filter.a2 * first + filter.a3 * v3;
                    first = 2 * v1 - first;
                    second = 2 * v2 - second;
                    sample = static_cast<float>(sample + filter.m1 * v1);
                }
                filter.first[side] = first;
                filter.second[side] = second;
            }
        }
    }
}

}  // namespace sound
