#include "sound/vocals/BandFilter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace sound {
namespace {

constexpr double stopDecibels = 100;
constexpr double kaiserBeta = 0.1102 * (stopDecibels - 8.7);

// A third of an octave down.
const double third = std::exp2(-1.0 / 3);

double bessel0(double x)
{
    double sum = 1;
    double term = 1;
    for (int k = 1; term > sum * 1e-17; ++k) {
        term *= (x / (2 * k)) * (x / (2 * k));
        sum += term;
    }
    return sum;
}

// The narrower of the two slopes is the lower one.
double slope(double low)
{
    return low * (1 - third);
}

std::size_t halfLength(double rate, double low)
{
    const double radians = 2 * std::numbers::pi * slope(low) / rate;
    return static_cast<std::size_t>(std::ceil((stopDecibels - 8) / (2.285 * radians) / 2));
}

// The middle half of each transform is free of what goes round its ends.
std::size_t transformSize(std::size_t half, std::size_t leastBlock)
{
    return std::bit_ceil(std::max(4 * half, 2 * leastBlock));
}

// sin(x t) / (pi t), the low pass of x radians a sample.
double sinc(double radians, double t)
{
    return t == 0 ? radians / std::numbers::pi : std::sin(radians * t) / (std::numbers::pi * t);
}

}  // namespace

BandFilter::BandFilter(double rate, double low, double high, std::size_t leastBlock)
    : transform(transformSize(halfLength(rate, low), leastBlock))
    , response(transform.bins())
{
    const std::size_t half = halfLength(rate, low);
    const double fromLow = 2 * std::numbers::pi * (low - slope(low) / 2) / rate;
    const double toHigh = std::min(2 * std::numbers::pi * (high + slope(low) / 2) / rate, std::numbers::pi);
    std::fill(transform.time.begin(), transform.time.end(), 0.0F);
    for (std::size_t tap = 0; tap <= half; ++tap) {
        const double t = static_cast<double>(tap);
        const double x = t / static_cast<double>(half);
        const double window = bessel0(kaiserBeta * std::sqrt(1 - x * x)) / bessel0(kaiserBeta);
        const auto value = static_cast<float>(window * (sinc(toHigh, t) - sinc(fromLow, t)));
        transform.time[tap] = value;
        transform.time[(transform.size() - tap) % transform.size()] = value;
    }
    transform.forward();
    for (std::size_t bin = 0; bin < response.size(); ++bin)
        response[bin] = transform.frequencies[bin].real() / static_cast<float>(transform.size());
}

void BandFilter::filter(std::span<const float> from, std::span<float> to)
{
    std::copy_n(from.begin(), transform.size(), transform.time.begin());
    transform.forward();
    for (std::size_t bin = 0; bin < response.size(); ++bin)
        transform.frequencies[bin] *= response[bin];
    transform.backward();
    std::copy_n(transform.time.begin() + static_cast<std::ptrdiff_t>(reach()), to.size(), to.begin());
}

}  // namespace sound
