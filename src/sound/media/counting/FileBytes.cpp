#include "sound/media/counting/FileBytes.h"

#include <algorithm>
#include <cstring>

namespace sound {
namespace {

constexpr std::size_t pieceSize = std::size_t{128} * 1024;

}  // namespace

FileBytes::FileBytes(const RegularFile& openFile)
    : file(openFile)
{
}

std::span<const std::uint8_t> FileBytes::at(std::int64_t offset, std::size_t count)
{
    if (offset < 0 || offset >= size() || count == 0)
        return {};
    const auto there = std::min(count, static_cast<std::size_t>(size() - offset));
    const auto bufferEnd = bufferStart + static_cast<std::int64_t>(buffer.size());
    if (offset < bufferStart || offset + static_cast<std::int64_t>(there) > bufferEnd) {
        // What lies close ahead is wanted next; one who jumps from header to header reads little in vain.
        const bool goesOn = offset >= bufferStart && offset <= bufferEnd + static_cast<std::int64_t>(pieceSize) / 4;
        buffer.resize(std::max(there, goesOn ? pieceSize : pieceSize / 32));
        buffer.resize(file.readAt(offset, buffer));
        bufferStart = offset;
    }
    const auto skipped = static_cast<std::size_t>(offset - bufferStart);
    return std::span<const std::uint8_t>(buffer).subspan(skipped, std::min(there, buffer.size() - skipped));
}

std::span<const std::uint8_t> FileBytes::exactlyAt(std::int64_t offset, std::size_t count)
{
    const auto bytes = at(offset, count);
    return bytes.size() == count ? bytes : std::span<const std::uint8_t>();
}

std::int64_t FileBytes::find(std::span<const std::uint8_t> pattern, std::int64_t from, std::int64_t end)
{
    const auto length = static_cast<std::int64_t>(pattern.size());
    while (from + length <= end) {
        const auto bytes = at(from, static_cast<std::size_t>(std::min<std::int64_t>(end - from, pieceSize)));
        if (bytes.size() < pattern.size())
            return -1;
        const void* hit = ::memmem(bytes.data(), bytes.size(), pattern.data(), pattern.size());
        if (hit != nullptr)
            return from + (static_cast<const std::uint8_t*>(hit) - bytes.data());
        from += static_cast<std::int64_t>(bytes.size()) - length + 1;
    }
    return -1;
}

std::int64_t endOfId3Tags(FileBytes& bytes)
{
    std::int64_t offset = 0;
    for (;;) {
        const auto head = bytes.exactlyAt(offset, 10);
        if (head.empty() || std::memcmp(head.data(), "ID3", 3) != 0 ||
            ((head[6] | head[7] | head[8] | head[9]) & 0x80))
            return offset;
        constexpr std::uint8_t footerPresent = 0x10;
        const std::int64_t body = head[6] << 21 | head[7] << 14 | head[8] << 7 | head[9];
        offset += 10 + body + ((head[5] & footerPresent) != 0 ? 10 : 0);
    }
}

std::int64_t beginOfId3v1Tag(FileBytes& bytes)
{
    constexpr std::int64_t tagSize = 128;
    const auto tag = bytes.exactlyAt(bytes.size() - tagSize, 3);
    return !tag.empty() && std::memcmp(tag.data(), "TAG", 3) == 0 ? bytes.size() - tagSize : bytes.size();
}

bool is(std::span<const std::uint8_t> bytes, const char* fourCharacters)
{
    return bytes.size() >= 4 && std::memcmp(bytes.data(), fourCharacters, 4) == 0;
}

}  // namespace sound
