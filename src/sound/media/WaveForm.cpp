#include "sound/media/WaveForm.h"

#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <array>

namespace sound {
namespace {

constexpr std::size_t plainFormSize = 16;
constexpr int extensibleTag = 0xFFFE;
constexpr int extensionSize = 22;

/// What makes a format of the GUID that begins with the tag of that format.
constexpr std::array<std::uint8_t, 14> restOfFormatGuid = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                                           0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

int formNumber(std::span<const std::uint8_t> bytes, std::size_t offset)
{
    return bytes[offset] | bytes[offset + 1] << 8;
}

}  // namespace

std::optional<WaveForm> WaveForm::read(std::span<const std::uint8_t> body)
{
    if (body.size() < plainFormSize)
        return std::nullopt;
    WaveForm form;
    form.tag = formNumber(body, 0);
    form.channels = formNumber(body, 2);
    form.rate = littleEndian32(body.subspan(4));
    form.bytesASecond = littleEndian32(body.subspan(8));
    form.bytesAFrame = formNumber(body, 12);
    form.bits = formNumber(body, 14);
    form.usedBits = form.bits;
    if (form.tag == extensibleTag) {
        if (body.size() < largestSize || formNumber(body, 16) < extensionSize)
            return std::nullopt;
        form.usedBits = formNumber(body, 18);
        const bool hasTag = std::ranges::equal(body.subspan(26, restOfFormatGuid.size()), restOfFormatGuid);
        form.tag = hasTag ? formNumber(body, 24) : 0;
    }
    return form;
}

}  // namespace sound
