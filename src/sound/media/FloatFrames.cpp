#include "sound/media/FloatFrames.h"

#include "sound/media/ToFloat.h"

#include <algorithm>
#include <span>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
}

namespace sound {
namespace {

template <typename Sample>
void interleave(const AVFrame& frame, bool planar, int channels, float* out)
{
    const auto plane = [&frame](int channel) {
        return reinterpret_cast<const Sample*>(frame.extended_data[channel]);
    };
    const int frames = frame.nb_samples;
    if (!planar || channels == 1) {
        const Sample* samples = plane(0);
        for (int i = 0; i < frames * channels; ++i)
            out[i] = toFloat(samples[i]);
        return;
    }
    const Sample* left = plane(0);
    const Sample* right = plane(1);
    for (int i = 0; i < frames; ++i) {
        out[2 * i] = toFloat(left[i]);
        out[2 * i + 1] = toFloat(right[i]);
    }
}

}  // namespace

FloatFrames::FloatFrames(SampleRate outputRate, int outputChannels)
    : rate(outputRate)
    , channels(outputChannels)
{
}

bool FloatFrames::append(const AVFrame& decoded, std::vector<float>& interleaved)
{
    if (decoded.nb_samples <= 0)
        return true;
    if (decoded.sample_rate != rate.hertz || decoded.ch_layout.nb_channels != channels)
        return appendMixed(decoded, interleaved);

    const auto format = static_cast<AVSampleFormat>(decoded.format);
    const bool planar = av_sample_fmt_is_planar(format) != 0;
    const std::size_t before = interleaved.size();
    interleaved.resize(before + static_cast<std::size_t>(decoded.nb_samples) * static_cast<std::size_t>(channels));
    float* out = interleaved.data() + before;
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_U8:
        interleave<std::uint8_t>(decoded, planar, channels, out);
        return true;
    case AV_SAMPLE_FMT_S16:
        interleave<std::int16_t>(decoded, planar, channels, out);
        return true;
    case AV_SAMPLE_FMT_S32:
        interleave<std::int32_t>(decoded, planar, channels, out);
        return true;
    case AV_SAMPLE_FMT_FLT:
        interleave<float>(decoded, planar, channels, out);
        return true;
    case AV_SAMPLE_FMT_DBL:
        interleave<double>(decoded, planar, channels, out);
        return true;
    default:
        interleaved.resize(before);
        return false;
    }
}

bool FloatFrames::appendMixed(const AVFrame& decoded, std::vector<float>& interleaved)
{
    if (!prepareResampler(decoded))
        return false;
    const int room = swr_get_out_samples(resampler.get(), decoded.nb_samples);
    if (room < 0)
        return false;
    const std::size_t before = interleaved.size();
    const auto perFrame = static_cast<std::size_t>(channels);
    interleaved.resize(before + static_cast<std::size_t>(room) * perFrame);
    auto* out = reinterpret_cast<std::uint8_t*>(interleaved.data() + before);
    const int made = swr_convert(resampler.get(), &out, room,
                                 const_cast<const std::uint8_t**>(decoded.extended_data), decoded.nb_samples);
    interleaved.resize(before + static_cast<std::size_t>(std::max(made, 0)) * perFrame);
    std::ranges::transform(std::span(interleaved).subspan(before),
                           interleaved.begin() + static_cast<std::ptrdiff_t>(before),
                           [](float sample) { return toFloat(sample); });
    return made >= 0;
}

bool FloatFrames::prepareResampler(const AVFrame& decoded)
{
    const bool named = decoded.ch_layout.order == AV_CHANNEL_ORDER_NATIVE;
    const Layout wanted{decoded.sample_rate, decoded.format, decoded.ch_layout.nb_channels,
                        named ? decoded.ch_layout.u.mask : 0};
    if (resampler && wanted == prepared)
        return true;
    if (wanted.rate <= 0 || wanted.channels <= 0)
        return false;

    AVChannelLayout from = {};
    if (named)
        av_channel_layout_from_mask(&from, wanted.mask);
    else
        av_channel_layout_default(&from, wanted.channels);
    AVChannelLayout to = {};
    av_channel_layout_default(&to, channels);

    SwrContext* made = nullptr;
    const int status =
        swr_alloc_set_opts2(&made, &to, AV_SAMPLE_FMT_FLT, rate.hertz, &from,
                            static_cast<AVSampleFormat>(decoded.format), decoded.sample_rate, 0, nullptr);
    resampler.reset(made);
    if (status < 0 || swr_init(resampler.get()) < 0) {
        resampler.reset();
        return false;
    }
    prepared = wanted;
    return true;
}

}  // namespace sound
