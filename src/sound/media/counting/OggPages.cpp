#include "sound/media/counting/OggPages.h"

#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace sound {
namespace {

constexpr std::array<std::uint8_t, 4> pageMark = {'O', 'g', 'g', 'S'};
constexpr std::size_t pageHeadSize = 27;
constexpr std::int64_t noPosition = -1;

struct Page
{
    std::int64_t size = 0;  // in bytes, with the head
    std::int64_t bodyStart = 0;
    bool begins = false;  // a sound
    bool ends = false;
    std::int64_t position = noPosition;
    std::uint32_t serial = 0;
    std::uint32_t number = 0;
    std::int64_t packets = 0;  // that end on it
};

std::optional<Page> pageAt(FileBytes& bytes, std::int64_t offset)
{
    const auto head = bytes.exactlyAt(offset, pageHeadSize);
    if (head.empty() || std::memcmp(head.data(), pageMark.data(), pageMark.size()) != 0 || head[4] != 0)
        return std::nullopt;
    Page page;
    page.begins = (head[5] & 2) != 0;
    page.ends = (head[5] & 4) != 0;
    page.position = static_cast<std::int64_t>(littleEndian64(head.subspan(6)));
    page.serial = littleEndian32(head.subspan(14));
    page.number = littleEndian32(head.subspan(18));
    const std::size_t segments = head[26];
    page.bodyStart = offset + static_cast<std::int64_t>(pageHeadSize + segments);
    page.size = static_cast<std::int64_t>(pageHeadSize + segments);
    for (const std::uint8_t segment : bytes.exactlyAt(offset + static_cast<std::int64_t>(pageHeadSize), segments)) {
        page.size += segment;
        page.packets += segment < 255 ? 1 : 0;
    }
    return page;
}

/// The sum over a page, its own four bytes of the sum taken as zeros.
bool sumIsRight(FileBytes& bytes, std::int64_t offset, const Page& page)
{
    static constexpr auto table = [] {
        std::array<std::uint32_t, 256> sums{};
        for (std::uint32_t value = 0; value < sums.size(); ++value) {
            std::uint32_t sum = value << 24;
            for (int i = 0; i < 8; ++i)
                sum = sum << 1 ^ ((sum & 0x80000000U) != 0 ? 0x04C11DB7U : 0U);
            sums[value] = sum;
        }
        return sums;
    }();
    constexpr std::size_t sumPlace = 22;
    const auto all = bytes.exactlyAt(offset, static_cast<std::size_t>(page.size));
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::uint8_t byte = i >= sumPlace && i < sumPlace + 4 ? 0 : all[i];
        sum = sum << 8 ^ table[(sum >> 24) ^ byte];
    }
    return !all.empty() && sum == littleEndian32(all.subspan(sumPlace));
}

struct Kind
{
    std::int64_t mostFramesInPacket = 0;  // 0: no sound
    std::int64_t delay = 0;               // of the encoder, cut from the beginning
};

Kind kindOf(std::span<const std::uint8_t> body)
{
    const auto beginsWith = [body](const char* text, std::size_t size) {
        return body.size() >= size && std::memcmp(body.data(), text, size) == 0;
    };
    if (beginsWith("\x01vorbis", 7))
        return {8192, 0};
    if (beginsWith("OpusHead", 8) && body.size() >= 12)
        return {5760, body[10] | body[11] << 8};
    if (beginsWith("\x7F"
                   "FLAC",
                   5) ||
        beginsWith("fLaC", 4))
        return {65536, 0};
    return {};
}

/// Follows the pages of one sound, and then of the next in the chain.
class Positions
{
public:
    Positions(FileBytes& fileBytes, FramePosition positionOfFirstPacket)
        : bytes(fileBytes)
        , firstPosition(positionOfFirstPacket)
    {
    }

    /// A page at @p offset, @p bytesSinceLast behind the end of the last one.
    void add(const Page& page, std::int64_t offset, std::int64_t bytesSinceLast)
    {
        if (page.begins) {
            const Kind found = kindOf(bytes.at(page.bodyStart, 16));
            const bool goesOn =
                kind.mostFramesInPacket == 0 || (ended && found.mostFramesInPacket == kind.mostFramesInPacket);
            if (found.mostFramesInPacket > 0 && goesOn)
                start(page, found);
            return;
        }
        if (kind.mostFramesInPacket == 0 || page.serial != serial)
            return;
        ended = page.ends;
        if (page.position <= reached)
            return;  // also that of a page on which no packet ends
        if (!begun)
            begin = reached = earlier > 0 ? 0 : std::clamp<std::int64_t>(firstPosition.value, 0, page.position);
        if (page.position - reached > mostFramesOn(page, bytesSinceLast))
            return;
        begun = true;
        reachedBeforeLast = reached;
        reached = page.position;
        number = page.number;
        lastOffset = offset;
        lastPage = page;
    }

    std::int64_t frames()
    {
        settle();
        return earlier;
    }

private:
    void start(const Page& page, const Kind& newKind)
    {
        settle();
        kind = newKind;
        serial = page.serial;
        number = page.number;
    }

    /// Adds the sound that was followed to those before it. Its last position counts: if that page is damaged, the
    /// one before it does.
    void settle()
    {
        if (begun && !sumIsRight(bytes, lastOffset, lastPage))
            reached = reachedBeforeLast;
        if (begun)
            earlier += std::max<std::int64_t>(0, reached - begin - kind.delay);
        begun = ended = false;
        begin = reached = reachedBeforeLast = 0;
    }

    std::int64_t mostFramesOn(const Page& page, std::int64_t bytesSinceLast) const
    {
        // Pages lost on the way have left their bytes behind, or were cut out: a few are believed without them.
        constexpr std::int64_t lostWithoutTrace = 16;
        constexpr std::int64_t mostPacketsOnPage = 255;
        const std::int64_t lost = std::clamp<std::int64_t>(std::int64_t{page.number} - number - 1, 0,
                                                           lostWithoutTrace + bytesSinceLast / 1024);
        return kind.mostFramesInPacket * (page.packets + 1 + mostPacketsOnPage * lost);
    }

    FileBytes& bytes;
    FramePosition firstPosition;
    Kind kind;
    std::uint32_t serial = 0;
    std::int64_t number = 0;  // of the last page
    bool begun = false;
    bool ended = false;
    std::int64_t begin = 0;
    std::int64_t reached = 0;
    std::int64_t reachedBeforeLast = 0;
    std::int64_t lastOffset = 0;
    Page lastPage;
    std::int64_t earlier = 0;  // in the sounds before this one in the chain
};

}  // namespace

std::optional<FrameCount> countOggFrames(const RegularFile& file, FramePosition firstPosition)
{
    FileBytes bytes(file);
    Positions positions(bytes, firstPosition);
    std::int64_t endOfLast = 0;
    for (std::int64_t offset = 0; offset >= 0 && offset < bytes.size();) {
        const auto page = pageAt(bytes, offset);
        if (!page || offset + page->size > bytes.size()) {
            offset = bytes.find(pageMark, offset + 1, bytes.size());
            continue;
        }
        positions.add(*page, offset, offset - endOfLast);
        offset += page->size;
        endOfLast = offset;
    }
    const std::int64_t frames = positions.frames();
    return frames > 0 ? std::optional(FrameCount{frames}) : std::nullopt;
}

}  // namespace sound
