#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace sound {

/// A file that is written at any place. **Threads.** One at a time.
class OutputFile
{
public:
    virtual ~OutputFile() = default;

    /// False when the disc is full or fails.
    virtual bool writeAt(std::int64_t offset, std::span<const std::byte> bytes) = 0;
};

}  // namespace sound
