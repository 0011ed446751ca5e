#pragma once

#include "vocalremover/RemoverParts.h"

class TemporaryFiles;

/// Removes the vocals from the whole source: the player writes it as WAV, a vocal remover makes another WAV of
/// that, and the editor brings it to its gain and exports it to the output file.
///
/// Nothing is locked meanwhile. Each value is read when its step comes, the format is the one that was selected
/// last. Main thread only.
class ProcessAudio
{
public:
    explicit ProcessAudio(const RemoverParts& parts);

    /// Returns when the output file is written, or when that has failed and the user knows. Does nothing while a
    /// run is under way, nor for a source that is not there. Events go on meanwhile; when the window is closed it
    /// returns at once, and the job under way has ended with its engine.
    void cmdProcess_Click();

private:
    // The steps of a run. False where the rest is to be given up.
    bool exportWholeSource(const TemporaryFiles& files);
    bool removeVocalsAtTheirPlace(const TemporaryFiles& files);
    bool prepareExport(const TemporaryFiles& files);
    bool applyGain();
    bool exportResult();
    void finish(const TemporaryFiles& files);

    const RemoverParts parts;
};
