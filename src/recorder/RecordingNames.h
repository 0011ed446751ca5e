#pragma once

#include <QDateTime>
#include <QString>
#include <functional>

class AudioFormatPanel;

/// Names the files that are recorded: as the user chose, or by the time at which they begin.
///
/// Times are rounded down to ten seconds, so two files that begin within the same ten have the same name. A name is
/// made anew each time it is asked for.
class RecordingNames
{
public:
    /// The panel, which tells the ending of automatic names, outlives this.
    RecordingNames(const AudioFormatPanel& format, std::function<QDateTime()> now);

    /// Where automatically named files go. Ends with a separator, unless it is empty.
    const QString& outputFolder() const { return folder; }

    /// Adds the separator where it is missing.
    void setOutputFolder(const QString& wanted);

    /// The full name that the user chose, as it was typed; empty for automatic names.
    QString chosenFile;

    /// Of the next recording: the chosen one, or "Recording Mar-05-2007 14-03-30.mp3" in the output folder.
    QString ComposeRecordingName() const;

    /// Of the next part of a recording that is split: an automatic name, or the chosen one with the time before its
    /// ending, which is taken to be a dot and three letters. /tape.mp3 goes on as /tape14-03-30.mp3.
    QString nextPartName() const;

private:
    const AudioFormatPanel& format;
    const std::function<QDateTime()> now;
    QString folder;
};
