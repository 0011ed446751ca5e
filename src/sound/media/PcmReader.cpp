#include "sound/media/PcmReader.h"

#include "sound/media/ToFloat.h"

#include <algorithm>
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

template <typename Sample, typename Word, bool bigEndian>
void convertWords(const std::uint8_t* bytes, std::size_t samples, float* out)
{
    static_assert(sizeof(Sample) == sizeof(Word));
    for (std::size_t i = 0; i < samples; ++i) {
        Word word;
        std::memcpy(&word, bytes + i * sizeof(Word), sizeof(Word));
        out[i] = toFloat(std::bit_cast<Sample>(bigEndian ? reversed(word) : word));
    }
}

template <bool bigEndian>
void convert24(const std::uint8_t* bytes, std::size_t samples, float* out)
{
    for (std::size_t i = 0; i < samples; ++i, bytes += 3) {
        const std::uint32_t high = bytes[bigEndian ? 0 : 2];
        const std::uint32_t low = bytes[bigEndian ? 2 : 0];
        out[i] = toFloat(static_cast<std::int32_t>(high << 24 | std::uint32_t{bytes[1]} << 16 | low << 8));
    }
}

template <int middle>
void convert8(const std::uint8_t* bytes, std::size_t samples, float* out)
{
    for (std::size_t i = 0; i < samples; ++i) {
        out[i] = middle == 0 ? toFloat(static_cast<std::int8_t>(bytes[i])) : toFloat(bytes[i]);
    }
}

constexpr std::int64_t framesAtOnce = 16 * 1024;

}  // namespace

PcmReader::Kind PcmReader::kindOf(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_PCM_U8:
        return {1, convert8<128>};
    case AV_CODEC_ID_PCM_S8:
        return {1, convert8<0>};
    case AV_CODEC_ID_PCM_S16LE:
        return {2, convertWords<std::int16_t, std::uint16_t, false>};
    case AV_CODEC_ID_PCM_S16BE:
        return {2, convertWords<std::int16_t, std::uint16_t, true>};
    case AV_CODEC_ID_PCM_S24LE:
        return {3, convert24<false>};
    case AV_CODEC_ID_PCM_S24BE:
        return {3, convert24<true>};
    case AV_CODEC_ID_PCM_S32LE:
        return {4, convertWords<std::int32_t, std::uint32_t, false>};
    case AV_CODEC_ID_PCM_S32BE:
        return {4, convertWords<std::int32_t, std::uint32_t, true>};
    case AV_CODEC_ID_PCM_F32LE:
        return {4, convertWords<float, std::uint32_t, false>};
    case AV_CODEC_ID_PCM_F32BE:
        return {4, convertWords<float, std::uint32_t, true>};
    case AV_CODEC_ID_PCM_F64LE:
        return {8, convertWords<double, std::uint64_t, false>};
    case AV_CODEC_ID_PCM_F64BE:
        return {8, convertWords<double, std::uint64_t, true>};
    default:
        return {};
    }
}

std::unique_ptr<PcmReader> PcmReader::open(const AvInput& input)
{
    const Kind kind = kindOf(input.codec().codec_id);
    const bool plain = input.is("wav") || input.is("w64") || input.is("aiff");
    if (!plain || kind.convert == nullptr || input.codec().ch_layout.nb_channels > 2)
        return nullptr;
    const auto samples = findPcmSamples(*input.file());
    if (!samples)
        return nullptr;
    std::unique_ptr<PcmReader> reader(new PcmReader(input, *samples, kind));
    return reader->frames > 0 ? std::move(reader) : nullptr;
}

PcmReader::PcmReader(const AvInput& input, ByteRange samples, Kind sampleKind)
    : file(input.file())
    , frameRate{input.codec().sample_rate}
    , channelCount(input.codec().ch_layout.nb_channels)
    , range(samples)
    , frames(0)
    , kind(sampleKind)
{
    frames = (range.end - range.begin) / static_cast<std::int64_t>(frameSize());
}

FrameCount PcmReader::length() const
{
    return {frames};
}

bool PcmReader::next(std::vector<float>& interleaved)
{
    const std::int64_t left = (range.end - range.begin) / static_cast<std::int64_t>(frameSize());
    if (left == 0 || stopped.load(std::memory_order_relaxed))
        return false;
    bytes.resize(static_cast<std::size_t>(std::min(left, framesAtOnce)) * frameSize());
    const std::size_t whole = file->readAt(range.begin, bytes) / frameSize();
    if (whole == 0)
        return false;
    const std::size_t before = interleaved.size();
    const std::size_t samples = whole * static_cast<std::size_t>(channelCount);
    interleaved.resize(before + samples);
    kind.convert(bytes.data(), samples, interleaved.data() + before);
    range.begin += static_cast<std::int64_t>(whole * frameSize());
    return true;
}

}  // namespace sound
