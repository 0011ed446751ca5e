#include "sound/mp3/PcmInput.h"

#include "sound/media/WaveForm.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace sound {
namespace {

constexpr SampleRate rawRate{44100};
constexpr int rawChannels = 2;

// Nothing is recorded at another.
constexpr std::uint32_t lowestWaveRate = 1000;
constexpr std::uint32_t highestWaveRate = 768'000;

/// How the samples stand in a chunk of this form, where they can be read at all.
std::optional<PcmForm> readableForm(const WaveForm& form)
{
    if (form.channels < 1 || form.channels > 2 || form.rate < lowestWaveRate || form.rate > highestWaveRate)
        return std::nullopt;
    using enum PcmForm::Kind;
    if (form.tag == WaveForm::floatTag) {
        if (form.bits == 32)
            return PcmForm{Float32};
        return form.bits == 64 ? std::optional(PcmForm{Float64}) : std::nullopt;
    }
    // A sample of 12 or 20 bits takes whole bytes and is the upper part of them.
    constexpr std::array kinds = {Unsigned8, Integer16, Integer24, Integer32};
    const int bytes = (form.bits + 7) / 8;
    if (form.tag != WaveForm::pcmTag || bytes < 1 || bytes > static_cast<int>(kinds.size()))
        return std::nullopt;
    if (bytes == 3 && form.bytesAFrame == 4 * form.channels)
        return form.bits == 24 ? std::optional(PcmForm{Integer24In32}) : std::nullopt;
    return PcmForm{kinds[static_cast<std::size_t>(bytes - 1)]};
}

std::optional<WaveForm> readForm(const RegularFile& file, const ByteRange& chunk)
{
    std::array<std::uint8_t, WaveForm::largestSize> body = {};
    const auto size = std::min<std::int64_t>(chunk.end - chunk.begin, WaveForm::largestSize);
    const std::size_t got = file.readAt(chunk.begin, std::span(body).first(static_cast<std::size_t>(size)));
    return WaveForm::read(std::span(body).first(got));
}

}  // namespace

std::unique_ptr<PcmInput> PcmInput::open(const QString& path, Reading reading)
{
    auto file = RegularFile::open(path);
    if (!file)
        return nullptr;
    std::unique_ptr<PcmInput> input;
    if (reading.raw) {
        const PcmForm form{PcmForm::Kind::Integer16, reading.swapBytes};
        input.reset(new PcmInput(file, {0, file->size()}, form, rawRate, rawChannels));
    } else if (const auto chunks = findWaveChunks(*file)) {
        const auto told = readForm(*file, chunks->form);
        auto form = told ? readableForm(*told) : std::nullopt;
        if (!form)
            return nullptr;
        form->highByteFirst = reading.swapBytes;
        input.reset(new PcmInput(file, chunks->samples, *form, {static_cast<int>(told->rate)}, told->channels));
    }
    return input && input->frames.value > 0 ? std::move(input) : nullptr;
}

PcmInput::PcmInput(std::shared_ptr<const RegularFile> openFile, const ByteRange& range, const PcmForm& sampleForm,
                   SampleRate rate, int channels)
    : file(std::move(openFile))
    , begin(range.begin)
    , form(sampleForm)
    , frameRate(rate)
    , channelCount(channels)
    , frames{(range.end - range.begin) / frameSize()}
{
}

std::span<const float> PcmInput::next(FrameCount most)
{
    const FrameCount wanted = std::min(most, frames - read);
    packed.resize(static_cast<std::size_t>(wanted.value * frameSize()));
    const std::size_t bytes = file->readAt(begin + read.value * frameSize(), packed);
    const FrameCount got{static_cast<std::int64_t>(bytes) / frameSize()};
    samples.resize(static_cast<std::size_t>(got.value * channelCount));
    unpackPcm(form, packed, samples);
    read = read + got;
    return samples;
}

}  // namespace sound
