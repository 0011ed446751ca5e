#pragma once

#include <cstdint>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

/// Owners of what the library makes. Inside this folder only.
namespace sound {

struct AvFormatCloser
{
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
};
struct AvFormatFreer
{
    void operator()(AVFormatContext* format) const { avformat_free_context(format); }
};
struct AvIoFreer
{
    void operator()(AVIOContext* io) const
    {
        av_freep(&io->buffer);
        avio_context_free(&io);
    }
};
struct AvPacketFreer
{
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct AvFrameFreer
{
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct AvCodecFreer
{
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
using AvFormat = std::unique_ptr<AVFormatContext, AvFormatCloser>;        // that is read
using AvWrittenFormat = std::unique_ptr<AVFormatContext, AvFormatFreer>;  // that is written
using AvIo = std::unique_ptr<AVIOContext, AvIoFreer>;
using AvPacket = std::unique_ptr<AVPacket, AvPacketFreer>;
using AvFrame = std::unique_ptr<AVFrame, AvFrameFreer>;
using AvCodec = std::unique_ptr<AVCodecContext, AvCodecFreer>;

using AvTransfer = int (*)(void* self, std::uint8_t* bytes, int size);
using AvSeek = std::int64_t (*)(void* self, std::int64_t offset, int whence);

/// The bytes of a container, which these calls read or write; null for what is not done. Null where there is no
/// memory.
AvIo makeAvIo(void* self, AvTransfer read, AvTransfer write, AvSeek seek);

/// A container that asks for another file than the one at hand: never granted. For AVFormatContext::io_open.
int refuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**);

/// The library reports every damaged packet on the standard error of its own accord. Any thread.
void silenceAvLibrary();

}  // namespace sound
