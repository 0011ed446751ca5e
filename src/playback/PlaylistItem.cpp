#include "playback/PlaylistItem.h"

#include <QStringList>

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

// Letters beyond the first plane of Unicode are two units long and must not be cut apart.
QString withoutLastFourCharacters(const QString& fileName)
{
    QStringView rest(fileName);
    for (int i = 0; i < 4 && !rest.isEmpty(); ++i) {
        const bool twoUnits =
            rest.size() > 1 && rest.back().isLowSurrogate() && rest.chopped(1).back().isHighSurrogate();
        rest.chop(twoUnits ? 2 : 1);
    }
    return rest.toString();
}

}  // namespace

QString playlistLabel(const QString& fileName)
{
    return withoutLastFourCharacters(fileName) + typeSuffix(fileName);
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
