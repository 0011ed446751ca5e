#include "sound/media/counting/FlacFrames.h"

#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace sound {
namespace {

constexpr std::size_t longestHead = 16;
constexpr std::int64_t shortestBlock = 10;  // in bytes: a head, silence in one channel, the sum

/// Tables of the two cyclic sums, both of polynomials whose highest bit goes first.
template <typename Sum>
constexpr std::array<Sum, 256> sumTable(Sum polynomial)
{
    std::array<Sum, 256> table{};
    constexpr int bits = 8 * sizeof(Sum);
    for (unsigned value = 0; value < table.size(); ++value) {
        auto sum = static_cast<Sum>(value << (bits - 8));
        for (int i = 0; i < 8; ++i)
            sum = static_cast<Sum>((sum << 1) ^ (sum >> (bits - 1) != 0 ? polynomial : 0));
        table[value] = sum;
    }
    return table;
}
constexpr auto headSums = sumTable<std::uint8_t>(0x07);
constexpr auto blockSums = sumTable<std::uint16_t>(0x8005);

std::uint8_t headSum(std::span<const std::uint8_t> bytes)
{
    std::uint8_t sum = 0;
    for (const std::uint8_t byte : bytes)
        sum = headSums[sum ^ byte];
    return sum;
}

/// 0 for a whole block with its own sum at its end.
std::uint16_t blockSum(std::span<const std::uint8_t> bytes)
{
    std::uint16_t sum = 0;
    for (const std::uint8_t byte : bytes)
        sum = static_cast<std::uint16_t>((sum << 8) ^ blockSums[(sum >> 8) ^ byte]);
    return sum;
}

struct StreamInfo
{
    std::int64_t fixedBlock = 0;  // frames in every block but the last, where that is one number
    std::int64_t claimedFrames = 0;
    std::int64_t firstBlock = 0;  // where the blocks begin in the file
};

std::optional<StreamInfo> readStreamInfo(FileBytes& bytes)
{
    std::int64_t offset = endOfId3Tags(bytes);
    const auto mark = bytes.exactlyAt(offset, 4);
    if (mark.empty() || std::memcmp(mark.data(), "fLaC", 4) != 0)
        return std::nullopt;
    offset += 4;
    StreamInfo info;
    for (bool last = false; !last;) {
        const auto head = bytes.exactlyAt(offset, 4);
        if (head.empty())
            return std::nullopt;
        last = (head[0] & 0x80) != 0;
        const bool isStreamInfo = (head[0] & 0x7F) == 0;
        const std::int64_t size = bigEndian32(head) & 0xFFFFFF;
        if (isStreamInfo) {
            const auto body = bytes.exactlyAt(offset + 4, 34);
            if (body.empty())
                return std::nullopt;
            info.fixedBlock = body[2] << 8 | body[3];
            info.claimedFrames = static_cast<std::int64_t>(body[13] & 0x0F) << 32 |
                                 static_cast<std::int64_t>(bigEndian32(body.subspan(14)));
        }
        offset += 4 + size;
    }
    info.firstBlock = offset;
    return info;
}

/// The head of one block.
struct Head
{
    bool variable = false;  // blocks of any length: the number is that of the first frame, not of the block
    std::int64_t number = 0;
    std::int64_t frames = 0;
    std::uint32_t kind = 0;  // rate, channels and bits, as coded

    std::int64_t firstFrame(std::int64_t fixedBlock) const { return variable ? number : number * fixedBlock; }
};

std::optional<Head> readHead(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < 6 || bytes[0] != 0xFF || (bytes[1] & 0xFE) != 0xF8 || (bytes[3] & 1) != 0)
        return std::nullopt;
    const int blockCode = bytes[2] >> 4;
    const int rateCode = bytes[2] & 0x0F;
    const int channelCode = bytes[3] >> 4;
    const int bitsCode = bytes[3] >> 1 & 7;
    if (blockCode == 0 || rateCode == 15 || channelCode > 10 || bitsCode == 3)
        return std::nullopt;

    // The number is coded as text codes its characters: the leading ones of the first byte tell how many follow.
    std::size_t at = 4;
    const std::uint8_t first = bytes[at++];
    int following = 0;
    while (following < 8 && (first & (0x80 >> following)) != 0)
        ++following;
    if (following == 1 || following == 8)
        return std::nullopt;
    std::int64_t number = following == 0 ? first : first & (0x7F >> following);
    for (int i = 1; i < following; ++i) {
        if (at >= bytes.size() || (bytes[at] & 0xC0) != 0x80)
            return std::nullopt;
        number = number << 6 | (bytes[at++] & 0x3F);
    }

    const std::size_t blockBytes = blockCode == 6 ? 1 : blockCode == 7 ? 2 : 0;
    const std::size_t rateBytes = rateCode == 12 ? 1 : rateCode >= 13 ? 2 : 0;
    if (at + blockBytes + rateBytes + 1 > bytes.size())
        return std::nullopt;
    std::int64_t frames = 0;
    if (blockCode == 1)
        frames = 192;
    else if (blockCode <= 5)
        frames = 576 << (blockCode - 2);
    else if (blockCode == 6)
        frames = bytes[at] + 1;
    else if (blockCode == 7)
        frames = (bytes[at] << 8 | bytes[at + 1]) + 1;
    else
        frames = 256 << (blockCode - 8);
    at += blockBytes + rateBytes;
    if (headSum(bytes.first(at)) != bytes[at])
        return std::nullopt;
    const bool variable = (bytes[1] & 1) != 0;
    return Head{variable, number, frames, static_cast<std::uint32_t>(rateCode << 4 | bitsCode)};
}

/// One who looks for blocks in a FLAC file.
class Blocks
{
public:
    Blocks(FileBytes& fileBytes, const StreamInfo& streamInfo)
        : bytes(fileBytes)
        , info(streamInfo)
        , end(beginOfId3v1Tag(fileBytes))
        , first(readHead(bytes.at(info.firstBlock, longestHead)))
    {
        if (first && !first->variable && info.fixedBlock == 0)
            info.fixedBlock = first->frames;
    }

    /// Where the last block ends, counted from where the first begins, as their numbers tell.
    std::optional<std::int64_t> framesByLastNumber()
    {
        if (!first)
            return std::nullopt;
        constexpr std::int64_t firstWindow = std::int64_t{32} * 1024;
        constexpr std::int64_t lastWindow = std::int64_t{2} * 1024 * 1024;
        for (std::int64_t window = firstWindow; window <= lastWindow; window *= 4) {
            const std::int64_t from = std::max(info.firstBlock, end - window);
            if (const auto frames = lastWholeBlockFrom(from))
                return frames;
            if (from == info.firstBlock)
                break;
        }
        return std::nullopt;
    }

    /// The same, told by every block of the file in turn; a number is believed only as far as the bytes since the
    /// last one have room for the blocks between them.
    std::optional<std::int64_t> framesByAllNumbers()
    {
        if (!first)
            return std::nullopt;
        const std::int64_t begin = first->firstFrame(info.fixedBlock);
        std::int64_t reached = begin;
        std::int64_t lastOffset = info.firstBlock;
        std::int64_t largest = std::max(info.fixedBlock, first->frames);
        for (std::int64_t offset = nextHead(info.firstBlock); offset >= 0; offset = nextHead(offset + 1)) {
            const Head head = *readHead(bytes.at(offset, longestHead));
            const std::int64_t frame = head.firstFrame(info.fixedBlock);
            const std::int64_t room = (offset - lastOffset) / shortestBlock * largest;
            if (frame < reached || frame - reached > room)
                continue;
            reached = frame + head.frames;
            largest = std::max(largest, head.frames);
            lastOffset = offset;
        }
        return reached - begin;
    }

private:
    /// Where the next head of this stream stands, at @p offset or later; -1 where none does.
    std::int64_t nextHead(std::int64_t offset)
    {
        while (offset < end) {
            constexpr std::int64_t piece = std::int64_t{64} * 1024;
            const auto view = bytes.at(offset, static_cast<std::size_t>(std::min(piece, end - offset)));
            if (view.size() < 2)
                return -1;
            const auto* hit = static_cast<const std::uint8_t*>(std::memchr(view.data(), 0xFF, view.size() - 1));
            if (hit == nullptr) {
                offset += static_cast<std::int64_t>(view.size()) - 1;
                continue;
            }
            offset += hit - view.data();
            if (isHeadOfStream(view.subspan(static_cast<std::size_t>(hit - view.data())), offset))
                return offset;
            ++offset;
        }
        return -1;
    }

    bool isHeadOfStream(std::span<const std::uint8_t> view, std::int64_t offset)
    {
        if ((view[1] & 0xFE) != 0xF8)
            return false;
        const auto head =
            readHead(view.size() >= longestHead ? view.first(longestHead) : bytes.at(offset, longestHead));
        return head && head->variable == first->variable && head->kind == first->kind;
    }

    std::optional<std::int64_t> lastWholeBlockFrom(std::int64_t from)
    {
        std::vector<std::int64_t> offsets;
        for (std::int64_t offset = nextHead(from); offset >= 0; offset = nextHead(offset + 1))
            offsets.push_back(offset);
        std::int64_t blockEnd = end;
        for (auto offset = offsets.rbegin(); offset != offsets.rend(); ++offset) {
            const auto size = static_cast<std::size_t>(blockEnd - *offset);
            const auto block = bytes.exactlyAt(*offset, size);
            if (!block.empty() && blockSum(block) == 0) {
                const Head head = *readHead(block.first(std::min(longestHead, block.size())));
                const std::int64_t frames =
                    head.firstFrame(info.fixedBlock) + head.frames - first->firstFrame(info.fixedBlock);
                return frames > 0 ? std::optional(frames) : std::nullopt;
            }
            blockEnd = *offset;
        }
        return std::nullopt;
    }

    FileBytes& bytes;
    StreamInfo info;
    std::int64_t end;
    std::optional<Head> first;
};

}  // namespace

std::optional<FrameCount> countFlacFrames(const RegularFile& file)
{
    FileBytes bytes(file);
    const auto info = readStreamInfo(bytes);
    if (!info)
        return std::nullopt;
    Blocks blocks(bytes, *info);
    auto frames = blocks.framesByLastNumber();
    if (!frames || *frames != info->claimedFrames) {
        // A forged last number says too much, and the head of a block that is cut off says too much as well.
        const auto all = blocks.framesByAllNumbers();
        frames = frames && all ? std::min(*frames, *all) : all;
    }
    return frames && *frames > 0 ? std::optional(FrameCount{*frames}) : std::nullopt;
}

}  // namespace sound
