#include "support/dialogs/QtBrowseForFolder.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

QString QtBrowseForFolder::nearestFolder(const QString& path)
{
    if (path.isEmpty())
        return QDir::homePath();
    QString folder = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    while (!QFileInfo(folder).isDir() && folder != QDir::rootPath())
        folder = QFileInfo(folder).path();
    return folder;
}

QString QtBrowseForFolder::BrowseForFolder(QWidget& owner, const QString& startFolder)
{
    return QFileDialog::getExistingDirectory(&owner, QString::fromLatin1(prompt), nearestFolder(startFolder));
}
