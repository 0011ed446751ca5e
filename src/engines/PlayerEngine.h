#pragma once

#include <QObject>
#include <QString>

/// Switches a player's level reports on. Reached through PlayerEngine::VuMeter().
class VuMeterControl
{
public:
    virtual ~VuMeterControl();

    /// @p mode 0, the only one: peaks of each channel.
    virtual void SetVuMeterMode(short player, short mode) = 0;

    /// Sends PlayerEngine::VuPeaks from now on (@p enabled 1) or no longer (0).
    virtual void EnableVuMeter(short player, short enabled) = 0;
};

/// The real-time player: what the program may ask of it, and what it reports.
///
/// **States.** InitPlayers comes first; before it every operation fails with EngineError::NotInitialized. A player
/// has no sound until LoadSound succeeds; a new sound stands in status 3 at position 0. Tempo, rate, pitch, gain,
/// balance and equalizer are settings of the player, not of the sound: they may be set with nothing loaded, take
/// effect while a sound plays, and hold across LoadSound. Values beyond a range are cut to it.
///
/// **Units.** Players are numbered from 0. Positions and durations are milliseconds from the beginning of the
/// sound; a position is what is heard at this moment, wherever the decoder and the buffers are.
///
/// **Threads.** All calls come from the main thread. None waits for sound; only LoadSound and LoadSoundForExport
/// take time, to find out how long the file is. All signals arrive on the main thread, through its event loop and
/// never out of a call.
///
/// **Failure.** Results are 0 for success; otherwise the reason is in LastError(). An operation without a result
/// that cannot be done (no such player, nothing loaded) does nothing and leaves its reason there as well.
class PlayerEngine : public QObject
{
    Q_OBJECT

public:
    /// What GetPlayerStatus() answers; 0 is a player without a sound, or no player at all.
    enum Status : int
    {
        Empty = 0,
        Playing = 1,
        Paused = 2,
        Stopped = 3,
    };

    using QObject::QObject;
    ~PlayerEngine() override;

    /// Creates @p count players on the system's default output. @p owner is the native handle of the window that
    /// they belong to; the four last arguments are always 0. A second call fails with AlreadyInitialized.
    virtual void InitPlayers(short count, int owner, short zero1, short zero2, short zero3, short zero4) = 0;

    /// Opens the sound file, or the audio CD track that a .cda file names, in place of the player's sound.
    /// GetDuration() is valid when it returns. Where it fails the player keeps the sound it had, playing or not.
    virtual int LoadSound(short player, const QString& path) = 0;

    /// As LoadSound, and reports the decoding of the whole sound: ConversionPercent, then ConversionDone. Who plays
    /// the sound meanwhile has no need of the report: it ends. There is none while the player still exports another
    /// sound, so that ConversionDone is always that of what was begun last and waited for.
    virtual int LoadSoundForExport(short player, const QString& path) = 0;

    /// Stops and releases the sound; GetDuration() is 0 and GetPlayerStatus() Empty from then on.
    virtual void CloseSound(short player) = 0;

    /// Plays from the current position to the end of the sound: continues a paused one, ends the repetition of a
    /// range without a jump, changes nothing in plain playing.
    virtual void PlaySound(short player) = 0;

    /// Plays from @p begin to @p end and, with @p repeat -1, starts over at begin for ever, with a period exact to
    /// the frame. A call while a range plays replaces the range and restarts at the new begin. The range is cut to
    /// the sound; an empty or reversed one plays nothing and leaves the player stopped.
    virtual void PlaySoundRange(short player, int begin, int end, int repeat) = 0;

    /// Plays from @p begin to @p end once. The result is 0, or why nothing plays.
    virtual int PlaySoundSegment(short player, const int& begin, int end) = 0;

    virtual void PauseSound(short player) = 0;
    virtual void ResumeSound(short player) = 0;

    /// Status 3, position 0. Harmless in status 3.
    virtual void StopSound(short player) = 0;

    /// Moves the position in any status, without changing the status. Positions outside the sound are cut to it.
    virtual void SeekSound(short player, int position) = 0;

    /// None of these three blocks: they are asked many times a second.
    virtual int GetPosition(short player) const = 0;
    virtual int GetDuration(short player) const = 0;
    virtual int GetPlayerStatus(short player) const = 0;

    /// Speed without pitch, in percent of change: 0 is unchanged, -60 is sixty percent slower. -60 to 60.
    virtual void ChangeTempo(short player, float percent) = 0;

    /// Speed and pitch together, as on a turntable, in percent of change. -60 to 60.
    virtual void ChangeRate(short player, float percent) = 0;

    /// Pitch without speed, by whole semitones. -12 to 12. Replaces what ChangePitchCents set.
    virtual void ChangePitchSemitones(short player, short semitones) = 0;

    /// Pitch without speed, in semitones with hundredths: 1.5 is three quarter-tones up. -12 to 12. Replaces what
    /// ChangePitchSemitones set.
    virtual void ChangePitchCents(short player, float semitones) = 0;

    /// 0 is silence, 100 the sound as it is.
    virtual void SetGain(short player, short gain) = 0;

    /// -50 is left only, 0 both sides as they are, 50 right only.
    virtual void SetBalance(short player, short balance) = 0;

    /// Switches the equalizers of all players on or off.
    virtual void EnableEqualizer(bool enabled) = 0;

    /// @p frequency in hertz, @p bandwidth in semitones between the points of half the gain, @p gain in decibels,
    /// -15 to 15.
    virtual void AddEqualizerBand(short player, float frequency, float bandwidth, float gain) = 0;

    /// Sets the gain, in decibels, of the band whose centre is @p frequency.
    virtual void ChangeEqualizerBand(short player, float frequency, const float& gain) = 0;

    virtual short GetEqualizerBandCount(short player) const = 0;

    /// Centre of the band of this index, lowest first; 0 where there is none.
    virtual float GetEqualizerBandFrequency(short player, int band) const = 0;

    /// Reads the band whose centre is @p frequency; leaves the others alone where there is none.
    virtual void GetEqualizerBand(short player, float& frequency, float& bandwidth, float& gain) const = 0;

    /// All bands to 0.
    virtual void ResetEqualizer(short player) = 0;

    /// A built-in preset, 0 to 15. EqualizerChanged follows.
    virtual void LoadEqualizerPreset(short player, int preset) = 0;

    /// Results as for LoadSound. EqualizerChanged follows a load; a file that cannot be read changes no band.
    virtual int LoadEqualizerFile(short player, const QString& path) = 0;
    virtual int SaveEqualizerFile(short player, const QString& path) = 0;

    /// Starts writing the stretch of the sound, unchanged by any setting, to a RIFF WAVE file that appears whole or
    /// not at all. An @p end of -1 is the end of the sound. ConversionPercent and ConversionDone follow; a loading
    /// that is still being reported is no longer, so that the next ConversionDone is the export's.
    virtual int ExportSoundRange(short player, const QString& path, int begin, const int& end) = 0;

    /// Why the last operation failed, 0 where it did not.
    virtual int LastError() const = 0;

    virtual VuMeterControl& VuMeter() = 0;

signals:
    /// Peaks of what is heard, 0 to 32767 each, several times in a tenth of a second while a sound plays.
    void VuPeaks(short player, short left, short right);

    /// 0 to 100.
    void ConversionPercent(short player, short percent);

    /// @p success is 0 for failure; the reason is in LastError().
    void ConversionDone(short player, int success);

    /// A preset or a file has changed the bands.
    void EqualizerChanged(short player);

    /// The player begins to sound, from the beginning or after a pause.
    void SoundPlaying(short player);

    /// The sound, or the segment, came to its end by itself.
    void SoundFinished(short player);

    /// The sound was ended by StopSound, CloseSound or another LoadSound while it played or was paused.
    void SoundStopped(short player);
};
