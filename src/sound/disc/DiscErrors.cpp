#include "sound/disc/DiscErrors.h"

#include <sys/stat.h>
#include <unistd.h>
#include <QFile>
#include <cerrno>
#include <system_error>

namespace sound {
namespace {

DiscWriteError fileErrorOf(int kind, const QString& file, int code, const QString& description)
{
    DiscWriteError error;
    error.kind = kind;
    error.description = description;
    error.fileError = {code, description, file};
    return error;
}

}  // namespace

QString systemWords(int systemCode)
{
    return QString::fromStdString(std::generic_category().message(systemCode));
}

DiscWriteError sourceFileError(const QString& file, int code, const QString& description)
{
    return fileErrorOf(DiscWriteError::sourceFile, file, code, description);
}

DiscWriteError unreadableSourceError(const QString& file)
{
    struct stat status = {};
    const QByteArray name = QFile::encodeName(file);
    if (::stat(name.constData(), &status) != 0 || ::access(name.constData(), R_OK) != 0)
        return sourceFileError(file, errno, systemWords(errno));
    return sourceFileError(file, code(EngineError::InvalidSoundFile),
                           QStringLiteral("The file is no sound any more"));
}

DiscWriteError outputFileError(const QString& file, int systemCode)
{
    const int told = systemCode != 0 ? systemCode : EIO;
    return fileErrorOf(DiscWriteError::outputFile, file, told, systemWords(told));
}

DiscWriteError systemError(int systemCode)
{
    DiscWriteError error;
    error.kind = DiscWriteError::system;
    error.description = systemWords(systemCode);
    error.systemCode = systemCode;
    return error;
}

}  // namespace sound
