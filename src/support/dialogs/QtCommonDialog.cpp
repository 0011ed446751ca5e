#include "support/dialogs/QtCommonDialog.h"

#include "support/dialogs/DialogOwner.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString folderOf(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

QString firstExisting(const QStringList& folders)
{
    for (const QString& folder : folders) {
        if (!folder.isEmpty() && QDir(folder).exists())
            return folder;
    }
    return {};
}

/// The number, from 1, of the chosen filter; 0 where none is. A dialog that hides patterns names it without them.
int filterNumber(const QStringList& filters, const QString& chosen)
{
    for (qsizetype i = 0; i < filters.size(); ++i) {
        if (filters[i] == chosen || filters[i].left(filters[i].lastIndexOf(u'(')).trimmed() == chosen.trimmed())
            return static_cast<int>(i) + 1;
    }
    return 0;
}

}  // namespace

QStringList QtCommonDialog::nameFilters(const QString& filter)
{
    QStringList filters;
    const QStringList parts = filter.split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[i + 1].split(u';', Qt::SkipEmptyParts)) {
            patterns << pattern;
            if (pattern.toUpper() != pattern)
                patterns << pattern.toUpper();
        }
        filters << parts[i].trimmed() + QStringLiteral(" (") + patterns.join(u' ') + u')';
    }
    return filters;
}

QString QtCommonDialog::joinedPaths(const QStringList& paths)
{
    if (paths.size() < 2)
        return paths.value(0);
    QString folder = folderOf(paths.first());
    for (const QString& path : paths) {
        if (folderOf(path) != folder)
            folder = QDir::rootPath();
    }
    QString joined = folder;
    for (const QString& path : paths)
        joined += QChar::Null + path.mid(folder.endsWith(u'/') ? folder.size() : folder.size() + 1);
    return joined;
}

FileDialogAnswer QtCommonDialog::ShowOpen(const FileDialogSetup& setup)
{
    return ask(setup, Purpose::Open);
}

FileDialogAnswer QtCommonDialog::ShowSave(const FileDialogSetup& setup)
{
    return ask(setup, Purpose::Save);
}

FileDialogAnswer QtCommonDialog::ask(const FileDialogSetup& setup, Purpose purpose)
{
    QFileDialog dialog(dialogOwner(), setup.title);
    dialog.setAcceptMode(purpose == Purpose::Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    const bool several = setup.flags & FileDialogSetup::AllowMultiselect;
    dialog.setFileMode(purpose == Purpose::Save ? QFileDialog::AnyFile
                       : several                ? QFileDialog::ExistingFiles
                                                : QFileDialog::ExistingFile);
    const QStringList filters = nameFilters(setup.filter);
    dialog.setNameFilters(filters);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    if (setup.filterIndex > 0)
        dialog.selectNameFilter(filters.value(setup.filterIndex - 1));
    dialog.setDirectory(
        firstExisting({setup.initialFolder, lastFolder,
                       QStandardPaths::writableLocation(QStandardPaths::MusicLocation), QDir::homePath()}));
    if (!setup.fileName.isEmpty())
        dialog.selectFile(setup.fileName);

    FileDialogAnswer answer;
    answer.fileName = setup.fileName;
    answer.filterIndex = setup.filterIndex;
    if (dialog.exec() != QDialog::Accepted) {
        answer.error = setup.cancelIsError ? FileDialogAnswer::cancelled : 0;
        return answer;
    }
    const QStringList paths = dialog.selectedFiles();
    answer.fileName = joinedPaths(paths);
    if (paths.size() == 1)
        answer.fileTitle = QFileInfo(paths.first()).fileName();
    answer.filterIndex = filterNumber(filters, dialog.selectedNameFilter());
    lastFolder = folderOf(paths.value(0));
    return answer;
}
