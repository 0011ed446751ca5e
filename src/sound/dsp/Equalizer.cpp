#include "sound/dsp/Equalizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr double glideSeconds = 0.002;
constexpr double atRest = 0.0001;           // decibels
constexpr double highestPartOfRate = 0.45;  // centres above it would be bent out of shape by the half rate

}  // namespace

void Equalizer::prepare(SampleRate rate)
{
    hertz = rate.hertz;
    pull = 1 / std::max(1.0, glideSeconds * hertz);
    for (Filter& filter : filters)
        filter.place(hertz);
    settle();
}

void Equalizer::set(const EqualizerBands& bands)
{
    // Filter i is the band of its index; one that has moved on to make room for a lower band begins anew.
    count = std::min(bands.count, EqualizerBands::capacity);
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        const EqualizerBand& band = bands.band[index];
        if (filter.frequency != band.frequency || filter.bandwidth != band.bandwidth) {
            filter = {};
            filter.frequency = band.frequency;
            filter.bandwidth = band.bandwidth;
            filter.place(hertz);
        }
        filter.target = bands.enabled ? band.gain : 0;
    }
}

void Equalizer::settle()
{
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        filter.gain = filter.target;
        filter.speed = 0;
        filter.first = filter.second = {};
        filter.tune();
    }
}

void Equalizer::Filter::place(double rate)
{
    if (frequency <= 0)
        return;
    const double octaves = bandwidth / 12.0;
    const double angle = 2 * std::numbers::pi * frequency / rate;
    warpedCentre = std::tan(angle / 2);
    // Bandwidth to quality with the bilinear transform's warping taken out (R. Bristow-Johnson's cookbook).
    damping = 2 * std::sinh(std::numbers::ln2 / 2 * octaves * angle / std::sin(angle));
}

void Equalizer::Filter::tune()
{
    const double amplitude = std::pow(10.0, gain / 40.0);
    const double g = warpedCentre;
    const double k = damping / amplitude;
    a1 = 1 / (1 + g * (g + k));
    a2 = g * a1;
    a3 = g * a2;
    m1 = k * (amplitude * amplitude - 1);
}

// One frame further on the way to the target, as a weight on a critically damped spring: a corner in the gain of a
// low tone would be heard as a click.
void Equalizer::Filter::glide(double part)
{
    if (gain == target && speed == 0)
        return;
    speed += part * part * (target - gain) - 2 * part * speed;
    gain += speed;
    if (std::abs(target - gain) < atRest && std::abs(speed) < atRest) {
        gain = target;
        speed = 0;
    }
    tune();
}

float Equalizer::Filter::filtered(float sample, std::size_t side)
{
    const double v3 = sample - second[side];
    const double v1 = a1 * first[side] + a2 * v3;
    const double v2 = second[side] + a2 * first[side] + a3 * v3;
    first[side] = 2 * v1 - first[side];
    second[side] = 2 * v2 - second[side];
    return static_cast<float>(sample + m1 * v1);
}

void Equalizer::process(float* stereo, FrameCount frames)
{
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        if (filter.frequency > highestPartOfRate * hertz)
            continue;
        if (filter.gain == 0 && filter.target == 0 && filter.speed == 0) {
            filter.first = filter.second = {};
            continue;
        }
        for (std::int64_t frame = 0; frame < frames.value; ++frame) {
            filter.glide(pull);
            float* sides = stereo + 2 * frame;
            sides[0] = filter.filtered(sides[0], 0);
            sides[1] = filter.filtered(sides[1], 1);
        }
    }
}

}  // namespace sound
