#pragma once

#include <QString>

struct DiscWriteError;

/// What a message box says of a write that failed.
QString FormatWriteError(const DiscWriteError& error);

/// A track's number, with two digits at least.
QString trackNumberText(int number);

/// A writing speed with one digit behind the point, a half rounded up, and none before it where the speed is below
/// one: "8.0x", ".5x".
QString writeSpeedText(double rate);

/// What a track's format is called. A number that has no format keeps the name of the row @p above.
QString trackFormatText(int format, const QString& above);
