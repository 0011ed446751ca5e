#pragma once

#include <QString>

/// A position in milliseconds as minutes, seconds and hundredths, each with at least two digits: 01:01:50.
///
/// There are no hours: the minutes grow past two digits. The last digit of the milliseconds is dropped.
QString FormatPosition(int milliseconds);

/// The milliseconds of a text that FormatPosition made, exact up to 99 minutes.
///
/// The places are fixed: two characters of minutes, two of seconds from the fourth on, the last two are hundredths.
/// A longer text is read at these places all the same. An empty text is 0.
int ParseTimeText(const QString& text);
