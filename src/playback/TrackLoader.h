#pragma once

#include <QString>

class MsgBox;
class PlayerEngine;
class PositionPanel;
class TempoPitchPanel;
struct PlaybackState;

/// Brings the file that the playlist selected into the player. The sound stands at its beginning; the user plays
/// it.
class TrackLoader
{
public:
    TrackLoader(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                TempoPitchPanel& tempoPitch, MsgBox& msgBox);

    /// Loads PlaybackState::CurrentAudioPath. A file that is missing, or on a disc that is, is told to the user and
    /// changes nothing; one that the engine refuses is told with the engine's reason.
    void SetSoundTouchAudio();

private:
    PlayerEngine& SoundTouch;
    PlaybackState& state;
    PositionPanel& position;
    TempoPitchPanel& tempoPitch;
    MsgBox& msgBox;
};
