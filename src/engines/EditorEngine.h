#pragma once

#include <QObject>
#include <QString>

class EncodeFormats;

/// Changes the sound that an editor has loaded. Reached through EditorEngine::Effects().
///
/// The stretch runs from @p start to @p end in milliseconds; 0 and -1 are the whole sound. Each call starts a job:
/// EditorEngine::EffectPercent with the effect's number, then EffectDone.
class EditorEffects
{
public:
    /// The effect numbers of the editor's events.
    enum Effect : short
    {
        Tempo = 10,
        Speed = 11,
        Pitch = 12,
    };

    virtual ~EditorEffects();

    /// Percent of change, 0 is unchanged.
    virtual int ApplyTempo(int start, int end, float percent) = 0;
    virtual int ApplyRate(int start, int end, float percent) = 0;

    /// Semitones with hundredths.
    virtual int ApplyPitch(int start, int end, const float& semitones) = 0;
};

/// The offline editor: loads one whole sound, applies effects to it and exports it to a file.
///
/// InitEditor comes first. Loading, effects and export are jobs, one at a time: the call returns at once with 0
/// when the job was started, percent events follow, and one done event ends it. Calls and signals belong to the
/// main thread.
class EditorEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~EditorEngine() override;

    /// @p owner is the native handle of the window that the editor belongs to.
    virtual void InitEditor(int owner) = 0;

    /// LoadPercent, then LoadDone.
    virtual int LoadSound(const QString& path) = 0;

    /// Writes the sound at @p frequency hertz with @p channels channels, from @p start to @p end milliseconds (-1
    /// is the end of the sound), in the format last chosen. @p zero is always 0. ExportPercent, then ExportDone.
    virtual int ExportToFile(int frequency, int channels, int zero, int start, int end, const QString& path) = 0;

    /// Why the last operation failed, 0 where it did not.
    virtual int LastError() const = 0;

    virtual EditorEffects& Effects() = 0;
    virtual ::EncodeFormats& EncodeFormats() = 0;

signals:
    void LoadPercent(short percent);
    void LoadDone(int result);
    void EffectPercent(short effect, short percent);
    void EffectDone(short effect, int result);
    void ExportPercent(short percent);
    void ExportDone(int result);
};
