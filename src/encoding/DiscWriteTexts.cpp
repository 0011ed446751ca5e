#include "encoding/DiscWriteTexts.h"

#include "engines/AudioProject.h"
#include "engines/DiscWriteError.h"

#include <cmath>

namespace {

QString numbered(QLatin1StringView what, int number, const QString& description)
{
    return what + QStringLiteral(" (") + QString::number(number) + QStringLiteral(")   ") + description;
}

QString ofFile(QLatin1StringView what, const DiscFileError& error)
{
    return numbered(what, error.code, error.description) + QStringLiteral("\n'") + error.fileName + u'\'';
}

}  // namespace

QString FormatWriteError(const DiscWriteError& error)
{
    switch (error.kind) {
    case DiscWriteError::device:
        return numbered(QLatin1StringView("Device Error:"), error.deviceError.code, error.deviceError.description) +
               u'\n' + error.deviceError.maker + QStringLiteral(" - ") + error.deviceError.model;
    case DiscWriteError::outputFile:
        return ofFile(QLatin1StringView("Output File Error:"), error.fileError);
    case DiscWriteError::sourceFile:
        return ofFile(QLatin1StringView("Source File Error:"), error.fileError);
    case DiscWriteError::system:
        return numbered(QLatin1StringView("System Error:"), error.systemCode, error.description);
    default:
        return numbered(QLatin1StringView("Write Error:"), error.kind, error.description);
    }
}

QString trackNumberText(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QString writeSpeedText(double rate)
{
    QString text = QString::number(std::round(rate * 10.0) / 10.0, 'f', 1);
    if (text.startsWith(u'0'))
        text.remove(0, 1);
    return text + u'x';
}

QString trackFormatText(int format, const QString& above)
{
    switch (format) {
    case AudioProject::Wav:
        return QStringLiteral("WAV");
    case AudioProject::Ogg:
        return QStringLiteral("OGG");
    case AudioProject::Mp3:
        return QStringLiteral("MP3");
    case AudioProject::Wma:
        return QStringLiteral("WMA");
    default:
        return above;
    }
}
