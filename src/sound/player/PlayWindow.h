#pragma once

#include "sound/units/Frames.h"

namespace sound {

/// The stretch of a sound that plays: once, or over and over.
///
/// Positions in a repeating window run on without end, as if the passes stood one behind the other; foldedIn()
/// tells which place of the sound such a running position is. Before the window's begin the two are the same.
struct PlayWindow
{
    FramePosition begin;
    FramePosition end;
    bool repeats = false;

    bool operator==(const PlayWindow&) const = default;

    FrameCount length() const { return end - begin; }
};

/// The whole of a sound, once.
PlayWindow wholeOf(FrameCount length);

FramePosition foldedIn(const PlayWindow& window, FramePosition running);
double foldedIn(const PlayWindow& window, double running);

}  // namespace sound
