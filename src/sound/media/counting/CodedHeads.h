#pragma once

#include "sound/media/counting/FrameWalk.h"

namespace sound {

/// MPEG audio of all three layers and both lower sampling rates; not of free bit rate, whose heads tell no size.
std::optional<CodedFrame> readMpegHead(std::span<const std::uint8_t> bytes);

/// AAC in ADTS.
std::optional<CodedFrame> readAdtsHead(std::span<const std::uint8_t> bytes);

/// AC-3, not its enhanced successor.
std::optional<CodedFrame> readAc3Head(std::span<const std::uint8_t> bytes);

}  // namespace sound
