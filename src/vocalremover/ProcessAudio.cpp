#include "vocalremover/ProcessAudio.h"

#include "engines/EditorEngine.h"
#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"
#include "support/WindowLife.h"
#include "support/dialogs/MsgBox.h"
#include "support/modFileExists.h"
#include "vocalremover/FilesPanel.h"
#include "vocalremover/FilterPanel.h"
#include "vocalremover/RemoverPlayers.h"
#include "vocalremover/RemoverStages.h"
#include "vocalremover/RemoverState.h"
#include "vocalremover/RemoverStatus.h"
#include "vocalremover/TemporaryFiles.h"
#include "vocalremover/VocalPositionPanel.h"

namespace {

constexpr int beginOfSound = 0;
constexpr int endOfSound = -1;
constexpr int exportRate = 44100;
constexpr int exportChannels = 2;
constexpr int unchangedGain = 100;
constexpr int centre = 0;

}  // namespace

ProcessAudio::ProcessAudio(const RemoverParts& parts)
    : parts(parts)
{
}

void ProcessAudio::cmdProcess_Click()
{
    if (parts.state.ProcessBusy || !modFileExists::FileExists(parts.files.inputFile()))
        return;
    const WindowLife::Routine routine(parts.life);
    parts.state.ProcessBusy = true;
    const TemporaryFiles files;
    if (exportWholeSource(files) && removeVocalsAtTheirPlace(files) && prepareExport(files) && applyGain() &&
        exportResult())
        finish(files);
    parts.state.ProcessBusy = false;
}

bool ProcessAudio::exportWholeSource(const TemporaryFiles& files)
{
    if (!loadSource(parts))
        return false;
    const int end = parts.Player.GetDuration(SourcePlayer);
    if (!exportSource(parts, files, beginOfSound, end))
        return false;
    parts.Player.CloseSound(SourcePlayer);
    return true;
}

// The paths are taken from the one remover whichever has worked; the other keeps its own.
bool ProcessAudio::removeVocalsAtTheirPlace(const TemporaryFiles& files)
{
    const int pan = parts.vocalPosition.pan();
    bool goesOn = false;
    if (pan == centre) {
        setUpRemover(parts.VocalRemover, parts, files);
        goesOn = removeVocals(parts.VocalRemover, parts);
    } else {
        setUpRemover(parts.VocalRemoverExtended, parts, files);
        parts.VocalRemoverExtended.VocalPan(pan);
        goesOn = removeVocals(parts.VocalRemoverExtended, parts);
    }
    if (!goesOn)
        return false;
    parts.VocalRemover.InputFile({});
    parts.VocalRemover.OutputFile({});
    return true;
}

bool ProcessAudio::prepareExport(const TemporaryFiles& files)
{
    if (parts.Editor.LoadSound(files.out()) == 0)
        return waitFor(parts.state.EditorLoadDone);
    showFailure(parts, QStringLiteral("File could not be prepared for export."), parts.Editor.LastError());
    return false;
}

bool ProcessAudio::applyGain()
{
    const int gain = parts.filter.gain();
    if (gain == unchangedGain)
        return true;
    parts.Editor.Effects().ApplyGain(beginOfSound, endOfSound, 0, static_cast<float>(gain), 0);
    return waitFor(parts.state.EffectFinished);
}

bool ProcessAudio::exportResult()
{
    if (parts.Editor.ExportToFile(exportRate, exportChannels, 0, beginOfSound, endOfSound,
                                  parts.files.outputFile()) == 0)
        return waitFor(parts.state.EditorExportDone);
    showFailure(parts, QStringLiteral("Export to file failed."), parts.Editor.LastError());
    return false;
}

// Said whatever the result of the export is.
void ProcessAudio::finish(const TemporaryFiles& files)
{
    parts.Editor.CloseSound();
    files.cleanUp();
    parts.msgBox.show(QStringLiteral("Audio successfuly created."), MsgBox::Look::Information);
    parts.status.showPercent(0);
    parts.status.tell(QStringLiteral("Status : Idle"));
    parts.status.tell(QStringLiteral("Status: Idle"));
}
