#include "engines/DiscLength.h"

#include <algorithm>

namespace {

constexpr qint64 perSecond = 75;
constexpr qint64 perMinute = 60 * perSecond;

}  // namespace

void DiscLength::SetLength(qint64 sectors)
{
    length = std::max<qint64>(sectors, 0);
}

QString DiscLength::LengthText() const
{
    return QStringLiteral("%1:%2:%3")
        .arg(length / perMinute, 2, 10, QLatin1Char('0'))
        .arg(length % perMinute / perSecond, 2, 10, QLatin1Char('0'))
        .arg(length % perSecond, 2, 10, QLatin1Char('0'));
}
