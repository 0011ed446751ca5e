#include "sound/media/SoundEncoder.h"

#include "sound/media/LameOpening.h"
#include "sound/media/ToFloat.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

extern "C" {
#include <libavutil/channel_layout.h>
}

namespace sound {
namespace {

using Family = SoundFormat::Family;

const char* encoderOf(Family family)
{
    switch (family) {
    case Family::Wav:
        return "pcm_s16le";
    case Family::Mp3:
        return "libmp3lame";
    case Family::Wma:
        return "wmav2";
    case Family::OggVorbis:
        return "libvorbis";
    case Family::Aac:
    case Family::Mp4:
        return "aac";
    case Family::Flac:
        return "flac";
    }
    return "";
}

/// What the encoder takes, which is always one of two kinds here.
AVSampleFormat samplesOf(Family family)
{
    return family == Family::Wav || family == Family::Flac ? AV_SAMPLE_FMT_S16 : AV_SAMPLE_FMT_FLTP;
}

bool isWithin(double value, double least, double most)
{
    return value >= least && value <= most;
}

/// Writes the settings of the format into the encoder. False where they are out of all range.
bool set(AVCodecContext& codec, const SoundFormat& format, int channels)
{
    constexpr int leastBitRate = 8000;
    constexpr int mostBitRate = 320'000;
    switch (format.family) {
    case Family::Wav:
        return true;
    case Family::Mp3:
        codec.compression_level = 2;
        codec.bit_rate = format.bitRate;
        return isWithin(format.bitRate, leastBitRate, mostBitRate);
    case Family::Wma:
        codec.bit_rate = format.bitRate;
        return isWithin(format.bitRate, leastBitRate, mostBitRate);
    case Family::OggVorbis:
        codec.flags |= AV_CODEC_FLAG_QSCALE;
        codec.global_quality = static_cast<int>(std::lround(format.quality * FF_QP2LAMBDA));
        return isWithin(format.quality, 0, 10);
    case Family::Aac:
    case Family::Mp4:
        codec.bit_rate = std::lround(channels * 96'000 * std::sqrt(format.quality / 100));
        return isWithin(format.quality, 1, 1000);
    case Family::Flac:
        codec.compression_level = 8;
        return true;
    }
    return false;
}

bool takesRate(const AVCodec& encoder, SampleRate rate)
{
    if (encoder.supported_samplerates == nullptr)
        return rate.hertz > 0;
    const int* supported = encoder.supported_samplerates;
    while (*supported != 0 && *supported != rate.hertz)
        ++supported;
    return *supported != 0;
}

bool openCodec(AVCodecContext& codec, const AVCodec& encoder, Family family)
{
    std::unique_lock<std::mutex> alone;
    if (family == Family::Mp3)
        alone = std::unique_lock(lameOpening());
    return avcodec_open2(&codec, &encoder, nullptr) >= 0;
}

/// Decoders of Windows Media Audio drop two coded frames, of which this encoder's delay is but one; and of the last
/// one only half is ever coded. Neither may be of the sound.
FrameCount silenceAround(Family family, const AVCodecContext& codec)
{
    return {family == Family::Wma ? codec.frame_size : 0};
}

/// That of Windows Media Audio gives up at noise which is too loud for the bit rate. A moment that is too quiet is
/// better than a sound that breaks off there.
int mostAttempts(const AVCodecContext& codec)
{
    return codec.codec_id == AV_CODEC_ID_WMAV2 ? 10 : 0;
}

/// Of a frame of floats.
bool halve(AVFrame& frame)
{
    if (av_frame_make_writable(&frame) < 0)
        return false;
    for (int channel = 0; channel < frame.ch_layout.nb_channels; ++channel) {
        auto* samples = reinterpret_cast<float*>(frame.data[channel]);
        std::for_each(samples, samples + frame.nb_samples, [](float& sample) { sample /= 2; });
    }
    return true;
}

/// Of a sample for an encoder of floats: what is no number is silence, and what lies absurdly far beyond full scale
/// is brought back to where encoders still count with it.
float tamed(float sample)
{
    constexpr float most = 8.0F;
    return std::clamp(toFloat(sample), -most, most);
}

}  // namespace

OpenedEncoder SoundEncoder::open(const SoundFormat& format, SampleRate rate, int channels)
{
    silenceAvLibrary();
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderOf(format.family));
    if (encoder == nullptr || channels < 1 || channels > 2 || !takesRate(*encoder, rate))
        return {nullptr, EngineError::InvalidExportSettings};
    AvCodec codec(avcodec_alloc_context3(encoder));
    if (!codec)
        return {nullptr, EngineError::NotEnoughMemory};
    codec->sample_fmt = samplesOf(format.family);
    codec->sample_rate = rate.hertz;
    codec->time_base = {1, rate.hertz};
    av_channel_layout_default(&codec->ch_layout, channels);
    codec->flags |= AV_CODEC_FLAG_BITEXACT;
    if (format.family == Family::Mp4)
        codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (!set(*codec, format, channels) || !openCodec(*codec, *encoder, format.family))
        return {nullptr, EngineError::InvalidExportSettings};
    const FrameCount silence = silenceAround(format.family, *codec);
    std::unique_ptr<SoundEncoder> made(new SoundEncoder(std::move(codec), silence));
    if (!made->frame || !made->packet)
        return {nullptr, EngineError::NotEnoughMemory};
    return {std::move(made), EngineError::None};
}

SoundEncoder::SoundEncoder(AvCodec codec, FrameCount silenceAround)
    : context(std::move(codec))
    , channels(context->ch_layout.nb_channels)
    , framesAtOnce(context->frame_size > 0 ? context->frame_size : 4096)
    , silence(static_cast<std::size_t>(silenceAround.value * channels))
    , frame(av_frame_alloc())
    , packet(av_packet_alloc())
{
}

bool SoundEncoder::encode(std::span<const float> interleaved, const Sink& sink)
{
    return begin(sink) && encodeAll(interleaved, sink);
}

bool SoundEncoder::drain(const Sink& sink)
{
    return begin(sink) && encodeAll(silence, sink) && (gathered == 0 || encodeGathered(sink)) &&
           avcodec_send_frame(context.get(), nullptr) >= 0 && handOn(sink);
}

bool SoundEncoder::begin(const Sink& sink)
{
    if (begun)
        return true;
    begun = true;
    return encodeAll(silence, sink);
}

bool SoundEncoder::encodeAll(std::span<const float> interleaved, const Sink& sink)
{
    const auto perFrame = static_cast<std::size_t>(channels);
    while (interleaved.size() >= perFrame) {
        if (gathered == 0 && !makeRoom())
            return false;
        const auto room = static_cast<std::size_t>(framesAtOnce - gathered);
        const auto taken = interleaved.first(std::min(interleaved.size() / perFrame, room) * perFrame);
        take(taken);
        interleaved = interleaved.subspan(taken.size());
        if (gathered == framesAtOnce && !encodeGathered(sink))
            return false;
    }
    return true;
}

/// The encoder may still hold the samples of the frame before.
bool SoundEncoder::makeRoom()
{
    av_frame_unref(frame.get());
    frame->nb_samples = framesAtOnce;
    frame->format = context->sample_fmt;
    frame->sample_rate = context->sample_rate;
    return av_channel_layout_copy(&frame->ch_layout, &context->ch_layout) >= 0 &&
           av_frame_get_buffer(frame.get(), 0) >= 0;
}

void SoundEncoder::take(std::span<const float> interleaved)
{
    const auto perFrame = static_cast<std::size_t>(channels);
    const auto count = interleaved.size() / perFrame;
    const auto from = static_cast<std::size_t>(gathered);
    if (context->sample_fmt == AV_SAMPLE_FMT_S16) {
        auto* out = reinterpret_cast<std::int16_t*>(frame->data[0]) + from * perFrame;
        for (const float sample : interleaved)
            *out++ = toSixteenBits(sample);
    } else {
        for (std::size_t channel = 0; channel < perFrame; ++channel) {
            auto* out = reinterpret_cast<float*>(frame->data[channel]) + from;
            for (std::size_t i = 0; i < count; ++i)
                out[i] = tamed(interleaved[i * perFrame + channel]);
        }
    }
    gathered += static_cast<int>(count);
}

bool SoundEncoder::encodeGathered(const Sink& sink)
{
    frame->nb_samples = gathered;
    frame->pts = encoded;
    encoded += gathered;
    gathered = 0;
    bool taken = avcodec_send_frame(context.get(), frame.get()) >= 0;
    for (int attempts = mostAttempts(*context); !taken && attempts > 0 && halve(*frame); --attempts)
        taken = avcodec_send_frame(context.get(), frame.get()) >= 0;
    return taken && handOn(sink);
}

/// What the encoder has ready.
bool SoundEncoder::handOn(const Sink& sink)
{
    int status = 0;
    while ((status = avcodec_receive_packet(context.get(), packet.get())) >= 0) {
        const bool kept = sink(*packet);
        av_packet_unref(packet.get());
        if (!kept)
            return false;
    }
    return status == AVERROR(EAGAIN) || status == AVERROR_EOF;
}

}  // namespace sound
