#pragma once

#include <QObject>

class MsgBox;
class PlayerEngine;
class QLabel;

/// Tells in a label how far the player's conversion is, and in a box why it failed.
class ConversionStatus : public QObject
{
    Q_OBJECT

public:
    /// @p SoundTouch and @p lblWavExportStatus outlive this object.
    ConversionStatus(PlayerEngine& SoundTouch, QLabel& lblWavExportStatus, MsgBox& msgBox);

private:
    void SoundTouch_ConversionPercent(short player, short percent);
    void SoundTouch_ConversionDone(short player, int success);

    PlayerEngine& SoundTouch;
    QLabel& lblWavExportStatus;
    MsgBox& msgBox;
};
