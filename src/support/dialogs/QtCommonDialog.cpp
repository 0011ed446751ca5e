#include "support/dialogs/QtCommonDialog.h"

#include "support/dialogs/DialogOwner.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <algorithm>

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

bool isSuffix(const QString& ending)
{
    return !ending.contains(u' ') && std::ranges::any_of(ending, [](QChar letter) { return letter.isLetter(); });
}

/// The patterns of a filter with bars that has this number, from 1; empty where there is none.
QString patternsOf(const QString& filter, int number)
{
    return number > 0 ? filter.split(u'|').value(2 * number - 1) : QString();
}

/// Whether the user agrees to the end of a file.
bool replaces(const QString& path)
{
    const QString question =
        QStringLiteral("There is a file named \"%1\" already. Replace it?").arg(QFileInfo(path).fileName());
    return QMessageBox::question(dialogOwner(), QApplication::applicationDisplayName(), question,
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
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

QString QtCommonDialog::withSuffix(const QString& path, const QString& patterns)
{
    const QString suffix = QFileInfo(patterns.section(u';', 0, 0)).suffix();
    if (isSuffix(QFileInfo(path).suffix()) || !isSuffix(suffix))
        return path;
    return path.endsWith(u'.') ? path + suffix : path + u'.' + suffix;
}

FileDialogAnswer QtCommonDialog::ShowOpen(const FileDialogSetup& setup)
{
    return ask(setup, Purpose::Open);
}

FileDialogAnswer QtCommonDialog::ShowSave(const FileDialogSetup& setup)
{
    return ask(setup, Purpose::Save);
}

void QtCommonDialog::prepare(QFileDialog& dialog, const FileDialogSetup& setup, Purpose purpose) const
{
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
    if (const QStringList parts = setup.fileName.split(QChar::Null); parts.size() > 1)
        dialog.setDirectory(firstExisting({parts.first(), dialog.directory().path()}));
    else if (!setup.fileName.isEmpty())
        dialog.selectFile(setup.fileName);
}

// Qt completes a name as well, but not every desktop's dialog then asks about the file that has the whole name.
FileDialogAnswer QtCommonDialog::ask(const FileDialogSetup& setup, Purpose purpose)
{
    QFileDialog dialog(dialogOwner(), setup.title);
    prepare(dialog, setup, purpose);
    while (dialog.exec() == QDialog::Accepted) {
        const QStringList paths = dialog.selectedFiles();
        FileDialogAnswer answer;
        answer.filterIndex = filterNumber(nameFilters(setup.filter), dialog.selectedNameFilter());
        answer.fileName = joinedPaths(paths);
        if (purpose == Purpose::Save && !setup.keepsTypedName) {
            const QString typed = answer.fileName;
            answer.fileName = withSuffix(typed, patternsOf(setup.filter, answer.filterIndex));
            if (answer.fileName != typed && QFileInfo::exists(answer.fileName) && !replaces(answer.fileName))
                continue;
        }
        if (paths.size() == 1)
            answer.fileTitle = QFileInfo(answer.fileName).fileName();
        lastFolder = folderOf(paths.value(0));
        if (paths.size() > 1)
            QDir::setCurrent(answer.fileName.section(QChar::Null, 0, 0));
        return answer;
    }
    FileDialogAnswer answer;
    answer.error = setup.cancelIsError ? FileDialogAnswer::cancelled : 0;
    answer.fileName = setup.fileName;
    answer.filterIndex = setup.filterIndex;
    return answer;
}
