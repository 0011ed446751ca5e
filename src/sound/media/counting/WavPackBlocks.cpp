#include "sound/media/counting/WavPackBlocks.h"

#include "sound/media/counting/FileBytes.h"

#include <array>
#include <cstring>

namespace sound {
namespace {

constexpr std::size_t blockHeadSize = 32;
constexpr std::array<std::uint8_t, 4> blockMark = {'w', 'v', 'p', 'k'};
constexpr std::uint32_t largestBlock = 1024 * 1024;  // in bytes
constexpr std::uint32_t mostFramesInBlock = 150'000;
constexpr std::uint32_t firstOfItsFrames = 0x800;  // flag: further blocks hold further channels of the same frames

struct Block
{
    std::int64_t size = 0;
    std::int64_t index = 0;
    std::int64_t frames = 0;
    bool counts = false;
};

std::optional<Block> blockAt(FileBytes& bytes, std::int64_t offset)
{
    const auto head = bytes.exactlyAt(offset, blockHeadSize);
    if (head.empty() || std::memcmp(head.data(), blockMark.data(), blockMark.size()) != 0)
        return std::nullopt;
    const std::uint32_t rest = littleEndian32(head.subspan(4));
    const std::uint32_t frames = littleEndian32(head.subspan(20));
    if (rest < blockHeadSize - 8 || rest > largestBlock || frames > mostFramesInBlock)
        return std::nullopt;
    const std::uint32_t flags = littleEndian32(head.subspan(24));
    return Block{std::int64_t{rest} + 8, littleEndian32(head.subspan(16)), frames,
                 frames > 0 && (flags & firstOfItsFrames) != 0};
}

}  // namespace

std::optional<FrameCount> countWavPackFrames(const RegularFile& file)
{
    FileBytes bytes(file);
    std::int64_t offset = bytes.find(blockMark, 0, bytes.size());
    std::int64_t counted = 0;
    std::int64_t nextIndex = -1;
    std::int64_t endOfLast = 0;
    while (offset >= 0) {
        const auto block = blockAt(bytes, offset);
        if (!block) {
            offset = bytes.find(blockMark, offset + 1, bytes.size());
            continue;
        }
        if (offset + block->size > bytes.size())
            break;  // cut off in the middle: it cannot be decoded
        if (block->counts) {
            // What is missing between two blocks must have left its bytes behind.
            const std::int64_t missing = nextIndex < 0 ? 0 : block->index - nextIndex;
            const std::int64_t mostMissing =
                (offset - endOfLast) / static_cast<std::int64_t>(blockHeadSize) * mostFramesInBlock;
            if (missing > 0 && missing <= mostMissing)
                counted += missing;
            counted += block->frames;
            nextIndex = block->index + block->frames;
        }
        offset += block->size;
        endOfLast = offset;
    }
    return counted > 0 ? std::optional(FrameCount{counted}) : std::nullopt;
}

}  // namespace sound
