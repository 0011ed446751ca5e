#pragma once

#include "engines/EngineError.h"
#include "engines/PlayerEngine.h"
#include "sound/player/RenderThread.h"

#include <QTimer>
#include <memory>
#include <vector>

namespace sound {

class DecodedSound;
class Player;
class RangeExport;

/// The player engine on real files and a real output.
class SoundPlayerEngine : public PlayerEngine, private VuMeterControl
{
    Q_OBJECT

public:
    /// @p makeOutput is called once for each player, on that player's render thread.
    explicit SoundPlayerEngine(RenderThread::MakeOutput makeOutput);
    ~SoundPlayerEngine() override;

    void InitPlayers(short count, int owner, short zero1, short zero2, short zero3, short zero4) override;
    int LoadSound(short player, const QString& path) override;
    int LoadSoundForExport(short player, const QString& path) override;
    void CloseSound(short player) override;
    void PlaySound(short player) override;
    void PlaySoundRange(short player, int begin, int end, int repeat) override;
    int PlaySoundSegment(short player, const int& begin, int end) override;
    void PauseSound(short player) override;
    void ResumeSound(short player) override;
    void StopSound(short player) override;
    void SeekSound(short player, int position) override;
    int GetPosition(short player) const override;
    int GetDuration(short player) const override;
    int GetPlayerStatus(short player) const override;
    void ChangeTempo(short player, float percent) override;
    void ChangeRate(short player, float percent) override;
    void ChangePitchSemitones(short player, short semitones) override;
    void ChangePitchCents(short player, float semitones) override;
    void SetGain(short player, short gain) override;
    void SetBalance(short player, short balance) override;
    void EnableEqualizer(bool enabled) override;
    void AddEqualizerBand(short player, float frequency, float bandwidth, float gain) override;
    void ChangeEqualizerBand(short player, float frequency, const float& gain) override;
    short GetEqualizerBandCount(short player) const override;
    float GetEqualizerBandFrequency(short player, int band) const override;
    void GetEqualizerBand(short player, float& frequency, float& bandwidth, float& gain) const override;
    void ResetEqualizer(short player) override;
    void LoadEqualizerPreset(short player, int preset) override;
    int LoadEqualizerFile(short player, const QString& path) override;
    int SaveEqualizerFile(short player, const QString& path) override;
    int ExportSoundRange(short player, const QString& path, int begin, const int& end) override;
    int LastError() const override;
    VuMeterControl& VuMeter() override;

private:
    struct Slot;

    void SetVuMeterMode(short player, short mode) override;
    void EnableVuMeter(short player, short enabled) override;

    Slot* slotOf(short player) const;
    Slot* loadedSlotOf(short player) const;
    int fail(EngineError error) const;
    int succeed() const;
    int load(short player, const QString& path, bool report);
    void started(short player, Status before);
    void endedByCommand(short player, Status before);
    void equalizerChanged(short player);
    template <typename Change>
    void changeSettings(short player, Change change);

    void poll();
    void pollDecoding(short player, Slot& slot);
    void pollExport(short player, Slot& slot);
    void pollMeter(short player, Slot& slot);
    void watch();

    RenderThread::MakeOutput makeOutput;
    std::vector<std::unique_ptr<Slot>> players;
    QTimer pollTimer;
    mutable EngineError lastError = EngineError::None;
};

}  // namespace sound
