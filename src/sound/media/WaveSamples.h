#pragma once

#include <cstdint>
#include <span>

namespace sound {

/// How a RIFF WAVE file keeps its samples. All of them begin with their lowest byte.
enum class WaveSamples
{
    Float32,
    Pcm8,  ///< Without a sign: silence is 128.
    Pcm16,
    Pcm24,
    Pcm32,
};

constexpr int bytesPerSample(WaveSamples kind)
{
    switch (kind) {
    case WaveSamples::Pcm8:
        return 1;
    case WaveSamples::Pcm16:
        return 2;
    case WaveSamples::Pcm24:
        return 3;
    case WaveSamples::Pcm32:
    case WaveSamples::Float32:
        break;
    }
    return 4;
}

/// Brings samples from the form of a file to floats. Integers are divided by their full scale: of 32 bits a float
/// holds the upper 24, of fewer all. What is no finite number is silence. Here and below @p packed holds as many
/// samples as the others do.
void unpackSamples(WaveSamples kind, std::span<const std::uint8_t> packed, std::span<float> samples);

/// Brings floats to the form of a file. For integers they are rounded to the nearest step and cut at full scale,
/// and what is no number is silence; as floats they stay what they are.
void packSamples(WaveSamples kind, std::span<const float> samples, std::span<std::uint8_t> packed);

/// Changes samples where they are packed: by what lies between @p before, which unpackSamples() made of them, and
/// @p after. So what has not changed stays the same to the bit, also that of 32 bits which a float does not hold.
/// What has is rounded and cut as packSamples() does. Where @p after is no finite number there is silence.
void changeSamples(WaveSamples kind, std::span<const float> before, std::span<const float> after,
                   std::span<std::uint8_t> packed);

}  // namespace sound
