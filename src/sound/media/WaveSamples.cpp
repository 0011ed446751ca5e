#include "sound/media/WaveSamples.h"

#include "sound/media/ToFloat.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace sound {
namespace {

static_assert(std::endian::native == std::endian::little);

/// Steps from silence to full scale.
template <int size>
constexpr double fullScaleOf = std::uint32_t{1} << (8 * size - 1);

constexpr std::int32_t middleOfBytes = 128;

template <int size>
std::int32_t loadInteger(const std::uint8_t* bytes)
{
    if constexpr (size == 1) {
        return *bytes - middleOfBytes;
    } else {
        // Read as the upper bytes of a word, so that the sign comes with them.
        std::uint32_t word = 0;
        for (int i = 0; i < size; ++i)
            word |= static_cast<std::uint32_t>(bytes[i]) << (8 * (4 - size + i));
        return static_cast<std::int32_t>(word) >> (8 * (4 - size));
    }
}

template <int size>
void storeInteger(std::int32_t value, std::uint8_t* bytes)
{
    const auto word = static_cast<std::uint32_t>(size == 1 ? value + middleOfBytes : value);
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(word >> (8 * i));
}

template <int size>
std::int32_t nearestInteger(double steps)
{
    return static_cast<std::int32_t>(std::llrint(std::clamp(steps, -fullScaleOf<size>, fullScaleOf<size> - 1)));
}

/// Calls @p work with the size of the integers as a constant.
template <typename Work>
void withSizeOf(WaveSamples kind, const Work& work)
{
    switch (bytesPerSample(kind)) {
    case 1:
        return work(std::integral_constant<int, 1>());
    case 2:
        return work(std::integral_constant<int, 2>());
    case 3:
        return work(std::integral_constant<int, 3>());
    default:
        return work(std::integral_constant<int, 4>());
    }
}

}  // namespace

void unpackSamples(WaveSamples kind, std::span<const std::uint8_t> packed, std::span<float> samples)
{
    const std::uint8_t* bytes = packed.data();
    if (kind == WaveSamples::Float32) {
        for (float& sample : samples) {
            std::memcpy(&sample, bytes, sizeof(float));
            sample = toFloat(sample);
            bytes += sizeof(float);
        }
        return;
    }
    withSizeOf(kind, [&](auto size) {
        constexpr auto step = static_cast<float>(1 / fullScaleOf<size()>);
        for (float& sample : samples) {
            sample = static_cast<float>(loadInteger<size()>(bytes)) * step;
            bytes += size();
        }
    });
}

void packSamples(WaveSamples kind, std::span<const float> samples, std::span<std::uint8_t> packed)
{
    std::uint8_t* bytes = packed.data();
    if (kind == WaveSamples::Float32) {
        if (!samples.empty())
            std::memcpy(bytes, samples.data(), samples.size_bytes());
        return;
    }
    withSizeOf(kind, [&](auto size) {
        for (const float sample : samples) {
            const double steps = std::isnan(sample) ? 0.0 : static_cast<double>(sample) * fullScaleOf<size()>;
            storeInteger<size()>(nearestInteger<size()>(steps), bytes);
            bytes += size();
        }
    });
}

void changeSamples(WaveSamples kind, std::span<const float> before, std::span<const float> after,
                   std::span<std::uint8_t> packed)
{
    std::uint8_t* bytes = packed.data();
    if (kind == WaveSamples::Float32) {
        for (const float sample : after) {
            const float finite = toFloat(sample);
            std::memcpy(bytes, &finite, sizeof(float));
            bytes += sizeof(float);
        }
        return;
    }
    withSizeOf(kind, [&](auto size) {
        for (std::size_t i = 0; i < after.size(); ++i, bytes += size()) {
            const double change = static_cast<double>(toFloat(after[i])) - static_cast<double>(before[i]);
            const double steps = loadInteger<size()>(bytes) + change * fullScaleOf<size()>;
            storeInteger<size()>(nearestInteger<size()>(steps), bytes);
        }
    });
}

}  // namespace sound
