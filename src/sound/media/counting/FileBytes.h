#pragma once

#include "sound/media/RegularFile.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sound {

/// The bytes of a file at hand for one who walks through it: read in large pieces, looked at in small ones.
///
/// **Threads.** One.
class FileBytes
{
public:
    explicit FileBytes(const RegularFile& file);

    std::int64_t size() const { return file.size(); }

    /// Up to @p count bytes from @p offset on, fewer at the end of the file; valid until the next call.
    std::span<const std::uint8_t> at(std::int64_t offset, std::size_t count);

    /// Exactly @p count bytes from @p offset on, or none.
    std::span<const std::uint8_t> exactlyAt(std::int64_t offset, std::size_t count);

    /// Where @p pattern stands next, at @p from or later and before @p end; -1 where it does not.
    std::int64_t find(std::span<const std::uint8_t> pattern, std::int64_t from, std::int64_t end);

private:
    const RegularFile& file;
    std::vector<std::uint8_t> buffer;
    std::int64_t bufferStart = 0;
};

/// Whether the bytes begin with these four characters, as the parts of many containers do.
bool is(std::span<const std::uint8_t> bytes, const char* fourCharacters);

constexpr std::uint32_t littleEndian32(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}
constexpr std::uint64_t littleEndian64(std::span<const std::uint8_t> bytes)
{
    return littleEndian32(bytes) | static_cast<std::uint64_t>(littleEndian32(bytes.subspan(4))) << 32;
}
constexpr std::uint32_t bigEndian32(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
}

/// Where the sound begins behind the ID3v2 tags at the file's beginning; 0 where there are none.
std::int64_t endOfId3Tags(FileBytes& bytes);

/// Where the sound ends before the ID3v1 tag at the file's end.
std::int64_t beginOfId3v1Tag(FileBytes& bytes);

}  // namespace sound
