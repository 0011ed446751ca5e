#include "sound/media/recorded/LengthInHead.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>

extern "C" {
#include <libavutil/intreadwrite.h>
#include <libavutil/mathematics.h>
}

namespace sound {
namespace {

using Guid = std::array<std::uint8_t, 16>;

constexpr Guid headGuid = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                           0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr Guid propertiesGuid = {0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                 0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
constexpr Guid dataGuid = {0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                           0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};

/// An object begins with its GUID and its size, 8 bytes. The head is one that holds others; the data follow it.
constexpr std::int64_t sizeOfBegin = 24;
constexpr std::int64_t sizeOfHeadsBegin = 30;
constexpr std::int64_t sizeOfDatasBegin = 50;
constexpr std::int64_t sizeOfProperties = 104;

struct Places
{
    std::int64_t properties = 0;
    std::int64_t data = 0;
};

class AsfHead : public LengthInHead
{
public:
    AsfHead(GrowingFile& growing, Places found, SampleRate soundRate)
        : file(growing)
        , places(found)
        , rate(soundRate)
    {
        std::array<std::uint8_t, sizeOfProperties> properties = {};
        file.readAt(places.properties, std::as_writable_bytes(std::span(properties)));
        preroll = static_cast<std::int64_t>(AV_RL64(properties.data() + 80));
        packetSize = std::max<std::int64_t>(1, AV_RL32(properties.data() + 92));
    }

    bool tell(const Growth& growth) override
    {
        constexpr int ticksASecond = 10'000'000;
        constexpr int ticksAMillisecond = 10'000;
        const std::int64_t packets = (growth.bytes - places.data - sizeOfDatasBegin) / packetSize;
        const std::int64_t duration = av_rescale(growth.frames.value, ticksASecond, rate.hertz);
        return write(places.properties + 40, growth.bytes) && write(places.properties + 56, packets) &&
               write(places.properties + 64, duration + preroll * ticksAMillisecond) &&
               write(places.properties + 72, duration) && write(places.data + 16, growth.bytes - places.data) &&
               write(places.data + 40, packets);
    }

private:
    bool write(std::int64_t place, std::int64_t number)
    {
        std::array<std::uint8_t, 8> bytes = {};
        AV_WL64(bytes.data(), number);
        return file.writeAt(place, std::as_bytes(std::span(bytes)));
    }

    GrowingFile& file;
    Places places;
    SampleRate rate;
    std::int64_t preroll = 0;  // milliseconds that the whole duration has more
    std::int64_t packetSize = 1;
};

/// The size of the object of this kind that begins there; 0 where none does.
std::int64_t sizeOf(const Guid& kind, const GrowingFile& file, std::int64_t place)
{
    std::array<std::uint8_t, sizeOfBegin> begin = {};
    const std::size_t count = file.readAt(place, std::as_writable_bytes(std::span(begin)));
    if (count < begin.size() || std::memcmp(begin.data(), kind.data(), kind.size()) != 0)
        return 0;
    return static_cast<std::int64_t>(AV_RL64(begin.data() + kind.size()));
}

std::optional<Places> placesIn(const GrowingFile& file)
{
    const Places places{sizeOfHeadsBegin, sizeOf(headGuid, file, 0)};
    const bool asExpected = sizeOf(propertiesGuid, file, places.properties) == sizeOfProperties &&
                            sizeOf(dataGuid, file, places.data) != 0;
    return asExpected ? std::optional(places) : std::nullopt;
}

}  // namespace

std::unique_ptr<LengthInHead> lengthInAsfHead(GrowingFile& file, SampleRate rate)
{
    const auto places = placesIn(file);
    return places ? std::make_unique<AsfHead>(file, *places, rate) : nullptr;
}

}  // namespace sound
