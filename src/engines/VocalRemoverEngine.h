#pragma once

#include <QObject>
#include <QString>

/// How RemoveVocals ended. What is wrong with a file is told by its first fault, in the order in which a reader of
/// the file meets them.
enum class VocalRemoval : short
{
    Done = 0,
    CannotOpenInput = 1,
    NotRiff = 2,
    NoWaveHeader = 3,
    NoChunkHeader = 4,
    NeitherPcmNorFloat = 5,
    NotStereo = 6,

    /// Samples of other than 8, 16, 24 or 32 bits.
    UnknownSampleSize = 7,

    /// A head that contradicts itself, or a rate that is no sound's.
    NotStandardWave = 8,

    /// A format chunk that is missing, is too short, or stands behind the data.
    NoFormHeader = 9,

    /// What was opened cannot be read to its end.
    CannotReadInput = 10,
    CannotWriteOutput = 11,
    GivenUp = 12,
};

/// Takes the voice in the centre of the stereo image out of a file.
///
/// The input is RIFF WAVE (RF64 beyond 4 GiB) in two channels of 8, 16, 24 or 32 bits PCM or of 32 bits float. The
/// output has the same form and rate, and as many frames. What lies outside the two cut-offs passes untouched. The
/// settings hold from one removal to the next.
///
/// Calls and signals belong to the main thread.
class VocalRemoverEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~VocalRemoverEngine() override;

    virtual void InputFile(const QString& path) = 0;
    virtual void OutputFile(const QString& path) = 0;

    /// Hertz.
    virtual void LowCutOff(int frequency) = 0;
    virtual void HighCutOff(int frequency) = 0;

    /// Does the whole job before it returns, with ProcessPercent at least every 30 ms meanwhile. The output file
    /// appears whole, in place of one of before; where the job fails there is none afterwards, also not the one of
    /// before: its reader must not take another sound for the result.
    ///
    /// A call in the middle of another one, out of a slot of ProcessPercent, is a job like any other; the outer one
    /// goes on behind it, with the settings that it was called with.
    virtual VocalRemoval RemoveVocals() = 0;

    /// From a slot of ProcessPercent: all removals under way return as soon as they can, as GivenUp. Does nothing
    /// while none runs.
    virtual void GiveUp() = 0;

signals:
    /// 0 to 100, out of RemoveVocals.
    void ProcessPercent(short percent);
};

/// Takes out a voice anywhere in the image.
class VocalRemoverExtendedEngine : public VocalRemoverEngine
{
    Q_OBJECT

public:
    using VocalRemoverEngine::VocalRemoverEngine;
    ~VocalRemoverExtendedEngine() override;

    /// -100 is the very left, 0 the centre, as at first, 100 the very right; between them at equal power.
    virtual void VocalPan(int pan) = 0;
};
