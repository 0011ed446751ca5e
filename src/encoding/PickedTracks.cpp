#include "encoding/PickedTracks.h"

QStringList pickedTracks(const QString& fileName)
{
    constexpr int folderAndTwoNames = 3;
    QStringList parts = fileName.split(QChar::Null);
    if (parts.size() < folderAndTwoNames)
        return {fileName};
    parts.removeFirst();
    return parts;
}

bool isAllowedOnDisc(const QString& file)
{
    const QString ending = file.right(3).toUpper();
    return ending == QLatin1String("WAV") || ending == QLatin1String("MP3") || ending == QLatin1String("WMA");
}

QString trackFilter(bool noMp3)
{
    return noMp3 ? QStringLiteral(
                       "All supported audio formats|*.wav;*.wma|"
                       "WAV files (*.wav)|*.wav|"
                       "Windows Media Audio files (*.wma)|*.wma")
                 : QStringLiteral(
                       "All supported audio formats|*.wav;*.mp3;*.wma|"
                       "WAV files (*.wav)|*.wav|"
                       "MP3 files (*.mp3)|*.mp3|"
                       "Windows Media Audio files (*.wma)|*.wma");
}
