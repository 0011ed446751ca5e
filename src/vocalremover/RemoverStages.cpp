#include "vocalremover/RemoverStages.h"

#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"
#include "support/WindowLife.h"
#include "support/dialogs/MsgBox.h"
#include "support/modActiveSoundErrDesc.h"
#include "vocalremover/FilesPanel.h"
#include "vocalremover/FilterPanel.h"
#include "vocalremover/RemoverParts.h"
#include "vocalremover/RemoverPlayers.h"
#include "vocalremover/RemoverState.h"
#include "vocalremover/RemoverStatus.h"
#include "vocalremover/TemporaryFiles.h"

bool loadSource(const RemoverParts& parts)
{
    parts.Player.CloseSound(SourcePlayer);
    parts.Player.CloseSound(ResultPlayer);
    if (parts.Player.GetPlayerStatus(SourcePlayer) == PlayerEngine::Playing)
        parts.Player.StopSound(SourcePlayer);
    if (parts.Player.LoadSoundForExport(SourcePlayer, parts.files.inputFile()) == 0)
        return true;
    showFailure(parts, QStringLiteral("File could not be loaded."), parts.Player.LastError());
    return false;
}

bool exportSource(const RemoverParts& parts, const TemporaryFiles& files, int begin, int end)
{
    if (parts.Player.ExportSoundRange(SourcePlayer, files.in(), begin, end) == 0)
        return waitFor(parts.state.SourceExportDone);
    showFailure(parts, QStringLiteral("File could not be exported"), parts.Player.LastError());
    return false;
}

void setUpRemover(VocalRemoverEngine& remover, const RemoverParts& parts, const TemporaryFiles& files)
{
    remover.LowCutOff(parts.filter.cutOffLow());
    remover.HighCutOff(parts.filter.cutOffHigh());
    remover.InputFile(files.in());
    remover.OutputFile(files.out());
}

bool removeVocals(VocalRemoverEngine& remover, const RemoverParts& parts)
{
    remover.RemoveVocals();
    if (parts.life.isClosed())
        return false;
    parts.status.showPercent(0);
    return true;
}

void showFailure(const RemoverParts& parts, const QString& action, int lastError)
{
    parts.msgBox.show(action + u'\n' + modActiveSoundErrDesc::description(lastError), MsgBox::Look::Critical);
}
