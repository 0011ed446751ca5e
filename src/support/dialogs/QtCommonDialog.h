#pragma once

#include "support/dialogs/CommonDialog.h"

#include <QStringList>

class QFileDialog;

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

    /// The path of a file to be written; where its name has no suffix, with that of the first of @p patterns. What
    /// stands behind the last dot is not always one: "Op. 12", "take 1.5".
    static QString withSuffix(const QString& path, const QString& patterns);

private:
    enum class Purpose
    {
        Open,
        Save,
    };

    FileDialogAnswer ask(const FileDialogSetup& setup, Purpose purpose);
    void prepare(QFileDialog& dialog, const FileDialogSetup& setup, Purpose purpose) const;

    QString lastFolder;
};
