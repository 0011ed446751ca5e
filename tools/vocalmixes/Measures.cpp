#include "vocalmixes/Measures.h"

#include "heard/Fourier.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

namespace vocalmixes {

namespace {

constexpr std::size_t kBlock = 65536;

// The window's shape: what stands beside its main lobe is 170 dB below it, so that the loud music between the
// cut-offs is not taken for what is beyond them.
constexpr double kShape = 18;
constexpr double kLobe = 6;  // half of the main lobe, in bins

// A part of the spectrum that has less of the sound than this has none: against it, the rounding of the others'
// samples would be a difference.
constexpr double kFaintest = 1e-4;

double square(double value)
{
    return value * value;
}

double decibels(double energies)
{
    return 10 * std::log10(energies);
}

// The modified Bessel function of the first kind and order 0.
double bessel(double x)
{
    double sum = 1;
    double term = 1;
    for (int k = 1; term > sum * 1e-17; ++k) {
        term *= square(x / 2 / k);
        sum += term;
    }
    return sum;
}

std::vector<double> kaiserWindow()
{
    std::vector<double> window(kBlock);
    for (std::size_t i = 0; i < kBlock; ++i) {
        const double place = 2 * (static_cast<double>(i) + 0.5) / kBlock - 1;
        window[i] = bessel(kShape * std::sqrt(1 - square(place))) / bessel(kShape);
    }
    return window;
}

// Of a block of both channels, the left one as real and the right one as imaginary part.
struct Energies
{
    double below = 0;
    double above = 0;
    double all = 0;
};

class Spectrometer
{
public:
    Spectrometer(int rate, double below, double above)
        : lastBelow(static_cast<std::size_t>(std::max(0.0, below * kBlock / rate - kLobe)))
        , firstAbove(static_cast<std::size_t>(std::min(above * kBlock / rate + kLobe, kBlock / 2.0)))
    {
    }

    template <typename FrameAt>
    Energies of(std::size_t begin, FrameAt frameAt)
    {
        for (std::size_t i = 0; i < kBlock; ++i) {
            spectrum[i] = window[i] * frameAt(begin + i);
        }
        transform.forward(spectrum);
        Energies energies;
        for (std::size_t i = 0; i < kBlock; ++i) {
            const std::size_t bin = std::min(i, kBlock - i);
            const double energy = std::norm(spectrum[i]);
            energies.all += energy;
            energies.below += bin <= lastBelow ? energy : 0;
            energies.above += bin >= firstAbove ? energy : 0;
        }
        return energies;
    }

private:
    std::size_t lastBelow;
    std::size_t firstAbove;
    std::vector<double> window = kaiserWindow();
    heard::FourierTransform transform{kBlock};
    heard::Spectrum spectrum = heard::Spectrum(kBlock);
};

}  // namespace

double signalToDistortion(const StereoSound& wanted, const StereoSound& heard)
{
    double signal = 0;
    double distortion = 0;
    for (std::size_t i = 0; i < wanted.frames(); ++i) {
        signal += square(wanted.left[i]) + square(wanted.right[i]);
        distortion += square(wanted.left[i] - heard.left[i]) + square(wanted.right[i] - heard.right[i]);
    }
    return decibels(signal / distortion);
}

double channelCorrelation(const StereoSound& sound)
{
    double left = 0;
    double right = 0;
    double both = 0;
    for (std::size_t i = 0; i < sound.frames(); ++i) {
        left += square(sound.left[i]);
        right += square(sound.right[i]);
        both += static_cast<double>(sound.left[i]) * sound.right[i];
    }
    return both / std::sqrt(left * right);
}

Null nullOutside(const StereoSound& original, const StereoSound& heard, double lowCutOff, double highCutOff)
{
    const double third = std::cbrt(2.0);
    Spectrometer spectrometer(original.rate, lowCutOff / third, highCutOff * third);
    const auto frameOf = [](const StereoSound& sound, std::size_t i) {
        return std::complex<double>(sound.left[i], sound.right[i]);
    };

    Energies mean;
    Energies worst;
    int blocks = 0;
    for (std::size_t begin = 0; begin + kBlock <= original.frames(); begin += kBlock / 2) {
        const Energies there = spectrometer.of(begin, [&](std::size_t i) { return frameOf(original, i); });
        const Energies difference =
            spectrometer.of(begin, [&](std::size_t i) { return frameOf(heard, i) - frameOf(original, i); });
        mean.below += there.below;
        mean.above += there.above;
        mean.all += there.all;
        worst.below = std::max(worst.below, difference.below);
        worst.above = std::max(worst.above, difference.above);
        ++blocks;
    }
    const double faintest = kFaintest * mean.all;
    return {decibels(std::max(worst.below / std::max(mean.below, faintest),
                              worst.above / std::max(mean.above, faintest)) *
                     blocks),
            decibels(std::max(worst.below, worst.above) / mean.all * blocks)};
}

}  // namespace vocalmixes
