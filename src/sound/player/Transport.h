#pragma once

#include "sound/player/PlayWindow.h"

#include <cstdint>

namespace sound {

class LoadedSound;

/// What a player is to do, published whole by the main thread at each command.
///
/// It says what shall be, not what to do next, so that nothing is lost when the render thread sees only the last of
/// several commands: a jump is told by its number, and holds until a later one.
struct Transport
{
    enum class Motion : std::uint8_t
    {
        Stopped,
        Paused,
        Playing,
    };

    std::uint64_t serial = 0;  ///< Counts the commands.
    std::uint64_t jump = 0;    ///< Counts the jumps: a new number means that playing goes on at `position`.
    FramePosition position;    ///< Where the last jump leads, a running position of `window`.
    PlayWindow window;
    Motion motion = Motion::Stopped;
    LoadedSound* sound = nullptr;  ///< Null: none.

    bool operator==(const Transport&) const = default;
};

}  // namespace sound
