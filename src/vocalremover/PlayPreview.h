#pragma once

#include "vocalremover/RemoverParts.h"

/// Plays the chosen stretch of the source, as it is or without its vocals.
///
/// The result is made with the files of a run, and always by the extended remover, at the place that the last run
/// has given it: the dial has no effect on a preview, and neither has the gain. Nothing is locked: a preview can be
/// started in the middle of a run, and of another preview. Main thread only.
class PlayPreview
{
public:
    explicit PlayPreview(const RemoverParts& parts);

    /// Returns when the result plays, or when that has failed and the user knows. Does nothing for a source that is
    /// not there. Events go on meanwhile; when the window is closed it returns at once.
    void cmdConvertPlayPreview_Click();

    /// Stops the source as well as the result.
    void cmdConvertStopPreview_Click();

    /// A source that is not there, or is no sound, plays nothing.
    void cmdPlayOriginal_Click();

private:
    const RemoverParts parts;
};
