#include "practicetrack/Mp3File.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace practice {

namespace {

constexpr int kQuality = 2;  // of 0 to 9, 0 the best

struct ClosesFile
{
    void operator()(AVFormatContext* file) const
    {
        avio_closep(&file->pb);
        avformat_free_context(file);
    }
};
struct FreesEncoder
{
    void operator()(AVCodecContext* encoder) const { avcodec_free_context(&encoder); }
};
struct FreesFrame
{
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreesPacket
{
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

std::string reason(const char* step, int error)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(error, text.data(), text.size());
    return std::string(step) + ": " + text.data();
}

class Mp3Writer
{
public:
    std::string open(const std::filesystem::path& path, int rate, const std::string& title,
                     const std::string& artist)
    {
        const AVCodec* codec = avcodec_find_encoder_by_name("libmp3lame");
        if (codec == nullptr) {
            return "this FFmpeg has no MP3 encoder";
        }
        encoder.reset(avcodec_alloc_context3(codec));
        encoder->sample_rate = rate;
        encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
        encoder->time_base = {1, rate};
        encoder->flags |= AV_CODEC_FLAG_QSCALE;
        encoder->global_quality = kQuality * FF_QP2LAMBDA;
        av_channel_layout_default(&encoder->ch_layout, 2);
        if (const int error = avcodec_open2(encoder.get(), codec, nullptr); error < 0) {
            return reason("encoder", error);
        }

        AVFormatContext* made = nullptr;
        if (const int error = avformat_alloc_output_context2(&made, nullptr, "mp3", path.c_str()); error < 0) {
            return reason("format", error);
        }
        file.reset(made);
        stream = avformat_new_stream(file.get(), nullptr);
        stream->time_base = encoder->time_base;
        avcodec_parameters_from_context(stream->codecpar, encoder.get());
        av_dict_set(&file->metadata, "title", title.c_str(), 0);
        av_dict_set(&file->metadata, "artist", artist.c_str(), 0);
        if (const int error = avio_open(&file->pb, path.c_str(), AVIO_FLAG_WRITE); error < 0) {
            return reason("open", error);
        }
        const int error = avformat_write_header(file.get(), nullptr);
        return error < 0 ? reason("header", error) : std::string();
    }

    std::string write(const StereoSound& sound)
    {
        const auto blockSize = static_cast<std::size_t>(encoder->frame_size);
        for (std::size_t begin = 0; begin < sound.frames(); begin += blockSize) {
            const std::size_t count = std::min(blockSize, sound.frames() - begin);
            const std::unique_ptr<AVFrame, FreesFrame> frame(av_frame_alloc());
            frame->nb_samples = static_cast<int>(count);
            frame->format = encoder->sample_fmt;
            frame->sample_rate = encoder->sample_rate;
            frame->pts = static_cast<std::int64_t>(begin);
            av_channel_layout_copy(&frame->ch_layout, &encoder->ch_layout);
            if (const int error = av_frame_get_buffer(frame.get(), 0); error < 0) {
                return reason("buffer", error);
            }
            std::copy_n(sound.left.data() + begin, count, reinterpret_cast<float*>(frame->data[0]));
            std::copy_n(sound.right.data() + begin, count, reinterpret_cast<float*>(frame->data[1]));
            if (const int error = encode(frame.get()); error < 0) {
                return reason("encode", error);
            }
        }
        if (const int error = encode(nullptr); error < 0) {
            return reason("encode", error);
        }
        const int error = av_write_trailer(file.get());
        return error < 0 ? reason("trailer", error) : std::string();
    }

private:
    int encode(const AVFrame* frame)
    {
        int error = avcodec_send_frame(encoder.get(), frame);
        while (error >= 0) {
            error = avcodec_receive_packet(encoder.get(), packet.get());
            if (error >= 0) {
                av_packet_rescale_ts(packet.get(), encoder->time_base, stream->time_base);
                packet->stream_index = stream->index;
                error = av_write_frame(file.get(), packet.get());
                av_packet_unref(packet.get());
            }
        }
        const bool wantsMore = error == AVERROR(EAGAIN) || error == AVERROR_EOF;
        return wantsMore ? 0 : error;
    }

    std::unique_ptr<AVCodecContext, FreesEncoder> encoder;
    std::unique_ptr<AVFormatContext, ClosesFile> file;
    std::unique_ptr<AVPacket, FreesPacket> packet{av_packet_alloc()};
    AVStream* stream = nullptr;
};

}  // namespace

std::string writeMp3(const std::filesystem::path& path, const StereoSound& sound, const std::string& title,
                     const std::string& artist)
{
    Mp3Writer writer;
    if (std::string error = writer.open(path, sound.rate, title, artist); !error.empty()) {
        return error;
    }
    return writer.write(sound);
}

}  // namespace practice
