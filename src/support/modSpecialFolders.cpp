#include "support/modSpecialFolders.h"

#include <QCoreApplication>
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

QString modSpecialFolders::helpFolder()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return program.exists(QStringLiteral("manual")) ? program.path()
                                                    : QDir::cleanPath(program.filePath("../share/larkspin"));
}
