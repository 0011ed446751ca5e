#pragma once

#include "support/dialogs/CommonDialog.h"

#include <QStringList>

/// The file dialog of the user's desktop. It remembers the folder where it was left, and starts in the user's
/// music.
class QtCommonDialog : public CommonDialog
{
public:
    FileDialogAnswer ShowOpen(const FileDialogSetup& setup) override;
    FileDialogAnswer ShowSave(const FileDialogSetup& setup) override;

    /// A filter with bars, in the form that Qt's dialog reads: each pattern also in upper case, since some desktops
    /// compare file names to the letter.
    static QStringList nameFilters(const QString& filter);

    /// The picked files in the form of FileDialogAnswer::fileName. Files from different folders are told from the
    /// root folder.
    static QString joinedPaths(const QStringList& paths);

private:
    enum class Purpose
    {
        Open,
        Save,
    };

    FileDialogAnswer ask(const FileDialogSetup& setup, Purpose purpose);

    QString lastFolder;
};
