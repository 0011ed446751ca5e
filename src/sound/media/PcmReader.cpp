#include "sound/media/PcmReader.h"

#include <algorithm>
#include <optional>
#include <span>

namespace sound {
namespace {

constexpr std::int64_t framesAtOnce = 16 * 1024;

std::optional<PcmForm> pcmFormOf(AVCodecID codec)
{
    using enum PcmForm::Kind;
    switch (codec) {
    case AV_CODEC_ID_PCM_U8:
        return PcmForm{Unsigned8};
    case AV_CODEC_ID_PCM_S8:
        return PcmForm{Signed8};
    case AV_CODEC_ID_PCM_S16LE:
        return PcmForm{Integer16, false};
    case AV_CODEC_ID_PCM_S16BE:
        return PcmForm{Integer16, true};
    case AV_CODEC_ID_PCM_S24LE:
        return PcmForm{Integer24, false};
    case AV_CODEC_ID_PCM_S24BE:
        return PcmForm{Integer24, true};
    case AV_CODEC_ID_PCM_S32LE:
        return PcmForm{Integer32, false};
    case AV_CODEC_ID_PCM_S32BE:
        return PcmForm{Integer32, true};
    case AV_CODEC_ID_PCM_F32LE:
        return PcmForm{Float32, false};
    case AV_CODEC_ID_PCM_F32BE:
        return PcmForm{Float32, true};
    case AV_CODEC_ID_PCM_F64LE:
        return PcmForm{Float64, false};
    case AV_CODEC_ID_PCM_F64BE:
        return PcmForm{Float64, true};
    default:
        return std::nullopt;
    }
}

}  // namespace

std::unique_ptr<PcmReader> PcmReader::open(const AvInput& input)
{
    const std::optional<PcmForm> form = pcmFormOf(input.codec().codec_id);
    const bool plain = input.is("wav") || input.is("w64") || input.is("aiff");
    if (!plain || !form || input.codec().ch_layout.nb_channels > 2)
        return nullptr;
    const auto samples = findPcmSamples(*input.file());
    if (!samples)
        return nullptr;
    std::unique_ptr<PcmReader> reader(new PcmReader(input, *samples, *form));
    return reader->frames > 0 ? std::move(reader) : nullptr;
}

PcmReader::PcmReader(const AvInput& input, ByteRange samples, PcmForm sampleForm)
    : file(input.file())
    , frameRate{input.codec().sample_rate}
    , channelCount(input.codec().ch_layout.nb_channels)
    , range(samples)
    , frames(0)
    , form(sampleForm)
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
    unpackPcm(form, bytes, std::span(interleaved).subspan(before));
    range.begin += static_cast<std::int64_t>(whole * frameSize());
    return true;
}

}  // namespace sound
