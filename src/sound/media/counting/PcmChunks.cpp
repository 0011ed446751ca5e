#include "sound/media/counting/PcmChunks.h"

#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace sound {
namespace {

// A file of nothing but tiny chunks must not be walked for ever.
constexpr int mostChunks = 100'000;

std::optional<ByteRange> within(const FileBytes& bytes, std::int64_t begin, std::uint64_t size)
{
    const std::int64_t there = bytes.size() - begin;
    if (begin < 0 || there <= 0)
        return std::nullopt;
    const auto end =
        size < static_cast<std::uint64_t>(there) ? begin + static_cast<std::int64_t>(size) : bytes.size();
    return ByteRange{begin, end};
}

constexpr std::uint32_t unknown = 0xFFFFFFFF;

/// Whether from here to the very end of the RIFF there is one chunk behind the other. Samples do not look so.
bool areChunks(FileBytes& bytes, std::int64_t offset, std::uint64_t riffEnd)
{
    const auto isCharacter = [](std::uint8_t byte) { return byte >= ' ' && byte <= '~'; };
    for (int i = 0; i < mostChunks; ++i) {
        const auto head = bytes.exactlyAt(offset, 8);
        if (head.empty() || !std::ranges::all_of(head.first(4), isCharacter))
            return false;
        const std::uint32_t size = littleEndian32(head.subspan(4));
        const std::int64_t end = offset + 8 + size;
        offset = end + (size & 1);
        // Some writers leave the padding of the last one out.
        if (static_cast<std::uint64_t>(end) == riffEnd || static_cast<std::uint64_t>(offset) == riffEnd)
            return true;
        if (static_cast<std::uint64_t>(offset) > riffEnd)
            return false;
    }
    return false;
}

std::optional<WaveChunks> findInRiff(FileBytes& bytes)
{
    const auto opening = bytes.exactlyAt(0, 8);
    if (opening.empty())
        return std::nullopt;
    std::uint64_t riffSize = littleEndian32(opening.subspan(4));
    std::optional<std::uint64_t> longSize;  // of a file beyond 4 GiB, told by a chunk of its own
    WaveChunks found;
    std::int64_t offset = 12;
    for (int i = 0; i < mostChunks; ++i) {
        const auto head = bytes.exactlyAt(offset, 8);
        if (head.empty())
            return std::nullopt;
        const std::uint32_t size = littleEndian32(head.subspan(4));
        const std::int64_t body = offset + 8;
        if (is(head, "data")) {
            const bool neverTold = size == unknown && !longSize;
            const std::uint64_t told = size == unknown ? longSize.value_or(0) : size;
            const bool toTheEnd = neverTold || (told == 0 && !areChunks(bytes, body, riffSize + 8));
            const auto samples = within(bytes, body, toTheEnd ? std::numeric_limits<std::uint64_t>::max() : told);
            if (!samples)
                return std::nullopt;
            found.samples = *samples;
            return found;
        }
        if (is(head, "fmt "))
            found.form = within(bytes, body, size).value_or(ByteRange{});
        if (is(head, "ds64")) {
            const auto sizes = bytes.exactlyAt(body, 16);
            if (!sizes.empty()) {
                riffSize = littleEndian64(sizes);
                longSize = littleEndian64(sizes.subspan(8));
            }
        }
        offset = body + size + (size & 1);
    }
    return std::nullopt;
}

constexpr std::array<std::uint8_t, 16> wave64Riff = {'r',  'i',  'f',  'f',  0x2E, 0x91, 0xCF, 0x11,
                                                     0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00};

std::optional<ByteRange> findInWave64(FileBytes& bytes)
{
    constexpr std::int64_t headSize = 24;  // a GUID, and the chunk's size with these bytes
    std::int64_t offset = 40;
    for (int i = 0; i < mostChunks; ++i) {
        const auto head = bytes.exactlyAt(offset, headSize);
        if (head.empty())
            return std::nullopt;
        const std::uint64_t size = littleEndian64(head.subspan(16));
        if (is(head, "data")) {
            const bool neverWritten = size <= headSize;
            return within(bytes, offset + headSize,
                          neverWritten ? std::numeric_limits<std::uint64_t>::max() : size - headSize);
        }
        if (size < headSize || size > static_cast<std::uint64_t>(bytes.size()))
            return std::nullopt;
        offset += static_cast<std::int64_t>((size + 7) & ~std::uint64_t{7});
    }
    return std::nullopt;
}

std::optional<ByteRange> findInAiff(FileBytes& bytes)
{
    std::int64_t offset = 12;
    for (int i = 0; i < mostChunks; ++i) {
        const auto head = bytes.exactlyAt(offset, 16);
        if (head.empty())
            return std::nullopt;
        const std::uint32_t size = bigEndian32(head.subspan(4));
        if (is(head, "SSND")) {
            const std::uint32_t unusedBefore = bigEndian32(head.subspan(8));
            const std::int64_t begin = offset + 16 + unusedBefore;
            const std::int64_t end = size < 8 ? bytes.size() : offset + 8 + size;
            return end > begin ? within(bytes, begin, static_cast<std::uint64_t>(end - begin)) : std::nullopt;
        }
        offset += 8 + static_cast<std::int64_t>(size) + (size & 1);
    }
    return std::nullopt;
}

}  // namespace

std::optional<ByteRange> findPcmSamples(const RegularFile& file)
{
    if (const std::optional<WaveChunks> chunks = findWaveChunks(file))
        return chunks->samples;
    FileBytes bytes(file);
    const auto head = bytes.exactlyAt(0, wave64Riff.size());
    if (head.empty())
        return std::nullopt;
    if (std::ranges::equal(head, wave64Riff))
        return findInWave64(bytes);
    const auto form = head.subspan(8);
    if (is(head, "FORM") && (is(form, "AIFF") || is(form, "AIFC")))
        return findInAiff(bytes);
    return std::nullopt;
}

std::optional<WaveChunks> findWaveChunks(const RegularFile& file)
{
    FileBytes bytes(file);
    const auto head = bytes.exactlyAt(0, 12);
    const bool isRiff = is(head, "RIFF") || is(head, "RF64") || is(head, "BW64");
    return isRiff && is(head.subspan(8), "WAVE") ? findInRiff(bytes) : std::nullopt;
}

}  // namespace sound
