#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace sound {

/// A regular file, open for reading at any place.
///
/// Nothing but a regular file is opened: no folder, no pipe (which could block for ever), no device (which could
/// have no end). The name is a name in the file system and nothing else, whatever characters it holds.
///
/// **Threads.** readAt() from any of them: the file has no position of its own.
class RegularFile
{
public:
    /// Null where there is no such file or it may not be read.
    static std::shared_ptr<const RegularFile> open(const QString& path);

    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// In bytes, as it was when the file was opened; reading never goes further.
    std::int64_t size() const { return length; }

    /// Whether @p path leads to this file now: by its own name, or by any other that it has.
    bool isNamed(const QString& path) const;

    /// Fills @p bytes from @p offset on. Returns how many there are: fewer than asked for only at the end of the
    /// file, and where the disc fails.
    std::size_t readAt(std::int64_t offset, std::span<std::uint8_t> bytes) const;

private:
    RegularFile(int descriptor, std::int64_t length);

    int descriptor;
    std::int64_t length;
};

}  // namespace sound
