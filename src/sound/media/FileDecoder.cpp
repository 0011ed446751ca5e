#include "sound/media/FileDecoder.h"

#include "sound/media/FrameCounting.h"

#include <algorithm>

namespace sound {
namespace {

/// Longer gaps are not believed at once: a forged time must not cost an hour of silence in one block.
constexpr std::int64_t longestGapInSeconds = 60;

/// In some containers each piece bears its place, so that pieces which are missing altogether leave a gap in the
/// times. Those of Ogg are right only from page to page.
std::int64_t smallestGapIn(const AvInput& input)
{
    constexpr std::int64_t missingPage = 4096;
    if (input.is("flac") || input.is("wv"))
        return 1;
    return input.is("ogg") ? missingPage : 0;
}

}  // namespace

std::unique_ptr<FileDecoder> FileDecoder::open(std::unique_ptr<AvInput> input)
{
    const FrameCount counted = countFrames(*input);
    if (counted.value <= 0)
        return nullptr;
    AvCodec codec = input->makeDecoder();
    if (!codec)
        return nullptr;
    return std::unique_ptr<FileDecoder>(new FileDecoder(std::move(input), std::move(codec), counted));
}

FileDecoder::FileDecoder(std::unique_ptr<AvInput> openInput, AvCodec openCodec, FrameCount length)
    : input(std::move(openInput))
    , codec(std::move(openCodec))
    , counted(length)
    , outputRate{input->codec().sample_rate}
    , outputChannels(std::min(input->codec().ch_layout.nb_channels, 2))
    , conversion(outputRate, outputChannels)
    , packet(av_packet_alloc())
    , frame(av_frame_alloc())
    , smallestGap(smallestGapIn(*input))
{
}

void FileDecoder::stop()
{
    stopped.store(true, std::memory_order_relaxed);
    input->stop();
}

bool FileDecoder::next(std::vector<float>& interleaved)
{
    const std::size_t before = interleaved.size();
    while (interleaved.size() == before) {
        if (ended || stopped.load(std::memory_order_relaxed))
            return false;
        const int status = avcodec_receive_frame(codec.get(), frame.get());
        if (status == 0)
            append(*frame, interleaved);
        else if (status == AVERROR(EAGAIN))
            feedDecoder();
        else if (status == AVERROR_EOF || drained)
            ended = true;
        else
            ++lostPackets;
        cutAtLength(interleaved, before);
    }
    reached = reached + FrameCount{static_cast<std::int64_t>(interleaved.size() - before) / outputChannels};
    return true;
}

/// Behind the sound, a decoder has the padding of its encoder.
void FileDecoder::cutAtLength(std::vector<float>& interleaved, std::size_t before)
{
    const auto room = before + static_cast<std::size_t>((counted.value - reached.value) * outputChannels);
    if (interleaved.size() < room)
        return;
    interleaved.resize(room);
    ended = true;
}

void FileDecoder::feedDecoder()
{
    if (!input->read(*packet)) {
        drained = true;
        avcodec_send_packet(codec.get(), nullptr);
        return;
    }
    if (avcodec_send_packet(codec.get(), packet.get()) < 0)
        ++lostPackets;
}

void FileDecoder::append(const AVFrame& decoded, std::vector<float>& interleaved)
{
    const std::size_t before = interleaved.size();
    const FrameCount missing = missingBefore(decoded);
    const std::size_t begin = before + static_cast<std::size_t>(missing.value * outputChannels);
    interleaved.resize(begin);
    if (!conversion.append(decoded, interleaved)) {
        interleaved.resize(before);
        ++lostPackets;
        return;
    }
    lostPackets = 0;
    lastFrame = {static_cast<std::int64_t>(interleaved.size() - begin) / outputChannels};
}

/// How much silence stands for what was lost between the last frame and this one.
FrameCount FileDecoder::missingBefore(const AVFrame& decoded)
{
    const AVRational seconds = input->stream().time_base;
    const AVRational frames = {1, outputRate.hertz};
    if (decoded.pts != AV_NOPTS_VALUE && origin == AV_NOPTS_VALUE)
        origin = decoded.pts - av_rescale_q(lostPackets * nominalFrame().value, frames, seconds);

    std::int64_t gap = lostPackets * nominalFrame().value;
    const bool timesAreExact = av_cmp_q(seconds, frames) <= 0;
    if (timesAreExact && decoded.pts != AV_NOPTS_VALUE && (smallestGap > 0 || lostPackets > 0)) {
        const std::int64_t byTime = av_rescale_q(decoded.pts - origin, seconds, frames) - reached.value;
        gap = lostPackets > 0 || byTime >= smallestGap ? byTime : 0;
    }
    const std::int64_t longest =
        std::min(longestGapInSeconds * outputRate.hertz, std::max<std::int64_t>(0, counted.value - reached.value));
    return {std::clamp<std::int64_t>(gap, 0, longest)};
}

FrameCount FileDecoder::nominalFrame() const
{
    return lastFrame.value > 0 ? lastFrame : FrameCount{std::max(input->codec().frame_size, 0)};
}

}  // namespace sound
