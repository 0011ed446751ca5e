#include "vocalremover/PlayPreview.h"

#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"
#include "support/WindowLife.h"
#include "support/modFileExists.h"
#include "vocalremover/FilesPanel.h"
#include "vocalremover/PreviewPanel.h"
#include "vocalremover/RemoverPlayers.h"
#include "vocalremover/RemoverStages.h"
#include "vocalremover/RemoverStatus.h"
#include "vocalremover/TemporaryFiles.h"

PlayPreview::PlayPreview(const RemoverParts& parts)
    : parts(parts)
{
}

void PlayPreview::cmdConvertPlayPreview_Click()
{
    if (!modFileExists::FileExists(parts.files.inputFile()))
        return;
    const WindowLife::Routine routine(parts.life);
    const TemporaryFiles files;
    if (!loadSource(parts))
        return;
    const PreviewPanel::Stretch stretch = parts.preview.stretch();
    if (!exportSource(parts, files, stretch.begin, stretch.end))
        return;
    setUpRemover(parts.VocalRemoverExtended, parts, files);
    if (!removeVocals(parts.VocalRemoverExtended, parts))
        return;
    if (parts.Player.LoadSoundForExport(ResultPlayer, files.out()) != 0) {
        showFailure(parts, QStringLiteral("Result could not be loaded."), parts.Player.LastError());
        return;
    }
    parts.Player.PlaySound(ResultPlayer);
    parts.status.tell(QStringLiteral("Status : Playing modified audio"));
}

void PlayPreview::cmdConvertStopPreview_Click()
{
    parts.Player.StopSound(SourcePlayer);
    parts.Player.StopSound(ResultPlayer);
}

void PlayPreview::cmdPlayOriginal_Click()
{
    parts.Player.LoadSoundForExport(SourcePlayer, parts.files.inputFile());
    if (parts.Player.GetPlayerStatus(ResultPlayer) == PlayerEngine::Playing)
        parts.Player.StopSound(ResultPlayer);
    const PreviewPanel::Stretch stretch = parts.preview.stretch();
    parts.Player.PlaySoundSegment(SourcePlayer, stretch.begin, stretch.end);
}
