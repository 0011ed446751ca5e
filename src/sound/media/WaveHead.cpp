#include "sound/media/WaveHead.h"

#include <limits>
#include <string_view>

namespace sound {
namespace {

/// Bytes in the order that RIFF wants them in.
class RiffBytes
{
public:
    void tag(std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }
    void number16(int value) { number(static_cast<std::uint64_t>(value), 2); }
    void number32(std::uint64_t value) { number(value, 4); }
    void number64(std::uint64_t value) { number(value, 8); }

    std::vector<std::uint8_t> bytes;

private:
    void number(std::uint64_t value, int size)
    {
        for (int i = 0; i < size; ++i)
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
};

constexpr int pcmTag = 1;
constexpr int floatTag = 3;
constexpr std::uint32_t toldElsewhere = 0xFFFFFFFF;

}  // namespace

std::vector<std::uint8_t> waveHead(SampleRate rate, int channels, WaveSamples samples, FrameCount length)
{
    constexpr std::uint64_t headSize = 12 + (8 + 28) + (8 + 18) + (8 + 4) + 8;
    const int frameSize = channels * bytesPerSample(samples);
    const std::uint64_t dataSize = static_cast<std::uint64_t>(length.value) * static_cast<std::uint64_t>(frameSize);
    const std::uint64_t riffSize = headSize - 8 + dataSize + (dataSize & 1);
    const bool isLong = riffSize > std::numeric_limits<std::uint32_t>::max();

    RiffBytes head;
    head.tag(isLong ? "RF64" : "RIFF");
    head.number32(isLong ? toldElsewhere : riffSize);
    head.tag("WAVE");

    head.tag(isLong ? "ds64" : "JUNK");
    head.number32(28);
    head.number64(isLong ? riffSize : 0);
    head.number64(isLong ? dataSize : 0);
    head.number64(isLong ? static_cast<std::uint64_t>(length.value) : 0);
    head.number32(0);  // no further sizes

    head.tag("fmt ");
    head.number32(18);
    head.number16(samples == WaveSamples::Float32 ? floatTag : pcmTag);
    head.number16(channels);
    head.number32(static_cast<std::uint64_t>(rate.hertz));
    head.number32(static_cast<std::uint64_t>(rate.hertz) * static_cast<std::uint64_t>(frameSize));
    head.number16(frameSize);
    head.number16(8 * bytesPerSample(samples));
    head.number16(0);  // nothing more about the format

    head.tag("fact");
    head.number32(4);
    head.number32(isLong ? toldElsewhere : static_cast<std::uint64_t>(length.value));

    head.tag("data");
    head.number32(isLong ? toldElsewhere : dataSize);
    return head.bytes;
}

}  // namespace sound
