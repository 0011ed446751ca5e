#pragma once

#include <QString>

/// What a file dialog is set up with.
struct FileDialogSetup
{
    /// Flags that may be combined.
    enum Flag : unsigned
    {
        HideReadOnly = 0x4,
        AllowMultiselect = 0x200,
        NoLongNames = 0x40000,
        Explorer = 0x80000,
    };

    QString title;

    /// The file that is chosen first. Of several, in the form of an answer, only their folder counts.
    QString fileName;

    /// Descriptions and their patterns in turn, each ended by a bar: "WAV sounds (*.wav)|*.wav|". A description may
    /// have several patterns, with semicolons between them. Upper and lower case are the same.
    QString filter;

    /// The filter that is chosen first, from 1. 0 is the first one as well.
    int filterIndex = 0;

    /// Where the dialog starts; empty, or a folder that is not there, for where it was left the last time.
    QString initialFolder;

    /// Only AllowMultiselect makes a difference on this platform.
    unsigned flags = 0;

    /// The longest answer that a caller with a buffer would take, in characters; this platform has no such bound.
    int maxFileSize = 0;

    /// Reports a cancel as an error instead of handing back the file name of the setup.
    bool cancelIsError = false;

    /// A name to be written is answered as it was typed, also without a suffix.
    bool keepsTypedName = false;

    bool operator==(const FileDialogSetup&) const = default;
};

/// What the user answered.
struct FileDialogAnswer
{
    static constexpr int cancelled = 32755;

    /// 0, or `cancelled` where the setup asked for it.
    int error = 0;

    /// The full path. Where several files were picked: their folder, then each file's name, with a zero character
    /// between them. That folder is the process's current one then, so that the names can be opened as they are.
    QString fileName;

    /// The name of the one file without its folder; empty for several.
    QString fileTitle;

    /// The filter that was chosen last, from 1.
    int filterIndex = 0;

    bool operator==(const FileDialogAnswer&) const = default;
};

/// Asks the user for a file to open or to write. Returns when the dialog is closed.
class CommonDialog
{
public:
    virtual ~CommonDialog();

    virtual FileDialogAnswer ShowOpen(const FileDialogSetup& setup) = 0;

    /// A name that is typed without a suffix gets that of the chosen filter, where it has one, unless the setup
    /// wants it kept. A file that is there already is answered only once the user has agreed to its being replaced.
    virtual FileDialogAnswer ShowSave(const FileDialogSetup& setup) = 0;
};
