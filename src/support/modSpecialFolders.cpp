#include "support/modSpecialFolders.h"

#include <QDir>
#include <QStandardPaths>

QString modSpecialFolders::documentsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString modSpecialFolders::recordingsFolder()
{
    const QString documents = documentsFolder();
    const QString recordings = QStringLiteral("Larkspin Recordings/");
    return documents.isEmpty() ? recordings : documents + u'/' + recordings;
}

QString modSpecialFolders::applicationFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    return folder;
}
