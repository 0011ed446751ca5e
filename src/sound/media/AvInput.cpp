#include "sound/media/AvInput.h"

#include <array>
#include <cstring>
#include <span>
#include <string>

extern "C" {
#include <libavutil/avstring.h>
}

namespace sound {
namespace {

constexpr const char* knownContainers = "mp3,aac,ac3,eac3,wav,w64,aiff,asf,mov,flac,ogg,wv";

constexpr const char* knownDecoders =
    "mp1float,mp2float,mp3float,mp1,mp2,mp3,aac,ac3,eac3,vorbis,opus,libopus,flac,alac,wavpack,"
    "wmav1,wmav2,wmapro,wmalossless,adpcm_ms,adpcm_ima_wav,pcm_alaw,pcm_mulaw,pcm_u8,pcm_s8,"
    "pcm_s16le,pcm_s16be,pcm_s24le,pcm_s24be,pcm_s32le,pcm_s32be,pcm_f32le,pcm_f32be,pcm_f64le,pcm_f64be";

constexpr int slowestRate = 1000;
constexpr int fastestRate = 384000;
constexpr int mostChannels = 64;

void setWhitelist(char*& list, const char* names)
{
    av_freep(&list);
    list = av_strdup(names);
}

bool isPlausible(const AVCodecParameters& codec)
{
    return codec.codec_type == AVMEDIA_TYPE_AUDIO && codec.sample_rate >= slowestRate &&
           codec.sample_rate <= fastestRate && codec.ch_layout.nb_channels >= 1 &&
           codec.ch_layout.nb_channels <= mostChannels;
}

}  // namespace

std::unique_ptr<AvInput> AvInput::open(std::shared_ptr<const RegularFile> file, Edits edits)
{
    silenceAvLibrary();
    std::unique_ptr<AvInput> input(new AvInput(std::move(file)));
    if (!input->openContainer(edits) || !input->chooseSound())
        return nullptr;
    return input;
}

AvInput::AvInput(std::shared_ptr<const RegularFile> file)
    : source(std::move(file))
{
}

bool AvInput::openContainer(Edits edits)
{
    io = makeAvIo(
        this,
        [](void* self, std::uint8_t* bytes, int size) {
            return static_cast<AvInput*>(self)->readBytes(bytes, size);
        },
        nullptr,
        [](void* self, std::int64_t offset, int whence) {
            return static_cast<AvInput*>(self)->seekBytes(offset, whence);
        });
    if (!io)
        return false;

    AVFormatContext* opening = avformat_alloc_context();
    if (opening == nullptr)
        return false;
    opening->pb = io.get();
    opening->flags |= AVFMT_FLAG_CUSTOM_IO;
    opening->io_open = refuseToOpen;
    setWhitelist(opening->format_whitelist, knownContainers);
    setWhitelist(opening->codec_whitelist, knownDecoders);
    setWhitelist(opening->protocol_whitelist, "file");
    AVDictionary* options = nullptr;
    if (edits == Edits::Ignored)
        av_dict_set(&options, "ignore_editlist", "1", 0);
    const int status = avformat_open_input(&opening, "", nullptr, &options);
    av_dict_free(&options);
    if (status < 0)
        return false;  // the container is freed already
    context.reset(opening);

    // Covers and pictures are never decoded, and must not be waited for.
    for (AVStream* stream : std::span(context->streams, context->nb_streams)) {
        if (stream->codecpar->codec_type != AVMEDIA_TYPE_AUDIO)
            stream->discard = AVDISCARD_ALL;
    }
    return avformat_find_stream_info(context.get(), nullptr) >= 0;
}

bool AvInput::chooseSound()
{
    const int chosen = av_find_best_stream(context.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (chosen < 0)
        return false;
    sound = context->streams[chosen];
    for (AVStream* stream : std::span(context->streams, context->nb_streams))
        stream->discard = stream == sound ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    return isPlausible(codec()) && avcodec_find_decoder(codec().codec_id) != nullptr;
}

bool AvInput::is(const char* container) const
{
    return av_match_name(container, context->iformat->name) != 0;
}

bool AvInput::read(AVPacket& packet)
{
    while (!stopped.load(std::memory_order_relaxed)) {
        av_packet_unref(&packet);
        if (av_read_frame(context.get(), &packet) < 0)
            return false;
        if (packet.stream_index == sound->index)
            return true;
    }
    return false;
}

AvCodec AvInput::makeDecoder() const
{
    const AVCodec* decoder = avcodec_find_decoder(codec().codec_id);
    AvCodec made(avcodec_alloc_context3(decoder));
    if (!made || avcodec_parameters_to_context(made.get(), &codec()) < 0)
        return nullptr;
    made->pkt_timebase = sound->time_base;
    made->thread_count = 0;  // as many as there are processors, where the decoder can use them
    setWhitelist(made->codec_whitelist, knownDecoders);
    if (avcodec_open2(made.get(), decoder, nullptr) < 0)
        return nullptr;
    return made;
}

int AvInput::readBytes(std::uint8_t* buffer, int size)
{
    if (stopped.load(std::memory_order_relaxed))
        return AVERROR_EXIT;
    const std::size_t got = source->readAt(position, {buffer, static_cast<std::size_t>(size)});
    if (got == 0)
        return AVERROR_EOF;
    position += static_cast<std::int64_t>(got);
    return static_cast<int>(got);
}

std::int64_t AvInput::seekBytes(std::int64_t offset, int whence)
{
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return source->size();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += position;
        break;
    case SEEK_END:
        offset += source->size();
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
