#include "sound/media/PcmSamples.h"

#include "sound/media/ToFloat.h"

#include <bit>
#include <cstring>

namespace sound {
namespace {

static_assert(std::endian::native == std::endian::little);

template <typename Word>
Word reversed(Word word)
{
    if constexpr (sizeof(Word) == 2)
        return __builtin_bswap16(word);
    else if constexpr (sizeof(Word) == 4)
        return __builtin_bswap32(word);
    else
        return __builtin_bswap64(word);
}

template <typename Sample, typename Word, bool highByteFirst>
void unpackWords(const std::uint8_t* bytes, std::span<float> samples)
{
    static_assert(sizeof(Sample) == sizeof(Word));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        Word word;
        std::memcpy(&word, bytes + i * sizeof(Word), sizeof(Word));
        samples[i] = toFloat(std::bit_cast<Sample>(highByteFirst ? reversed(word) : word));
    }
}

template <typename Sample, typename Word>
void unpackWords(bool highByteFirst, const std::uint8_t* bytes, std::span<float> samples)
{
    if (highByteFirst)
        unpackWords<Sample, Word, true>(bytes, samples);
    else
        unpackWords<Sample, Word, false>(bytes, samples);
}

template <bool highByteFirst>
void unpack24(const std::uint8_t* bytes, std::span<float> samples)
{
    for (float& sample : samples) {
        const std::uint32_t high = bytes[highByteFirst ? 0 : 2];
        const std::uint32_t low = bytes[highByteFirst ? 2 : 0];
        sample = toFloat(static_cast<std::int32_t>(high << 24 | std::uint32_t{bytes[1]} << 16 | low << 8));
        bytes += 3;
    }
}

template <bool highByteFirst>
void unpack24In32(const std::uint8_t* bytes, std::span<float> samples)
{
    for (float& sample : samples) {
        std::uint32_t word;
        std::memcpy(&word, bytes, sizeof(word));
        sample = toFloat(static_cast<std::int32_t>((highByteFirst ? reversed(word) : word) << 8));
        bytes += sizeof(word);
    }
}

template <typename Sample>
void unpackBytes(const std::uint8_t* bytes, std::span<float> samples)
{
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = toFloat(static_cast<Sample>(bytes[i]));
}

}  // namespace

void unpackPcm(const PcmForm& form, std::span<const std::uint8_t> packed, std::span<float> samples)
{
    switch (form.kind) {
    case PcmForm::Kind::Unsigned8:
        return unpackBytes<std::uint8_t>(packed.data(), samples);
    case PcmForm::Kind::Signed8:
        return unpackBytes<std::int8_t>(packed.data(), samples);
    case PcmForm::Kind::Integer16:
        return unpackWords<std::int16_t, std::uint16_t>(form.highByteFirst, packed.data(), samples);
    case PcmForm::Kind::Integer24:
        return form.highByteFirst ? unpack24<true>(packed.data(), samples)
                                  : unpack24<false>(packed.data(), samples);
    case PcmForm::Kind::Integer24In32:
        return form.highByteFirst ? unpack24In32<true>(packed.data(), samples)
                                  : unpack24In32<false>(packed.data(), samples);
    case PcmForm::Kind::Integer32:
        return unpackWords<std::int32_t, std::uint32_t>(form.highByteFirst, packed.data(), samples);
    case PcmForm::Kind::Float32:
        return unpackWords<float, std::uint32_t>(form.highByteFirst, packed.data(), samples);
    case PcmForm::Kind::Float64:
        return unpackWords<double, std::uint64_t>(form.highByteFirst, packed.data(), samples);
    }
}

}  // namespace sound
