#pragma once

#include "sound/media/counting/FileBytes.h"

#include <cstdint>
#include <optional>
#include <span>

namespace sound {

/// What the head of a coded frame says, in the formats that are nothing but one such frame after the other.
struct CodedFrame
{
    std::int64_t size = 0;    // in bytes, with the head
    std::int64_t frames = 0;  // of sound
    int rate = 0;
    std::uint32_t kind = 0;  // what stays the same from frame to frame
};

/// Reads a head at the beginning of @p bytes, of which there are at least @c longestCodedHead but at the end of the
/// file; nothing where there is none.
using ReadCodedHead = std::optional<CodedFrame> (*)(std::span<const std::uint8_t> bytes);

constexpr std::size_t longestCodedHead = 10;

struct WalkedFrames
{
    std::int64_t count = 0;   // of coded frames that are whole
    std::int64_t frames = 0;  // at the rate of the first
    CodedFrame first;
};

/// Goes from head to head between two places of the file. Where there is no head, the walk goes on at the next
/// place where two heads of the same kind follow each other as their sizes say.
WalkedFrames walkFrames(FileBytes& bytes, std::int64_t begin, std::int64_t end, ReadCodedHead readHead);

}  // namespace sound
