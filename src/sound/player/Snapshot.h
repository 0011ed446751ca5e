#pragma once

#include "sound/player/PlayWindow.h"

#include <chrono>
#include <cstdint>

namespace sound {

/// What is heard at one moment, published whole by the render thread.
struct Snapshot
{
    std::uint64_t serial = 0;  ///< The last command that the render thread has seen.
    std::uint64_t jump = 0;    ///< The jump that what is heard now came from.
    std::uint64_t sound = 0;   ///< The sound that the render thread holds; no other is used any more.
    double position = 0;       ///< The running source frame that is heard at `moment`.
    double framesASecond = 0;  ///< How fast that position moves on.
    PlayWindow window;         ///< In which it runs.
    bool ended = false;        ///< The window's end has been heard.
    std::chrono::steady_clock::time_point moment;
};

}  // namespace sound
