#include "vocalmixes/IdealMask.h"

#include "heard/Fourier.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vocalmixes {

namespace {

// At 44.1 kHz a tenth of a second: a compromise of voices, whose pitch moves, and of plucked strings.
constexpr std::size_t kMaskBlock = 4096;
constexpr std::size_t kStep = kMaskBlock / 4;

class Masking
{
public:
    Masking(int rate, double lowCutOff, double highCutOff)
        : first(static_cast<std::size_t>(lowCutOff * kMaskBlock / rate))
        , last(static_cast<std::size_t>(highCutOff * kMaskBlock / rate))
    {
        for (std::size_t i = 0; i < kMaskBlock; ++i) {
            window[i] = .5 - .5 * std::cos(2 * std::numbers::pi * static_cast<double>(i) / kMaskBlock);
        }
    }

    std::vector<float> of(const std::vector<float>& wanted, const std::vector<float>& unwanted)
    {
        std::vector<double> sum(wanted.size() + kMaskBlock);
        // The first block ends with the first step.
        for (std::size_t end = kStep; end < sum.size(); end += kStep) {
            const heard::Spectrum good = spectrum(wanted, end);
            const heard::Spectrum bad = spectrum(unwanted, end);
            heard::Spectrum both(kMaskBlock);
            for (std::size_t i = 0; i < kMaskBlock; ++i) {
                const std::size_t bin = std::min(i, kMaskBlock - i);
                const double energy = std::norm(good[i]) + std::norm(bad[i]);
                const bool masked = bin >= first && bin <= last && energy > 0;
                both[i] = (good[i] + bad[i]) * (masked ? std::norm(good[i]) / energy : 1);
            }
            transform.backward(both);
            for (std::size_t i = 0; i < kMaskBlock; ++i) {
                if (end + i >= kMaskBlock) {
                    sum[end + i - kMaskBlock] +=
                        both[i].real() * window[i] / kMaskBlock / 1.5;  // squared windows add up to it
                }
            }
        }
        return {sum.begin(), sum.end() - static_cast<std::ptrdiff_t>(kMaskBlock)};
    }

private:
    heard::Spectrum spectrum(const std::vector<float>& sound, std::size_t end) const
    {
        heard::Spectrum values(kMaskBlock);
        for (std::size_t i = 0; i < kMaskBlock; ++i) {
            if (end + i >= kMaskBlock && end + i - kMaskBlock < sound.size()) {
                values[i] = sound[end + i - kMaskBlock] * window[i];
            }
        }
        transform.forward(values);
        return values;
    }

    std::size_t first;
    std::size_t last;
    std::vector<double> window = std::vector<double>(kMaskBlock);
    heard::FourierTransform transform{kMaskBlock};
};

}  // namespace

StereoSound idealResult(const Mix& mix, double lowCutOff, double highCutOff)
{
    Masking masking(mix.sum.rate, lowCutOff, highCutOff);
    return {mix.sum.rate, masking.of(mix.accompaniment.left, mix.voice.left),
            masking.of(mix.accompaniment.right, mix.voice.right)};
}

}  // namespace vocalmixes
