#include "support/modFileExists.h"

#include <QDir>
#include <QFileInfo>

bool modFileExists::FileExists(const QString& path, bool foldersToo)
{
    if (!QDir::isAbsolutePath(path) || path.startsWith(u':'))
        return false;
    const QFileInfo entry(path);
    return entry.isFile() || (foldersToo && entry.isDir());
}
