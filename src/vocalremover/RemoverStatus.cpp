#include "vocalremover/RemoverStatus.h"

#include "engines/EditorEngine.h"
#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"
#include "support/controls/XP_ProgressBar.h"
#include "vocalremover/RemoverPlayers.h"

#include <QCoreApplication>
#include <QLabel>

RemoverStatus::RemoverStatus(PlayerEngine& Player, EditorEngine& Editor, QLabel& lblStatus,
                             XP_ProgressBar& prgPercentDone)
    : lblStatus(lblStatus)
    , prgPercentDone(prgPercentDone)
{
    connect(&Player, &PlayerEngine::ConversionPercent, this, &RemoverStatus::Player_ConversionPercent);
    connect(&Player, &PlayerEngine::SoundPlaying, this, &RemoverStatus::Player_SoundPlaying);
    connect(&Player, &PlayerEngine::SoundFinished, this, &RemoverStatus::tellIdle);
    connect(&Player, &PlayerEngine::SoundStopped, this, &RemoverStatus::tellIdle);
    connect(&Editor, &EditorEngine::LoadPercent, this, &RemoverStatus::Editor_LoadPercent);
    connect(&Editor, &EditorEngine::EffectPercent, this, &RemoverStatus::Editor_EffectPercent);
    connect(&Editor, &EditorEngine::ExportPercent, this, &RemoverStatus::Editor_ExportPercent);
}

void RemoverStatus::listenTo(VocalRemoverEngine& remover)
{
    connect(&remover, &VocalRemoverEngine::ProcessPercent, this, &RemoverStatus::VocalRemover_ProcessPercent);
}

void RemoverStatus::tell(const QString& text)
{
    lblStatus.setText(text);
}

void RemoverStatus::showPercent(int percent)
{
    prgPercentDone.setValue(percent);
}

void RemoverStatus::tellPercent(const QString& job, int percent)
{
    showPercent(percent);
    tell(QStringLiteral("%1%2%").arg(job).arg(percent));
}

void RemoverStatus::Player_ConversionPercent(short, short percent)
{
    tellPercent(QStringLiteral("Status : Loading source audio: "), percent);
}

void RemoverStatus::Player_SoundPlaying(short player)
{
    if (player == SourcePlayer)
        tell(QStringLiteral("Status : Playing source audio "));
    else if (player == ResultPlayer)
        tell(QStringLiteral("Status : Playing modified audio "));
}

void RemoverStatus::tellIdle()
{
    tell(QStringLiteral("Status : Idle"));
}

void RemoverStatus::VocalRemover_ProcessPercent(short percent)
{
    tellPercent(QStringLiteral("Status : Processing : "), percent);
    QCoreApplication::processEvents();
}

void RemoverStatus::Editor_LoadPercent(short percent)
{
    tellPercent(QStringLiteral("Status : Preparing export : "), percent);
}

void RemoverStatus::Editor_EffectPercent(short, short percent)
{
    tellPercent(QStringLiteral("Status : Applying gain : "), percent);
}

void RemoverStatus::Editor_ExportPercent(short percent)
{
    tellPercent(QStringLiteral("Status : Exporting : "), percent);
}

#include "moc_RemoverStatus.cpp"
