#include "sound/media/recorded/RecordedStream.h"

#include "sound/media/WrittenContainer.h"

#include <string>

namespace sound {
namespace {

using Family = SoundFormat::Family;

/// Packets of WMA that hold no more than a quarter of a second: of one that is not full nothing is in the file.
std::string growingContainerOptions(Family family, const AVCodecContext& codec)
{
    if (family == Family::Wma)
        return asfPacketsOf(static_cast<int>(codec.bit_rate / 8 / 4), codec);
    return containerOptions(family, codec, false);
}

}  // namespace

std::unique_ptr<RecordedStream> RecordedStream::begin(GrowingFile& file, Family family, const AVCodecContext& codec)
{
    auto output = AvOutput::create(file, containerOf(family));
    if (!output)
        return nullptr;
    std::unique_ptr<RecordedStream> stream(new RecordedStream(file, codec, std::move(output)));
    return stream->writeHead(family) ? std::move(stream) : nullptr;
}

RecordedStream::RecordedStream(GrowingFile& growing, const AVCodecContext& encoder,
                               std::unique_ptr<AvOutput> openOutput)
    : file(growing)
    , codec(encoder)
    , output(std::move(openOutput))
{
}

bool RecordedStream::writeHead(Family family)
{
    if (!addSound(*output, codec) || !output->writeHead(growingContainerOptions(family, codec).c_str()) ||
        !output->flush())
        return false;
    if (family == Family::Mp3)
        length = lengthInInfoTag(file, FrameCount{codec.initial_padding});
    else if (family == Family::Wma)
        length = lengthInAsfHead(file, SampleRate{codec.sample_rate});
    kept.bytes = output->place();
    return tellLength();
}

bool RecordedStream::add(AVPacket& packet)
{
    given.frames = FrameCount{packet.pts + packet.duration};
    ++given.packets;
    if (failed || !output->write(packet, codec.time_base) || !output->flush())
        return goBack();
    given.bytes = output->place();
    if (given.bytes == kept.bytes)
        return true;
    kept = given;
    return tellLength() || goBack();
}

bool RecordedStream::finish()
{
    return (!failed && output->finish()) || goBack();
}

bool RecordedStream::tellLength()
{
    return !length || length->tell(kept);
}

/// To what the file was when all was well. Always false.
bool RecordedStream::goBack()
{
    failed = true;
    file.cutTo(kept.bytes);
    tellLength();
    return false;
}

}  // namespace sound
