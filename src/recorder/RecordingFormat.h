#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// A list of choices and which of them is the usual one.
struct Choices
{
    QStringList texts;
    int usual = 0;
};

/// One of the formats that the recorder offers.
struct RecordingFormat
{
    /// What decides which settings the engine is given.
    enum class Codec
    {
        Wav,
        Mp3,
        Ogg,
        Wma,
        Aac,
        Mp4,
    };

    Codec codec;

    /// How the list names it.
    QString name;

    /// As RecorderEncodeFormats counts.
    int number;

    /// What the bit rates are called: compressed by quality, a format has none.
    QString bitrateCaption;
    Choices bitrates;
    Choices sampleRates;
    Choices channels;

    /// Of the files that are named automatically, without its dot.
    QString extension;
};

/// All of them, in the order of the list and of the save dialog's filter.
const QList<RecordingFormat>& recordingFormats();

/// The format of this name; null where there is none.
const RecordingFormat* recordingFormat(const QString& name);
