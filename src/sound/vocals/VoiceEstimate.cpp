#include "sound/vocals/VoiceEstimate.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr std::size_t steadyWindows = 11;  // an instrument's proportion is taken over so many on either side
constexpr int passes = 2;                  // each knows better than the one before when the voice is weak

// How strong the music along is beside that across, where nothing else is known: what is in the middle of a record
// is stronger than its sides.
constexpr float musicAlong = 10;

// Even an instrument that stands almost where the voice does has a little of its own there.
constexpr float leastAlong = 0.05F;

constexpr float leastShare = 0.04F;

// How many moments of the steady ones tell something of their own.
constexpr float independentMoments = 10;

// Below anything heard; keeps silence from being divided by silence.
constexpr float nothing = 1e-12F;
constexpr float hardlyAnything = 1e-9F;

const std::vector<float>& steady()
{
    static const std::vector<float> weights = raisedCosine(steadyWindows);
    return weights;
}

const std::vector<float>& brief()
{
    static const std::vector<float> weights = raisedCosine(1);
    return weights;
}

static_assert(VoiceEstimate::windowsAround == passes * (steadyWindows + 1) + 1);
static_assert(VoiceEstimate::binsAround == 2 * passes + 1);

// @p put makes a number of @p to of its index.
template <typename Put>
void fill(Rows& to, std::size_t window, Put put)
{
    float* row = to.row(window);
    for (std::size_t bin = 0; bin < to.width(); ++bin)
        row[bin] = put(bin);
}

}  // namespace

TurnedSpectra::TurnedSpectra(std::size_t windows, std::size_t bins, std::size_t bassBins)
    : alongReal(windows, bins)
    , alongImaginary(windows, bins)
    , acrossReal(windows, bins)
    , acrossImaginary(windows, bins)
    , bass(windows, bassBins)
{
}

VoiceEstimate::VoiceEstimate(TurnedSpectra& turned, std::size_t first, const BassHarmonics& bassHarmonics)
    : sound(turned)
    , firstBin(first)
    , harmonics(bassHarmonics)
    , weight(turned.alongReal.count(), turned.alongReal.width())
    , real(weight)
    , imaginary(weight)
    , acrossPower(weight)
    , rest(weight)
    , share(weight)
    , work(weight)
{
}

void VoiceEstimate::estimate()
{
    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* re = sound.acrossReal.row(window);
        const float* im = sound.acrossImaginary.row(window);
        fill(work, window, [=](std::size_t bin) { return re[bin] * re[bin] + im[bin] * im[bin]; });
        fill(weight, window, [](std::size_t) { return 1.0F; });
    }
    smoothOverTime(work, brief(), acrossPower);
    smoothOverBins(acrossPower);
    for (int pass = 0; pass < passes; ++pass) {
        relate();
        measureRest();
        weigh();
    }
    decideShares();
    takeShares();
}

// The proportion of least squares. It is real for an instrument that was put into its place by its level alone. One
// that two microphones heard has phases too; they are believed as far as they stand out from what chance would
// make.
void VoiceEstimate::relate()
{
    Rows& across = share;
    Rows& along = rest;
    const auto smooth = [this](Rows& mean, auto product) {
        for (std::size_t window = 0; window < work.count(); ++window) {
            const float* weights = weight.row(window);
            const float* alongRe = sound.alongReal.row(window);
            const float* alongIm = sound.alongImaginary.row(window);
            const float* acrossRe = sound.acrossReal.row(window);
            const float* acrossIm = sound.acrossImaginary.row(window);
            fill(work, window, [=](std::size_t bin) {
                return weights[bin] * product(alongRe[bin], alongIm[bin], acrossRe[bin], acrossIm[bin]);
            });
        }
        smoothOverTime(work, steady(), mean);
        smoothOverBins(mean);
    };
    smooth(across, [](float, float, float re, float im) { return re * re + im * im; });
    smooth(along, [](float re, float im, float, float) { return re * re + im * im; });
    smooth(real, [](float re, float im, float re2, float im2) { return re * re2 + im * im2; });
    smooth(imaginary, [](float re, float im, float re2, float im2) { return im * re2 - re * im2; });

    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* acrossRow = across.row(window);
        const float* alongRow = along.row(window);
        float* re = real.row(window);
        float* im = imaginary.row(window);
        for (std::size_t bin = 0; bin < work.width(); ++bin) {
            const float power = acrossRow[bin] + nothing;
            const float inPhase = re[bin] / power;
            const float quarter = im[bin] / power;
            const float square = quarter * quarter;
            const float untold = std::max(alongRow[bin] / power - inPhase * inPhase - square, 0.0F);
            re[bin] = inPhase;
            im[bin] = quarter * square / (square + untold / independentMoments + nothing);
        }
    }
}

void VoiceEstimate::measureRest()
{
    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* alongRe = sound.alongReal.row(window);
        const float* alongIm = sound.alongImaginary.row(window);
        const float* acrossRe = sound.acrossReal.row(window);
        const float* acrossIm = sound.acrossImaginary.row(window);
        const float* re = real.row(window);
        const float* im = imaginary.row(window);
        fill(work, window, [=](std::size_t bin) {
            const float restRe = alongRe[bin] - (re[bin] * acrossRe[bin] - im[bin] * acrossIm[bin]);
            const float restIm = alongIm[bin] - (re[bin] * acrossIm[bin] + im[bin] * acrossRe[bin]);
            return restRe * restRe + restIm * restIm;
        });
    }
    smoothOverTime(work, brief(), rest);
    smoothOverBins(rest);
}

// What deviates from the proportion is voice. A moment with none tells no more than its music does.
void VoiceEstimate::weigh()
{
    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* restRow = rest.row(window);
        const float* across = acrossPower.row(window);
        fill(weight, window,
             [=](std::size_t bin) { return 1 / (restRow[bin] + across[bin] / 10 + hardlyAnything); });
    }
}

void VoiceEstimate::decideShares()
{
    const std::size_t bassEnd = std::min(harmonics.end(), firstBin + work.width());
    std::vector<float> bass(harmonics.end());
    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* re = real.row(window);
        const float* im = imaginary.row(window);
        const float* across = acrossPower.row(window);
        const float* restRow = rest.row(window);
        float* music = work.row(window);
        fill(work, window, [=](std::size_t bin) {
            const float told = re[bin] * re[bin] + im[bin] * im[bin];
            return std::max(musicAlong - told, leastAlong) * across[bin];
        });
        std::fill(bass.begin(), bass.end(), 0.0F);
        harmonics.raise(sound.bass.row(window), bass.data());
        smoothOverBins(bass.data(), bass.size());
        for (std::size_t bin = firstBin; bin < bassEnd; ++bin)
            music[bin - firstBin] += bass[bin];
        for (std::size_t bin = 0; bin < work.width(); ++bin)
            music[bin] = std::clamp(music[bin] / (restRow[bin] + nothing), leastShare, 1.0F);
    }
    smoothOverTime(work, brief(), share);
    smoothOverBins(share);
}

void VoiceEstimate::takeShares()
{
    for (std::size_t window = 0; window < work.count(); ++window) {
        const float* acrossRe = sound.acrossReal.row(window);
        const float* acrossIm = sound.acrossImaginary.row(window);
        const float* re = real.row(window);
        const float* im = imaginary.row(window);
        const float* shares = share.row(window);
        float* alongRe = sound.alongReal.row(window);
        float* alongIm = sound.alongImaginary.row(window);
        for (std::size_t bin = 0; bin < work.width(); ++bin) {
            const float voice = 1 - shares[bin];
            alongRe[bin] = voice * (alongRe[bin] - (re[bin] * acrossRe[bin] - im[bin] * acrossIm[bin]));
            alongIm[bin] = voice * (alongIm[bin] - (re[bin] * acrossIm[bin] + im[bin] * acrossRe[bin]));
        }
    }
}

}  // namespace sound
