#include "recorder/RecordingNames.h"

#include "recorder/AudioFormatPanel.h"

#include <QLocale>
#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype endingLength = 4;

/// A moment in this form, and behind it its seconds rounded down to tens. The names of months are the same in all
/// languages: files are sorted and looked for by them.
QString stamp(const QDateTime& moment, const QString& form)
{
    return QLocale::c().toString(moment, form) + QString::number(moment.time().second() / 10) + u'0';
}

}  // namespace

RecordingNames::RecordingNames(const AudioFormatPanel& format, std::function<QDateTime()> now)
    : format(format)
    , now(std::move(now))
{
}

void RecordingNames::setOutputFolder(const QString& wanted)
{
    folder = wanted.isEmpty() || wanted.endsWith(u'/') ? wanted : wanted + u'/';
}

QString RecordingNames::ComposeRecordingName() const
{
    if (!chosenFile.isEmpty())
        return chosenFile;
    return folder + QStringLiteral("Recording ") + stamp(now(), QStringLiteral("MMM-dd-yyyy hh-mm-")) + u'.' +
           format.extension();
}

QString RecordingNames::nextPartName() const
{
    if (chosenFile.isEmpty())
        return ComposeRecordingName();
    const qsizetype ending = std::min(endingLength, chosenFile.size());
    return chosenFile.chopped(ending) + stamp(now(), QStringLiteral("hh-mm-")) + chosenFile.right(ending);
}
