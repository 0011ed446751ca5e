#include "sound/disc/DiscFormats.h"

#include "sound/media/RegularFile.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace sound {
namespace {

struct Head
{
    std::array<std::uint8_t, 16> bytes = {};

    bool has(std::string_view text, std::size_t place) const
    {
        return std::memcmp(bytes.data() + place, text.data(), text.size()) == 0;
    }
};

Head headAt(const RegularFile& file, std::int64_t place)
{
    Head head;
    file.readAt(place, head.bytes);
    return head;
}

/// Tags before the first piece of an MP3 tell how long they are, in four times seven bits.
std::int64_t tagLength(const Head& head)
{
    constexpr std::int64_t tagHead = 10;
    if (!head.has("ID3", 0))
        return 0;
    std::int64_t length = 0;
    for (std::size_t place = 6; place < 10; ++place)
        length = length << 7 | (head.bytes[place] & 0x7F);
    return tagHead + length;
}

bool beginsLayerThree(const Head& head)
{
    const bool isSync = head.bytes[0] == 0xFF && (head.bytes[1] & 0xE0) == 0xE0;
    const bool isKnownVersion = (head.bytes[1] >> 3 & 3) != 1;
    const bool isLayerThree = (head.bytes[1] >> 1 & 3) == 1;
    const bool isKnownRate = head.bytes[2] >> 4 != 15 && (head.bytes[2] >> 2 & 3) != 3;
    return isSync && isKnownVersion && isLayerThree && isKnownRate;
}

std::optional<AudioProject::Format> byContent(const RegularFile& file)
{
    const Head head = headAt(file, 0);
    if ((head.has("RIFF", 0) || head.has("RF64", 0)) && head.has("WAVE", 8))
        return AudioProject::Wav;
    if (head.has("OggS", 0))
        return AudioProject::Ogg;
    if (head.has("\x30\x26\xB2\x75\x8E\x66\xCF\x11", 0))
        return AudioProject::Wma;
    if (beginsLayerThree(headAt(file, tagLength(head))))
        return AudioProject::Mp3;
    return std::nullopt;
}

std::optional<AudioProject::Format> byEnding(const QString& path)
{
    const std::pair<const char*, AudioProject::Format> endings[] = {{".wav", AudioProject::Wav},
                                                                    {".ogg", AudioProject::Ogg},
                                                                    {".mp3", AudioProject::Mp3},
                                                                    {".wma", AudioProject::Wma}};
    for (const auto& [ending, format] : endings) {
        if (path.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return format;
    }
    return std::nullopt;
}

}  // namespace

std::optional<AudioProject::Format> discFormatOf(const QString& path)
{
    const auto file = RegularFile::open(path);
    if (!file)
        return std::nullopt;
    const auto format = byContent(*file);
    return format ? format : byEnding(path);
}

}  // namespace sound
