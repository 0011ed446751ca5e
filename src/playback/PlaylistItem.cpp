#include "playback/PlaylistItem.h"

#include <QStringList>
#include <algorithm>

namespace {

struct Ending
{
    QLatin1StringView ending;
    QLatin1StringView suffix;
};

using namespace Qt::Literals::StringLiterals;

constexpr Ending endings[] = {
    {"cda"_L1, " (audio track)"_L1}, {"mp3"_L1, " (MP3 file)"_L1},        {"mp4"_L1, " (MP4 file)"_L1},
    {"aac"_L1, " (AAC file)"_L1},    {"m4a"_L1, " (ALAC file)"_L1},       {"wav"_L1, " (Wav file)"_L1},
    {"flac"_L1, " (FLAC file)"_L1},  {"ogg"_L1, " (Ogg Vorbis file)"_L1}, {"wma"_L1, " (Windows Media Audio)"_L1},
    {"aif"_L1, " (Aif - Mac)"_L1},
};

QString typeSuffix(const QString& fileName)
{
    for (const Ending& known : endings) {
        if (fileName.endsWith(known.ending, Qt::CaseInsensitive))
            return known.suffix;
    }
    return " (unknown audio format)"_L1;
}

}  // namespace

QString playlistLabel(const QString& fileName)
{
    return fileName.chopped(std::min<qsizetype>(4, fileName.size())) + typeSuffix(fileName);
}

QVector<PlaylistItem> playlistItems(const QString& fileName, const QString& fileTitle)
{
    const QStringList parts = fileName.split(QChar::Null);
    if (parts.size() < 3)
        return {{playlistLabel(fileTitle), fileName}};

    const QString folder = parts.first().endsWith(u'/') ? parts.first() : parts.first() + u'/';
    QVector<PlaylistItem> items;
    for (const QString& name : parts.mid(1))
        items.append({playlistLabel(name), folder + name});
    return items;
}
