#include "sound/media/WaveWriter.h"

#include <algorithm>
#include <cmath>

namespace sound {
namespace {

constexpr std::size_t gatheredBytes = std::size_t{256} * 1024;

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
{
    const auto head = waveHead(rate, channels, samples, {0});
    const auto bytes = std::as_bytes(std::span(head));
    gathered.assign(bytes.begin(), bytes.end());
}

bool WaveWriter::write(std::span<const float> interleaved)
{
    for (const float sample : interleaved) {
        gather(sample);
        if (gathered.size() >= gatheredBytes && !flush())
            return false;
    }
    samplesWritten += static_cast<std::int64_t>(interleaved.size());
    return !failed;
}

void WaveWriter::gather(float sample)
{
    if (samples == WaveSamples::Float32) {
        const auto bytes = std::as_bytes(std::span(&sample, 1));
        gathered.insert(gathered.end(), bytes.begin(), bytes.end());
        return;
    }
    // What is no number is silence.
    const float steps = std::isnan(sample) ? 0.0F : std::clamp(sample * 32768.0F, -32768.0F, 32767.0F);
    const auto step = static_cast<std::int16_t>(std::lrint(steps));
    const auto bytes = std::as_bytes(std::span(&step, 1));
    gathered.insert(gathered.end(), bytes.begin(), bytes.end());
}

bool WaveWriter::flush()
{
    failed = failed || !file->writeAt(end, gathered);
    end += static_cast<std::int64_t>(gathered.size());
    gathered.clear();
    return !failed;
}

EngineError WaveWriter::finish()
{
    const std::int64_t frames = samplesWritten / channels;
    if ((samplesWritten * bytesPerSample(samples) & 1) != 0)
        gathered.push_back(std::byte{0});
    const auto head = waveHead(rate, channels, samples, {frames});
    const bool whole = flush() && file->writeAt(0, std::as_bytes(std::span(head))) && file->finish();
    return whole ? EngineError::None : EngineError::FileCreationFailed;
}

}  // namespace sound
