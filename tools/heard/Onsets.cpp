#include "heard/Onsets.h"

#include "heard/Fourier.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>

namespace heard {

namespace {

constexpr std::size_t kNoteWindow = 1024;
constexpr std::size_t kNoteHop = 128;
constexpr double kCompression = 100;

// Calls back with the spectrum around each moment.
template <typename Callback>
void eachSpectrum(const StereoSound& sound, std::size_t window, std::size_t hop, const Callback& callback)
{
    const FourierTransform fourier(window);
    const std::vector<double> weights = hannWindow(window);
    const std::vector<float> samples = mono(sound);
    Spectrum spectrum(window);
    for (std::size_t middle = 0; middle < samples.size(); middle += hop) {
        for (std::size_t i = 0; i < window; ++i) {
            const std::size_t at = middle + i;  // from half a window before the middle on
            const bool inside = at >= window / 2 && at - window / 2 < samples.size();
            spectrum[i] = inside ? weights[i] * static_cast<double>(samples[at - window / 2]) : 0.0;
        }
        fourier.forward(spectrum);
        callback(spectrum);
    }
}

double loudnessOf(const std::complex<double>& value)
{
    return std::log1p(kCompression * magnitudeOf(value));
}

// Two bands an octave.
std::size_t bandOf(std::size_t bin)
{
    return static_cast<std::size_t>(2 * std::log2(static_cast<double>(bin)));
}

}  // namespace

Bands spectrogramOf(const StereoSound& sound)
{
    constexpr std::size_t kLongWindow = 4096;
    constexpr std::size_t kLongHop = 1024;
    const auto lines = static_cast<std::size_t>(4000.0 * kLongWindow / sound.rate);
    Bands loudness{static_cast<double>(sound.rate) / kLongHop, std::vector<std::vector<double>>(lines)};
    eachSpectrum(sound, kLongWindow, kLongHop, [&](const Spectrum& spectrum) {
        for (std::size_t line = 0; line < lines; ++line) {
            loudness.bands[line].push_back(loudnessOf(spectrum[line + 1]));
        }
    });
    return loudness;
}

Bands bandOnsetsOf(const StereoSound& sound, std::size_t hop)
{
    Bands onsets{static_cast<double>(sound.rate) / static_cast<double>(hop), {}};
    std::vector<double> before(kNoteWindow / 2);
    eachSpectrum(sound, kNoteWindow, hop, [&](const Spectrum& spectrum) {
        std::vector<double> growth(bandOf(kNoteWindow / 2 - 1) + 1);
        for (std::size_t bin = 1; bin < kNoteWindow / 2; ++bin) {
            const double loudness = loudnessOf(spectrum[bin]);
            growth[bandOf(bin)] += std::max(0.0, loudness - before[bin]);
            before[bin] = loudness;
        }
        onsets.bands.resize(growth.size());
        for (std::size_t band = 0; band < growth.size(); ++band) {
            onsets.bands[band].push_back(growth[band]);
        }
    });
    return onsets;
}

Onsets onsetsOf(const StereoSound& sound)
{
    const Bands of = bandOnsetsOf(sound, kNoteHop);
    Onsets onsets{of.rate, std::vector<double>(of.bands.empty() ? 0 : of.bands.front().size())};
    for (const std::vector<double>& band : of.bands) {
        std::transform(band.begin(), band.end(), onsets.strength.begin(), onsets.strength.begin(), std::plus<>());
    }
    return onsets;
}

Onsets blurred(const Onsets& onsets, double seconds, std::size_t divisor)
{
    const double width = seconds * onsets.rate;
    const auto reach = static_cast<std::ptrdiff_t>(std::ceil(3 * width));
    const auto count = static_cast<std::ptrdiff_t>(onsets.strength.size());

    Onsets soft{onsets.rate / static_cast<double>(divisor), {}};
    for (std::ptrdiff_t at = 0; at < count; at += static_cast<std::ptrdiff_t>(divisor)) {
        double sum = 0;
        double weights = 0;
        for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, at - reach); i < std::min(count, at + reach + 1); ++i) {
            const double distance = static_cast<double>(i - at) / width;
            const double weight = std::exp(-distance * distance / 2);
            sum += weight * onsets.strength[static_cast<std::size_t>(i)];
            weights += weight;
        }
        soft.strength.push_back(sum / weights);
    }
    return soft;
}

}  // namespace heard
