#include "sound/vocals/WaveOutput.h"

#include "sound/media/WaveHead.h"
#include "sound/vocals/WaveLayout.h"

#include <utility>

namespace sound {

std::unique_ptr<WaveOutput> WaveOutput::create(const QString& path, WaveSamples samples, SampleRate rate,
                                               FrameCount length)
{
    auto file = WholeFile::create(path);
    const auto head = waveHead(rate, 2, samples, length);
    if (!file || !file->writeAt(0, std::as_bytes(std::span(head))))
        return nullptr;
    const auto begin = static_cast<std::int64_t>(head.size());
    return std::unique_ptr<WaveOutput>(new WaveOutput(std::move(file), samples, begin));
}

WaveOutput::WaveOutput(std::unique_ptr<WholeFile> newFile, WaveSamples kind, std::int64_t headSize)
    : file(std::move(newFile))
    , samples(kind)
    , begin(headSize)
{
}

bool WaveOutput::write(FramePosition from, std::span<const std::uint8_t> packed)
{
    const std::lock_guard lock(mutex);
    return file->writeAt(begin + from.value * bytesPerFrame(samples), std::as_bytes(packed));
}

}  // namespace sound
