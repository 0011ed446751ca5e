#include "playback/TrackLoader.h"

#include "engines/PlayerEngine.h"
#include "playback/PlaybackState.h"
#include "playback/PositionPanel.h"
#include "playback/TempoPitchPanel.h"
#include "support/dialogs/MsgBox.h"
#include "support/modActiveSoundErrDesc.h"
#include "support/modFileExists.h"

TrackLoader::TrackLoader(PlayerEngine& SoundTouch, PlaybackState& state, PositionPanel& position,
                         TempoPitchPanel& tempoPitch, MsgBox& msgBox)
    : SoundTouch(SoundTouch)
    , state(state)
    , position(position)
    , tempoPitch(tempoPitch)
    , msgBox(msgBox)
{
}

void TrackLoader::SetSoundTouchAudio()
{
    if (!modFileExists::FileExists(state.CurrentAudioPath)) {
        msgBox.show(QStringLiteral("File doesn't exist, or CD not presented."), MsgBox::Look::Exclamation);
        return;
    }
    state.PlayLoopActive = false;
    if (SoundTouch.LoadSound(0, state.CurrentAudioPath) == 0) {
        position.prepareForSound();
    } else {
        msgBox.show(QStringLiteral("File could not be loaded.\n") +
                        modActiveSoundErrDesc::description(SoundTouch.LastError()),
                    MsgBox::Look::Critical);
    }
    if (!tempoPitch.appliesToAllTracks())
        tempoPitch.resetForTrack();
}
