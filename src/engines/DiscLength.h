#pragma once

#include <QString>

/// A length on an audio disc, in sectors of a 75th of a second.
class DiscLength
{
public:
    /// What is below 0 counts as 0.
    void SetLength(qint64 sectors);
    qint64 GetLength() const { return length; }

    /// Minutes, seconds and sectors, as discs are measured: "03:25:17". Minutes may have more than two digits.
    QString LengthText() const;

private:
    qint64 length = 0;
};
