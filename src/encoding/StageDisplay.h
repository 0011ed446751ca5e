#pragma once

#include <QString>

enum class DiscStage : int;

/// What the window shows of a stage of a write.
struct StageDisplay
{
    DiscStage stage;
    const char* text;
    bool endsInTrackNumber;
    bool showsTrackPercent;
    bool showsTotalPercent;

    QString status(int track) const;

    /// Null for a stage that the window passes over.
    static const StageDisplay* of(DiscStage stage);
};
