#pragma once

#include <QObject>
#include <QString>

class EncodeFormats;

/// Changes the sound that an editor has loaded. Reached through EditorEngine::Effects().
///
/// The stretch runs from @p start to @p end in milliseconds; 0 and -1 are the whole sound. Each call starts a job
/// and returns 0: EditorEngine::EffectPercent with the effect's number, then EffectDone. A call that starts none
/// returns another number, with the reason in LastError; EffectDone comes all the same, for its caller waits for
/// it.
class EditorEffects
{
public:
    /// The effect numbers of the editor's events.
    enum Effect : short
    {
        Tempo = 10,
        Speed = 11,
        Pitch = 12,
        Gain = 13,
    };

    virtual ~EditorEffects();

    /// Percent of change, 0 is unchanged.
    virtual int ApplyTempo(int start, int end, float percent) = 0;
    virtual int ApplyRate(int start, int end, float percent) = 0;

    /// Semitones with hundredths.
    virtual int ApplyPitch(int start, int end, const float& semitones) = 0;

    /// Percent of the present level, 100 is unchanged. @p before and @p after are always 0.
    virtual int ApplyGain(int start, int end, int before, float percent, int after) = 0;
};

/// The offline editor: loads one whole sound, applies effects to it and exports it to a file.
///
/// InitEditor comes first. Loading, effects and export are jobs, one at a time: the call returns at once with 0
/// when the job was started, percent events follow, and one done event ends it. Signals come from the event loop,
/// never from within a call. Calls and signals belong to the main thread.
///
/// While a job runs all others are refused as EditorBusy. A LoadSound that fails otherwise leaves the editor empty,
/// so that nothing is exported that the user did not choose.
class EditorEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~EditorEngine() override;

    /// @p owner is the native handle of the window that the editor belongs to.
    virtual void InitEditor(int owner) = 0;

    /// Opens the sound in place of the one before. LoadPercent, then LoadDone.
    virtual int LoadSound(const QString& path) = 0;

    /// Writes the sound at @p frequency hertz with @p channels channels, from @p start to @p end milliseconds (-1
    /// is the end of the sound), in the format last chosen. @p zero is always 0. ExportPercent, then ExportDone.
    /// The file is there whole when ExportDone brings 0; otherwise there is none, or still the one of before. The
    /// sound stays loaded, with its effects.
    virtual int ExportToFile(int frequency, int channels, int zero, int start, int end, const QString& path) = 0;

    /// Lets the sound go; a job under way is given up, without its done event.
    virtual void CloseSound() = 0;

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
