#pragma once

#include <QObject>
#include <QString>

class EditorEngine;
class PlayerEngine;
class QLabel;
class VocalRemoverEngine;
class XP_ProgressBar;

/// The lowest rows of a vocal remover's window: how far the engines are, and what plays.
///
/// A vocal remover does its whole job in one call, so each of its percentages lets the event loop turn once.
class RemoverStatus : public QObject
{
    Q_OBJECT

public:
    RemoverStatus(PlayerEngine& Player, EditorEngine& Editor, QLabel& lblStatus, XP_ProgressBar& prgPercentDone);

    /// Tells of this remover as well.
    void listenTo(VocalRemoverEngine& remover);

    void tell(const QString& text);
    void showPercent(int percent);

private:
    void tellPercent(const QString& job, int percent);
    void Player_ConversionPercent(short player, short percent);
    void Player_SoundPlaying(short player);
    void tellIdle();
    void VocalRemover_ProcessPercent(short percent);
    void Editor_LoadPercent(short percent);
    void Editor_EffectPercent(short effect, short percent);
    void Editor_ExportPercent(short percent);

    QLabel& lblStatus;
    XP_ProgressBar& prgPercentDone;
};
