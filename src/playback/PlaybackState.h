#pragma once

#include <QString>

/// What the main window knows of its playing beyond its controls. It owns the one instance; the panels share it.
///
/// Whether the player plays, is paused or stands is not kept here: the engine is asked at the moment of need.
struct PlaybackState
{
    /// Full path of the item last selected in the playlist, also of one that could not be loaded. Emptying the list
    /// leaves it.
    QString CurrentAudioPath;

    /// True from a play-loop command until the next plain play command or the next load: also while a loop is
    /// stopped or paused.
    bool PlayLoopActive = false;
};
