#include "support/TimeText.h"

#include "support/Numbers.h"

QString FormatPosition(int milliseconds)
{
    const int minutes = milliseconds / 60000;
    const int seconds = milliseconds % 60000 / 1000;
    const int hundredths = milliseconds % 1000 / 10;
    const auto group = [](int number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    return group(minutes) + u':' + group(seconds) + u':' + group(hundredths);
}

int ParseTimeText(const QString& text)
{
    const QStringView view(text);
    return leadingNumber(view.left(2)) * 60000 + leadingNumber(view.mid(3, 2)) * 1000 +
           leadingNumber(view.right(2)) * 10;
}
