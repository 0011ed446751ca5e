#pragma once

#include "sound/HandMadeWave.h"

#include <QByteArray>
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

/// A short sound in which an encoder has something to decide about, in every form of a WAVE file.
namespace sound::test {

/// Steps of 16 bits, interleaved: a chord that is nearly the same in both channels, a high whistle, and every tenth
/// of a second a clap out of near silence. The loudest sample is 32767.
inline std::vector<int> shortMusic(int rate, int channels, double seconds = 0.35)
{
    std::minstd_rand random(1);
    std::vector<int> steps;
    const auto frames = static_cast<int>(seconds * rate);
    for (int frame = 0; frame < frames; ++frame) {
        const double time = static_cast<double>(frame) / rate;
        const double sinceClap = std::fmod(time + 0.05, 0.1);
        const double noise = static_cast<double>(random() % 2001) / 1000 - 1;
        const double clap = noise * (0.6 * std::exp(-400 * sinceClap) + 0.002);
        const double swell = sinceClap > 0.08 ? 0.01 : 0.15;
        const double whistle = std::min(15'000.0, 0.4 * rate);
        const auto sine = [&](double hertz) { return std::sin(2 * std::numbers::pi * hertz * time); };
        for (int channel = 0; channel < channels; ++channel) {
            const double chord = sine(440) + sine(554) + (channel == 0 ? 1 : 0.7) * sine(659);
            const double value = swell * chord + 0.05 * sine(whistle - 150 * channel) + (1 - 0.1 * channel) * clap;
            steps.push_back(static_cast<int>(std::lround(32'000 * std::clamp(value, -1.0, 1.0))));
        }
    }
    steps[steps.size() / 2] = 32'767;
    return steps;
}

/// How a file keeps its samples. All but the bytes have all 16 bits of a step.
enum class Keeping
{
    Bytes,
    Bits16,
    Bits24,
    Bits32,
    Float32,
    Float64,
};

inline int bitsOf(Keeping keeping)
{
    switch (keeping) {
    case Keeping::Bytes:
        return 8;
    case Keeping::Bits16:
        return 16;
    case Keeping::Bits24:
        return 24;
    case Keeping::Bits32:
    case Keeping::Float32:
        return 32;
    case Keeping::Float64:
        break;
    }
    return 64;
}

inline int tagOf(Keeping keeping)
{
    return keeping == Keeping::Float32 || keeping == Keeping::Float64 ? 3 : 1;
}

inline QByteArray packed(Keeping keeping, const std::vector<int>& steps)
{
    const int size = bitsOf(keeping) / 8;
    QByteArray bytes;
    for (const int step : steps) {
        std::uint64_t word = 0;
        if (keeping == Keeping::Bytes)
            word = static_cast<std::uint64_t>((step >> 8) + 128);
        else if (keeping == Keeping::Float32)
            word = std::bit_cast<std::uint32_t>(static_cast<float>(step) / 32'768);
        else if (keeping == Keeping::Float64)
            word = std::bit_cast<std::uint64_t>(static_cast<double>(step) / 32'768);
        else
            word =
                static_cast<std::uint64_t>(static_cast<std::int64_t>(step) * (std::int64_t{1} << (8 * size - 16)));
        bytes += littleEndian(word, size);
    }
    return bytes;
}

inline Form formOf(Keeping keeping, int rate, int channels)
{
    return {.tag = tagOf(keeping),
            .channels = channels,
            .rate = static_cast<std::uint32_t>(rate),
            .bits = bitsOf(keeping)};
}

inline QByteArray musicWave(Keeping keeping = Keeping::Bits16, int rate = 44'100, int channels = 2,
                            double seconds = 0.35)
{
    return riff(formChunk(formOf(keeping, rate, channels)) +
                dataChunk(packed(keeping, shortMusic(rate, channels, seconds))));
}

/// Every sample of so many bytes turned round.
inline QByteArray swapped(QByteArray bytes, int size)
{
    for (qsizetype i = 0; i + size <= bytes.size(); i += size)
        std::reverse(bytes.begin() + i, bytes.begin() + i + size);
    return bytes;
}

}  // namespace sound::test
