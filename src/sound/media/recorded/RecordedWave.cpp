#include "sound/media/recorded/RecordedWave.h"

#include "sound/media/WaveHead.h"

#include <span>

namespace sound {

std::unique_ptr<RecordedWave> RecordedWave::begin(GrowingFile& file, const AVCodecContext& codec)
{
    std::unique_ptr<RecordedWave> wave(new RecordedWave(file, codec));
    return wave->writeHead() ? std::move(wave) : nullptr;
}

RecordedWave::RecordedWave(GrowingFile& growing, const AVCodecContext& codec)
    : file(growing)
    , rate{codec.sample_rate}
    , channels(codec.ch_layout.nb_channels)
{
}

bool RecordedWave::add(AVPacket& packet)
{
    const auto head = waveHead(rate, channels, WaveSamples::Pcm16, length);
    const std::int64_t frameSize = std::int64_t{channels} * bytesPerSample(WaveSamples::Pcm16);
    const std::int64_t end = static_cast<std::int64_t>(head.size()) + length.value * frameSize;
    const std::span<const std::uint8_t> samples(packet.data, static_cast<std::size_t>(packet.size));
    if (failed || !file.writeAt(end, std::as_bytes(samples))) {
        failed = true;
        file.cutTo(end);
        return false;
    }
    length = length + FrameCount{packet.size / frameSize};
    return writeHead();
}

bool RecordedWave::writeHead()
{
    const auto head = waveHead(rate, channels, WaveSamples::Pcm16, length);
    failed = !file.writeAt(0, std::as_bytes(std::span(head)));
    return !failed;
}

}  // namespace sound
