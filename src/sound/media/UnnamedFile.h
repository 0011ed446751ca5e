#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace sound {

/// Makes a file of @p size zero bytes that has no name and goes when it is closed, also when the program is ended
/// by force: in the user's cache folder, or where temporary files live, on a real disc rather than in a file system
/// that is itself memory. It takes room on the disc only as it is written.
///
/// Returns its descriptor, or -1 where no disc has room for a file of that size by now. Any thread.
int openUnnamedFile(std::int64_t size);

/// Writes all of @p bytes at @p offset. False where the disc is full or fails.
bool writeAt(int file, std::int64_t offset, std::span<const std::byte> bytes);

}  // namespace sound
