#pragma once

#include <mutex>

namespace sound {

/// To be held by whoever opens an encoder of LAME, also by way of libavcodec.
///
/// LAME has tables in common for all encoders of a program. Each opening writes them all over, always with the same
/// numbers, and LAME has no lock of its own: with this one no two openings write at once. It does not keep apart an
/// opening and the encoders that are at work meanwhile. They only read, and find what was there before or the same
/// once more.
std::mutex& lameOpening();

}  // namespace sound
