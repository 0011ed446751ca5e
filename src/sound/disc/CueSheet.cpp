#include "sound/disc/CueSheet.h"

#include <algorithm>

namespace sound {
namespace {

QByteArray twoDigits(std::int64_t number)
{
    return QByteArray::number(static_cast<qlonglong>(number)).rightJustified(2, '0');
}

/// Minutes, seconds and sectors.
QByteArray timeOf(std::int64_t sector)
{
    return twoDigits(sector / (60 * Sectors::perSecond)) + ':' + twoDigits(sector / Sectors::perSecond % 60) + ':' +
           twoDigits(sector % Sectors::perSecond);
}

QByteArray quoted(const QString& text)
{
    constexpr qsizetype longest = 80;
    QString plain = text;
    plain.removeIf([](QChar character) { return character.category() == QChar::Other_Format; });
    for (QChar& character : plain) {
        if (character == u'"')
            character = u'\'';
        else if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
    plain = plain.simplified();
    if (plain.size() > longest)
        plain.truncate(plain.at(longest).isLowSurrogate() ? longest - 1 : longest);
    return '"' + plain.trimmed().toUtf8() + '"';
}

QByteArray textLines(const DiscTexts& texts, const QByteArray& indent)
{
    QByteArray lines;
    if (!texts.title.isEmpty())
        lines += indent + "TITLE " + quoted(texts.title) + "\n";
    if (!texts.performer.isEmpty())
        lines += indent + "PERFORMER " + quoted(texts.performer) + "\n";
    return lines;
}

}  // namespace

std::int64_t pauseBefore(const DiscPlan& plan, int track)
{
    return track == 0 || plan.discAtOnce ? 0 : Sectors::pause;
}

std::int64_t imageSectors(const DiscPlan& plan)
{
    std::int64_t sectors = 0;
    int number = 0;
    for (const DiscPlan::Track& track : plan.tracks)
        sectors += pauseBefore(plan, number++) + track.sectors;
    return sectors;
}

QByteArray cueSheet(const DiscPlan& plan, const QString& image)
{
    QByteArray sheet = textLines(plan.texts, {}) + "FILE " + quoted(image) + " BINARY\n";
    std::int64_t sector = 0;
    int number = 0;
    for (const DiscPlan::Track& track : plan.tracks) {
        const std::int64_t pause = pauseBefore(plan, number++);
        sheet += "  TRACK " + twoDigits(number) + " AUDIO\n" + textLines(track.texts, "    ");
        if (pause > 0)
            sheet += "    INDEX 00 " + timeOf(sector) + "\n";
        sheet += "    INDEX 01 " + timeOf(sector + pause) + "\n";
        sector += pause + track.sectors;
    }
    return sheet;
}

}  // namespace sound
