#pragma once

#include <fcntl.h>
#include <unistd.h>
#include <QFile>
#include <QString>

namespace sound::test {

/// Whether files in this folder can be without a name. Not every file system knows such files.
inline bool knowsNamelessFiles(const QString& folder)
{
    const int file = ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    if (file >= 0)
        ::close(file);
    return file >= 0;
}

}  // namespace sound::test
