#include "sound/Signals.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>

namespace sound::test {
namespace {

using std::numbers::pi;

// The component at @p hertz of a stretch under a Hann window, turned back to phase 0 at the stretch's frame 0.
std::complex<double> component(std::span<const float> mono, double hertz, SampleRate rate)
{
    const auto length = static_cast<double>(mono.size());
    const std::complex<double> step = std::polar(1.0, -2 * pi * hertz / rate.hertz);
    const std::complex<double> windowStep = std::polar(1.0, 2 * pi / length);
    std::complex<double> turned = 1;
    std::complex<double> windowTurned = std::polar(1.0, pi / length);
    std::complex<double> sum = 0;
    double weights = 0;
    for (const float sample : mono) {
        const double weight = 0.5 - 0.5 * windowTurned.real();
        sum += weight * static_cast<double>(sample) * turned;
        weights += weight;
        turned *= step;  // which loses less than a part in 10^9 over a million frames
        windowTurned *= windowStep;
    }
    return 2.0 * sum / weights;
}

}  // namespace

MemorySound::MemorySound(SampleRate rate, int channels, std::vector<float> interleaved)
    : soundRate(rate)
    , channelCount(channels)
    , samples(std::move(interleaved))
    , decoded(length())
{
}

MemorySound MemorySound::of(SampleRate rate, int channels, FrameCount length,
                            const std::function<double(std::int64_t, int)>& wave)
{
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(length.value * channels));
    for (std::int64_t frame = 0; frame < length.value; ++frame) {
        for (int channel = 0; channel < channels; ++channel)
            samples.push_back(static_cast<float>(wave(frame, channel)));
    }
    return {rate, channels, std::move(samples)};
}

FrameCount MemorySound::length() const
{
    return {static_cast<std::int64_t>(samples.size()) / channelCount};
}

float MemorySound::sample(std::int64_t frame, int channel) const
{
    if (frame < 0 || frame >= decoded.value)
        return 0;
    return samples[static_cast<std::size_t>(frame * channelCount + channel)];
}

void MemorySound::read(FramePosition from, FrameCount count, float* interleaved) const
{
    for (std::int64_t frame = 0; frame < count.value; ++frame) {
        for (int channel = 0; channel < channelCount; ++channel)
            *interleaved++ = sample(from.value + frame, channel);
    }
}

MemorySound sineSound(SampleRate rate, int channels, double hertz, double seconds)
{
    const FrameCount length{static_cast<std::int64_t>(seconds * rate.hertz)};
    return MemorySound::of(rate, channels, length, [&](std::int64_t frame, int) {
        return 0.5 * std::sin(2 * pi * hertz * static_cast<double>(frame) / rate.hertz);
    });
}

MemorySound sweepSound(SampleRate rate, double firstHertz, double hertzASecond, double seconds)
{
    const FrameCount length{static_cast<std::int64_t>(seconds * rate.hertz)};
    return MemorySound::of(rate, 1, length, [&](std::int64_t frame, int) {
        const double time = static_cast<double>(frame) / rate.hertz;
        return 0.5 * std::sin(2 * pi * (firstHertz * time + hertzASecond / 2 * time * time));
    });
}

MemorySound noiseSound(SampleRate rate, int channels, FrameCount length, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> level(-0.25, 0.25);
    return MemorySound::of(rate, channels, length, [&](std::int64_t, int) { return level(generator); });
}

std::vector<float> channelOf(std::span<const float> interleaved, int channels, int channel)
{
    std::vector<float> mono;
    mono.reserve(interleaved.size() / static_cast<std::size_t>(channels));
    for (std::size_t index = static_cast<std::size_t>(channel); index < interleaved.size();
         index += static_cast<std::size_t>(channels))
        mono.push_back(interleaved[index]);
    return mono;
}

double measuredFrequency(std::span<const float> mono, SampleRate rate, double expected)
{
    // Windows long enough to hold many periods, and a line through the phases of all of them.
    const auto window = static_cast<std::size_t>(std::max(rate.hertz / 8.0, rate.hertz * 24.0 / expected));
    const std::size_t hop = window / 2;
    std::vector<double> phases;
    double turned = 0;
    for (std::size_t begin = 0; begin + window <= mono.size(); begin += hop) {
        const double phase = std::arg(component(mono.subspan(begin, window), expected, rate));
        // What the expected frequency alone turns between two windows is taken out, so that the rest is small.
        const double advance = 2 * pi * expected * static_cast<double>(begin) / rate.hertz;
        const double rest = std::remainder(phase - advance - turned, 2 * pi) + turned;
        turned = rest;
        phases.push_back(rest);
    }
    const auto count = static_cast<double>(phases.size());
    double meanPhase = 0;
    for (const double phase : phases)
        meanPhase += phase / count;
    double product = 0;
    double square = 0;
    for (std::size_t index = 0; index < phases.size(); ++index) {
        const double place = static_cast<double>(index) - (count - 1) / 2;
        product += place * (phases[index] - meanPhase);
        square += place * place;
    }
    return expected + product / square / (2 * pi) * rate.hertz / static_cast<double>(hop);
}

double pitchOf(int semitones)
{
    return std::exp2(semitones / 12.0);
}

double centsBetween(double hertz, double reference)
{
    return 1200 * std::log2(hertz / reference);
}

double amplitudeAt(std::span<const float> mono, SampleRate rate, double hertz)
{
    return std::abs(component(mono, hertz, rate));
}

double answeredGain(std::span<const float> answer, SampleRate rate, double hertz)
{
    const std::complex<double> step = std::polar(1.0, -2 * pi * hertz / rate.hertz);
    std::complex<double> sum = 0;
    for (auto sample = answer.rbegin(); sample != answer.rend(); ++sample)
        sum = sum * step + static_cast<double>(*sample);
    return decibels(std::abs(sum), 1);
}

bool allFinite(std::span<const float> samples)
{
    return std::ranges::all_of(samples, [](float sample) { return std::isfinite(sample); });
}

double largestStep(std::span<const float> mono)
{
    double largest = 0;
    for (std::size_t frame = 1; frame < mono.size(); ++frame)
        largest = std::max(largest, std::abs(static_cast<double>(mono[frame]) - mono[frame - 1]));
    return largest;
}

double largestBend(std::span<const float> mono)
{
    double largest = 0;
    for (std::size_t frame = 2; frame < mono.size(); ++frame)
        largest =
            std::max(largest, std::abs(static_cast<double>(mono[frame]) - 2.0 * mono[frame - 1] + mono[frame - 2]));
    return largest;
}

double levelOf(std::span<const float> mono)
{
    double sum = 0;
    for (const double sample : mono)
        sum += sample * sample;
    return std::sqrt(sum / static_cast<double>(mono.size()));
}

double decibels(double part, double whole)
{
    return 20 * std::log10(part / whole);
}

std::vector<double> turnedAgainst(std::span<const float> mono, std::span<const double> phases, std::size_t window)
{
    std::vector<double> turns;
    for (std::size_t begin = 0; begin + window <= mono.size(); begin += window / 2) {
        std::complex<double> sum = 0;
        for (std::size_t frame = 0; frame < window; ++frame) {
            const double weight =
                0.5 - 0.5 * std::cos(2 * pi * (static_cast<double>(frame) + 0.5) / static_cast<double>(window));
            sum += weight * static_cast<double>(mono[begin + frame]) * std::polar(1.0, -phases[begin + frame]);
        }
        // A sine lies a quarter turn behind the cosine that the sum measures against.
        const double turn = std::arg(sum) + pi / 2;
        const double before = turns.empty() ? 0.0 : turns.back();
        turns.push_back(before + std::remainder(turn - before, 2 * pi));
    }
    return turns;
}

}  // namespace sound::test
