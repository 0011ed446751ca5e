#include "wave/WavFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace {

constexpr std::uint16_t kIntegers = 1;
constexpr std::uint16_t kFloats = 3;
constexpr std::uint16_t kExtensible = 0xFFFE;

template <typename Number>
Number numberAt(const std::string& bytes, std::size_t offset)
{
    Number number{};
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

template <typename Number>
void append(std::string& bytes, Number number)
{
    std::array<char, sizeof number> raw{};
    std::memcpy(raw.data(), &number, sizeof number);
    bytes.append(raw.data(), raw.size());
}

struct Format
{
    std::uint16_t coding = 0;
    std::uint16_t channels = 0;
    std::uint32_t rate = 0;
    std::uint16_t bits = 0;

    bool isIntegers() const { return coding == kIntegers && bits == 16; }
    bool isFloats() const { return coding == kFloats && bits == 32; }
    bool isReadable() const { return (channels == 1 || channels == 2) && rate > 0 && (isIntegers() || isFloats()); }
};

Format formatAt(const std::string& bytes, std::size_t offset, std::size_t size)
{
    Format format{numberAt<std::uint16_t>(bytes, offset), numberAt<std::uint16_t>(bytes, offset + 2),
                  numberAt<std::uint32_t>(bytes, offset + 4), numberAt<std::uint16_t>(bytes, offset + 14)};
    if (format.coding == kExtensible && size >= 26) {
        format.coding = numberAt<std::uint16_t>(bytes, offset + 24);
    }
    return format;
}

StereoSound samplesAt(const std::string& bytes, std::size_t offset, std::size_t size, const Format& format)
{
    const std::size_t sampleSize = format.bits / 8;
    const std::size_t frames = size / (sampleSize * format.channels);
    const auto sample = [&](std::size_t index) {
        const std::size_t at = offset + index * sampleSize;
        return format.isFloats() ? numberAt<float>(bytes, at)
                                 : static_cast<float>(numberAt<std::int16_t>(bytes, at)) / 32768;
    };

    StereoSound sound{static_cast<int>(format.rate), std::vector<float>(frames), std::vector<float>(frames)};
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const std::size_t first = frame * format.channels;
        sound.left[frame] = sample(first);
        sound.right[frame] = sample(first + format.channels - 1U);
    }
    return sound;
}

std::string contentOf(const std::filesystem::path& path)
{
    std::error_code unreadable;
    const std::uintmax_t size = std::filesystem::file_size(path, unreadable);
    std::string bytes(unreadable ? 0 : size, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

}  // namespace

std::optional<StereoSound> readWav(const std::filesystem::path& path)
{
    const std::string bytes = contentOf(path);
    const std::string_view view = bytes;
    if (view.size() < 12 || view.substr(0, 4) != "RIFF" || view.substr(8, 4) != "WAVE") {
        return std::nullopt;
    }

    Format format;
    for (std::size_t chunk = 12; chunk + 8 <= bytes.size();) {
        const std::size_t content = chunk + 8;
        const std::size_t claimed = numberAt<std::uint32_t>(bytes, chunk + 4);
        const std::size_t size = std::min(claimed, bytes.size() - content);
        if (view.substr(chunk, 4) == "fmt " && size >= 16) {
            format = formatAt(bytes, content, size);
        } else if (view.substr(chunk, 4) == "data") {
            if (!format.isReadable()) {
                return std::nullopt;
            }
            const bool lengthWasNeverWritten = claimed == 0;
            return samplesAt(bytes, content, lengthWasNeverWritten ? bytes.size() - content : size, format);
        }
        chunk = content + size + size % 2;
    }
    return std::nullopt;
}

namespace {

constexpr std::uint16_t kChannels = 2;

// Both channels, each sample as toSample makes it.
template <typename ToSample>
bool write(const std::filesystem::path& path, const StereoSound& sound, std::uint16_t coding, ToSample toSample)
{
    constexpr std::uint16_t sampleSize = sizeof(toSample(0.0F));
    constexpr std::uint16_t frameSize = kChannels * sampleSize;
    const auto dataSize = static_cast<std::uint32_t>(sound.frames() * frameSize);

    std::string bytes = "RIFF";
    append(bytes, dataSize + 36U);
    bytes += "WAVEfmt ";
    append(bytes, std::uint32_t{16});
    append(bytes, coding);
    append(bytes, kChannels);
    append(bytes, static_cast<std::uint32_t>(sound.rate));
    append(bytes, static_cast<std::uint32_t>(sound.rate) * frameSize);
    append(bytes, frameSize);
    append(bytes, static_cast<std::uint16_t>(8 * sampleSize));
    bytes += "data";
    append(bytes, dataSize);
    for (std::size_t frame = 0; frame < sound.frames(); ++frame) {
        append(bytes, toSample(sound.left[frame]));
        append(bytes, toSample(sound.right[frame]));
    }

    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

bool writeWav(const std::filesystem::path& path, const StereoSound& sound)
{
    return write(path, sound, kIntegers, [](float value) {
        return static_cast<std::int16_t>(std::clamp(std::lround(value * 32768.0F), -32768L, 32767L));
    });
}

bool writeFloatWav(const std::filesystem::path& path, const StereoSound& sound)
{
    return write(path, sound, kFloats, [](float value) { return value; });
}
