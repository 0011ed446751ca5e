#include "sound/media/recorded/LengthInHead.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>

extern "C" {
#include <libavutil/intreadwrite.h>
}

namespace sound {
namespace {

/// The tag lies in the first coded frame, which holds no sound: a name, flags that tell which numbers follow,
/// those, and an extension of LAME's.
constexpr std::int64_t placeOfFlags = 4;
constexpr std::int64_t placeOfCounts = 8;
constexpr std::int64_t placeOfDelay = 141;
constexpr unsigned allNumbers = 15;

/// What every decoder adds to the delay of its own accord.
constexpr std::int64_t decodersDelay = 529;

class InfoTag : public LengthInHead
{
public:
    InfoTag(GrowingFile& growing, std::int64_t found, FrameCount encodersDelay)
        : file(growing)
        , place(found)
        , delay(std::clamp<std::int64_t>(encodersDelay.value - decodersDelay, 0, 0xFFF))
    {
    }

    bool tell(const Growth& growth) override
    {
        std::array<std::uint8_t, 8> counts = {};
        AV_WB32(counts.data(), static_cast<std::uint32_t>(growth.packets));
        AV_WB32(counts.data() + 4, static_cast<std::uint32_t>(growth.bytes));
        std::array<std::uint8_t, 3> delayAndPadding = {};  // 12 bits each
        AV_WB24(delayAndPadding.data(), static_cast<std::uint32_t>(delay) << 12);
        return file.writeAt(place + placeOfDelay, std::as_bytes(std::span(delayAndPadding))) &&
               file.writeAt(place + placeOfCounts, std::as_bytes(std::span(counts)));
    }

private:
    GrowingFile& file;
    std::int64_t place;
    std::int64_t delay;
};

std::optional<std::int64_t> placeOfTag(const GrowingFile& file)
{
    std::array<std::uint8_t, 64> begin = {};
    const std::size_t count = file.readAt(0, std::as_writable_bytes(std::span(begin)));
    for (std::size_t i = 0; i + placeOfCounts <= count; ++i) {
        const std::uint8_t* tag = begin.data() + i;
        const bool named = std::memcmp(tag, "Info", 4) == 0 || std::memcmp(tag, "Xing", 4) == 0;
        if (named && AV_RB32(tag + placeOfFlags) == allNumbers)
            return static_cast<std::int64_t>(i);
    }
    return std::nullopt;
}

}  // namespace

std::unique_ptr<LengthInHead> lengthInInfoTag(GrowingFile& file, FrameCount delay)
{
    const auto place = placeOfTag(file);
    return place ? std::make_unique<InfoTag>(file, *place, delay) : nullptr;
}

}  // namespace sound
