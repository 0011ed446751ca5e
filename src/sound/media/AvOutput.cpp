#include "sound/media/AvOutput.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <span>

extern "C" {
#include <libavutil/dict.h>
}

namespace sound {

std::unique_ptr<AvOutput> AvOutput::create(OutputFile& file, const char* container)
{
    silenceAvLibrary();
    std::unique_ptr<AvOutput> output(new AvOutput(file));
    AVFormatContext* made = nullptr;
    const AVOutputFormat* format = av_guess_format(container, nullptr, nullptr);
    if (!output->io || format == nullptr || avformat_alloc_output_context2(&made, format, nullptr, nullptr) < 0)
        return nullptr;
    made->pb = output->io.get();
    made->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
    made->io_open = refuseToOpen;
    output->context.reset(made);
    return output;
}

AvOutput::AvOutput(OutputFile& file)
    : target(file)
    , io(makeAvIo(
          this, nullptr,
          [](void* self, std::uint8_t* bytes, int size) {
              return static_cast<AvOutput*>(self)->writeBytes(bytes, size);
          },
          [](void* self, std::int64_t offset, int whence) {
              return static_cast<AvOutput*>(self)->seekBytes(offset, whence);
          }))
{
}

AVStream* AvOutput::addStream()
{
    return avformat_new_stream(context.get(), nullptr);
}

bool AvOutput::writeHead(const char* options)
{
    AVDictionary* parsed = nullptr;
    int status = av_dict_parse_string(&parsed, options, "=", ":", 0);
    if (status >= 0)
        status = avformat_write_header(context.get(), &parsed);
    av_dict_free(&parsed);
    return stillGood(status);
}

bool AvOutput::write(AVPacket& packet, AVRational unit)
{
    const AVStream* stream = context->streams[packet.stream_index];
    av_packet_rescale_ts(&packet, unit, stream->time_base);
    return !failed && stillGood(av_write_frame(context.get(), &packet));
}

bool AvOutput::endGathering()
{
    return !failed && stillGood(av_write_frame(context.get(), nullptr));
}

bool AvOutput::flush()
{
    avio_flush(io.get());
    return stillGood(0);
}

std::int64_t AvOutput::place() const
{
    return avio_tell(io.get());
}

bool AvOutput::goTo(std::int64_t place)
{
    return avio_seek(io.get(), place, SEEK_SET) == place;
}

bool AvOutput::finish()
{
    return !failed && stillGood(av_write_trailer(context.get())) && flush();
}

/// Not every failure to write reaches the library's result.
bool AvOutput::stillGood(int status)
{
    failed = failed || status < 0 || io->error < 0;
    return !failed;
}

int AvOutput::writeBytes(const std::uint8_t* bytes, int size)
{
    const std::span<const std::uint8_t> given(bytes, static_cast<std::size_t>(size));
    if (failed || !target.writeAt(position, std::as_bytes(given))) {
        failed = true;
        return AVERROR(ENOSPC);
    }
    position += size;
    end = std::max(end, position);
    return size;
}

std::int64_t AvOutput::seekBytes(std::int64_t offset, int whence)
{
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return end;
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += position;
        break;
    case SEEK_END:
        offset += end;
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0)
        return AVERROR(EINVAL);
    position = offset;
    return position;
}

}  // namespace sound
