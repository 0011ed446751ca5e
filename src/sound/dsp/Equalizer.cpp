#include "sound/dsp/Equalizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr double glideSeconds = 0.002;
constexpr double atRest = 0.0001;           // decibels
constexpr double leastGain = 0.000001;      // decibels
constexpr double highestPartOfRate = 0.45;  // centres above it would be bent out of shape by the half rate

constexpr double squared(double number)
{
    return number * number;
}

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
    carried = frequency > 0 && frequency <= highestPartOfRate * rate;
    if (!carried)
        return;
    const auto squaredTangent = [rate](double hertz) {
        const double tangent = std::tan(std::numbers::pi * hertz / rate);
        return tangent * tangent;
    };
    const double halfWidth = std::exp2(bandwidth / 24.0);
    centre = squaredTangent(frequency);
    lowerEdge = squaredTangent(frequency / halfWidth);
    width = squared(halfWidth - 1 / halfWidth);
    const double highest = rate / 2 / frequency;
    detuning = squared(highest - 1 / highest);
}

// In s, the bilinear transform's frequency, the filter is (peak = g, n = gain at half the rate)
//
//     n s^2 + b s + w
//     ---------------
//       s^2 + a s + w
//
// At 0 Hz and at half the rate its gain is right already. The squared gain less g^2 has to have a double zero at
// the centre, so that the peak lies there, which gives w and binds b to a; that it is g, the square of half the
// gain in decibels, at the lower edge gives a.
void Equalizer::Filter::tune()
{
    if (!carried)
        return;
    // At 0 all filters are the same: what is less than a float's last bit is taken for that bit.
    const double decibels = std::copysign(std::max(std::abs(gain), leastGain), gain);
    const double g = std::pow(10.0, decibels / 20);
    const double gg = g * g;
    const double nn = (detuning + width * g) / (detuning + width / g);
    const double n = std::sqrt(nn);
    const double w = centre * std::sqrt((gg - nn) / (gg - 1));
    const double bound = 2 * centre * (gg - nn) + 2 * w * (n - gg);
    const double aa = ((g - nn) * lowerEdge + w * w * (g - 1) / lowerEdge - bound + 2 * w * (n - g)) / (gg - g);
    const double bb = gg * aa + bound;

    const double cutoff = std::sqrt(w);
    const double damping = std::sqrt(aa) / cutoff;
    a1 = 1 / (1 + cutoff * (cutoff + damping));
    a2 = cutoff * a1;
    a3 = cutoff * a2;
    m0 = n;
    m1 = std::sqrt(bb) / cutoff - n * damping;
    m2 = 1 - n;
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
    return static_cast<float>(m0 * sample + m1 * v1 + m2 * v2);
}

void Equalizer::process(float* stereo, FrameCount frames)
{
    for (std::size_t index = 0; index < count; ++index) {
        Filter& filter = filters[index];
        if (!filter.carried)
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
