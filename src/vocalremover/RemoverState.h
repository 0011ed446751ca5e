#pragma once

#include "support/DoneFlag.h"

/// What a vocal remover's window knows of its jobs. A run and a preview share it.
struct RemoverState
{
    /// True from the start of a run to its end. Only the start of a run looks at it: a preview neither asks for it
    /// nor sets it.
    bool ProcessBusy = false;

    // Set by the engines' done events.
    DoneFlag SourceExportDone;  ///< Only by a success.
    DoneFlag EditorLoadDone;
    DoneFlag EffectFinished;
    DoneFlag EditorExportDone;
};

/// Waits for a job that has just been started; false when the window was closed meanwhile.
///
/// The flag is cleared before and behind the wait. So where two routines wait for the same flag the inner one takes
/// the event, and the outer one waits for another.
inline bool waitFor(DoneFlag& flag)
{
    flag.clear();
    const bool done = flag.wait();
    flag.clear();
    return done;
}
