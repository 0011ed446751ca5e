#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace sound {

/// What the format chunk of a RIFF WAVE file tells of its samples. Nothing of it has to be true, or to agree with
/// the rest.
struct WaveForm
{
    static constexpr int pcmTag = 1;
    static constexpr int floatTag = 3;

    /// No longer chunk tells more.
    static constexpr std::size_t largestSize = 40;

    /// Nothing where the chunk is too short for what it has to tell. @p body is that of the chunk, or as much of it
    /// as has the largest size.
    static std::optional<WaveForm> read(std::span<const std::uint8_t> body);

    int tag = 0;  ///< In the extensible form that of the GUID; 0 where the GUID has none.
    int channels = 0;
    std::uint32_t rate = 0;
    std::uint32_t bytesASecond = 0;
    int bytesAFrame = 0;
    int bits = 0;
    int usedBits = 0;
};

}  // namespace sound
