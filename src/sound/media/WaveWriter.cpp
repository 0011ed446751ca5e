#include "sound/media/WaveWriter.h"

#include <algorithm>

namespace sound {
namespace {

constexpr std::size_t gatheredBytes = std::size_t{256} * 1024;
constexpr std::size_t samplesAPass = std::size_t{16} * 1024;

}  // namespace

std::unique_ptr<WaveWriter> WaveWriter::create(const QString& path, SampleRate rate, int channels,
                                               WaveSamples samples)
{
    if (channels < 1 || channels > 2 || rate.hertz <= 0)
        return nullptr;
    auto file = WholeFile::create(path);
    if (!file)
        return nullptr;
    std::unique_ptr<WaveWriter> writer(new WaveWriter(std::move(file), rate, channels, samples));
    return writer->flush() ? std::move(writer) : nullptr;
}

WaveWriter::WaveWriter(std::unique_ptr<WholeFile> newFile, SampleRate frameRate, int channelCount, WaveSamples kind)
    : file(std::move(newFile))
    , rate(frameRate)
    , channels(channelCount)
    , samples(kind)
    , gathered(waveHead(frameRate, channelCount, kind, {0}))
{
}

bool WaveWriter::write(std::span<const float> interleaved)
{
    samplesWritten += static_cast<std::int64_t>(interleaved.size());
    while (!interleaved.empty()) {
        const auto now = interleaved.first(std::min(samplesAPass, interleaved.size()));
        const std::size_t before = gathered.size();
        gathered.resize(before + now.size() * static_cast<std::size_t>(bytesPerSample(samples)));
        packSamples(samples, now, std::span(gathered).subspan(before));
        if (gathered.size() >= gatheredBytes && !flush())
            return false;
        interleaved = interleaved.subspan(now.size());
    }
    return !failed;
}

bool WaveWriter::flush()
{
    failed = failed || !file->writeAt(end, std::as_bytes(std::span(gathered)));
    end += static_cast<std::int64_t>(gathered.size());
    gathered.clear();
    return !failed;
}

EngineError WaveWriter::finish()
{
    const std::int64_t frames = samplesWritten / channels;
    if ((samplesWritten * bytesPerSample(samples) & 1) != 0)
        gathered.push_back(0);
    const auto head = waveHead(rate, channels, samples, {frames});
    const bool whole = flush() && file->writeAt(0, std::as_bytes(std::span(head))) && file->finish();
    return whole ? EngineError::None : EngineError::FileCreationFailed;
}

}  // namespace sound
