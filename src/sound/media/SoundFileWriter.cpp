#include "sound/media/SoundFileWriter.h"

#include "sound/media/AvOutput.h"
#include "sound/media/SoundEncoder.h"
#include "sound/media/WrittenTags.h"

#include <algorithm>
#include <string>

namespace sound {
namespace {

using Family = SoundFormat::Family;

/// A container as the library calls it.
const char* containerOf(Family family)
{
    switch (family) {
    case Family::Wav:
        return "wav";
    case Family::Mp3:
        return "mp3";
    case Family::Wma:
        return "asf";
    case Family::OggVorbis:
        return "ogg";
    case Family::Aac:
        return "adts";
    case Family::Mp4:
        return "mp4";
    case Family::Flac:
        return "flac";
    }
    return "";
}

/// Of ASF: the size of the packets that hold the coded frames. One that does not just hold some of them is filled
/// up, with half of it for nothing at some bit rates.
int asfPacketSize(int codedFrame)
{
    constexpr int usual = 3200;
    constexpr int head = 16;
    constexpr int headOfEach = 17;
    return head + std::max(1, usual / (codedFrame + headOfEach)) * (codedFrame + headOfEach);
}

std::string optionsOf(Family family, const AVCodecContext& codec, bool tagged)
{
    switch (family) {
    case Family::Wav:
        return "rf64=auto";
    case Family::Mp3:
        return tagged ? "id3v2_version=3" : "id3v2_version=0";
    case Family::Aac:
        return tagged ? "write_id3v2=1" : "";
    case Family::Mp4:  // counts its edits in this unit, so that the end of the sound is exact
        return "movie_timescale=" + std::to_string(codec.sample_rate);
    case Family::Wma:
        return "packet_size=" + std::to_string(asfPacketSize(codec.block_align));
    case Family::OggVorbis:
        // In microseconds. FFmpeg's decoders lose 128 frames of a sound that lies on a single page; so only those
        // few that are shorter than this do.
        return "page_duration=100000";
    case Family::Flac:
        break;
    }
    return "";
}

class AvSoundFileWriter : public SoundFileWriter
{
public:
    AvSoundFileWriter(std::unique_ptr<SoundEncoder> openEncoder, std::unique_ptr<AvOutput> openOutput)
        : encoder(std::move(openEncoder))
        , output(std::move(openOutput))
    {
    }

    bool begin(Family family, const SoundTags& tags)
    {
        AVStream* sound = output->addStream();
        if (sound == nullptr || avcodec_parameters_from_context(sound->codecpar, &encoder->codec()) < 0)
            return false;
        sound->time_base = encoder->codec().time_base;
        WrittenTags written(*output, family, tags);
        return output->writeHead(optionsOf(family, encoder->codec(), !written.isEmpty()).c_str()) &&
               written.writeCover();
    }

    bool write(std::span<const float> interleaved) override
    {
        failed = failed || !encoder->encode(interleaved, sink());
        return !failed;
    }

    EngineError finish() override
    {
        const bool whole = !failed && encoder->drain(sink()) && output->finish();
        return whole ? EngineError::None : EngineError::FileCreationFailed;
    }

private:
    SoundEncoder::Sink sink()
    {
        return [this](AVPacket& packet) {
            // Of MP3 the last coded frame can be all padding. The container would tell only that, and not the
            // padding in the frame before.
            if (encoder->codec().codec_id == AV_CODEC_ID_MP3 && packet.duration == 0)
                return true;
            packet.stream_index = 0;
            return output->write(packet, encoder->codec().time_base);
        };
    }

    std::unique_ptr<SoundEncoder> encoder;
    std::unique_ptr<AvOutput> output;
    bool failed = false;
};

}  // namespace

OpenedSoundFileWriter SoundFileWriter::create(const QString& path, const SoundFormat& format, SampleRate rate,
                                              int channels, const SoundTags& tags)
{
    auto encoder = SoundEncoder::open(format, rate, channels);
    if (!encoder.encoder)
        return {nullptr, encoder.error};
    auto file = WholeFile::create(path);
    if (!file)
        return {nullptr, EngineError::FileCreationFailed};
    auto output = AvOutput::create(std::move(file), containerOf(format.family));
    if (!output)
        return {nullptr, EngineError::NotEnoughMemory};
    auto writer = std::make_unique<AvSoundFileWriter>(std::move(encoder.encoder), std::move(output));
    if (!writer->begin(format.family, tags))
        return {nullptr, EngineError::FileCreationFailed};
    return {std::move(writer), EngineError::None};
}

}  // namespace sound
