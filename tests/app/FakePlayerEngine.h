#pragma once

#include "engines/PlayerEngine.h"

#include <QElapsedTimer>
#include <QTimer>

/// A player without sound that keeps time like a real one: for looking at the window.
class FakePlayerEngine : public PlayerEngine, private VuMeterControl
{
public:
    void InitPlayers(short, int, short, short, short, short) override {}
    int LoadSound(short, const QString&) override;
    int LoadSoundForExport(short player, const QString& path) override { return LoadSound(player, path); }
    void CloseSound(short) override;
    void PlaySound(short) override;
    void PlaySoundRange(short, int begin, int end, int repeat) override;
    int PlaySoundSegment(short, const int&, int) override { return 0; }
    void PauseSound(short) override;
    void ResumeSound(short) override;
    void StopSound(short) override;
    void SeekSound(short, int position) override;
    int GetPosition(short) const override;
    int GetDuration(short) const override;
    int GetPlayerStatus(short) const override;
    void ChangeTempo(short, float) override {}
    void ChangeRate(short, float) override {}
    void ChangePitchSemitones(short, short) override {}
    void ChangePitchCents(short, float) override {}
    void SetGain(short, short) override {}
    void SetBalance(short, short) override {}
    void EnableEqualizer(bool) override {}
    void AddEqualizerBand(short, float, float, float) override {}
    void ChangeEqualizerBand(short, float, const float&) override {}
    short GetEqualizerBandCount(short) const override { return 0; }
    float GetEqualizerBandFrequency(short, int) const override { return 0; }
    void GetEqualizerBand(short, float&, float&, float&) const override {}
    void ResetEqualizer(short) override {}
    void LoadEqualizerPreset(short, int) override {}
    int LoadEqualizerFile(short, const QString&) override { return 0; }
    int SaveEqualizerFile(short, const QString&) override { return 0; }
    int ExportSoundRange(short player, const QString&, int, const int&) override;
    int LastError() const override { return 0; }
    VuMeterControl& VuMeter() override { return *this; }

private:
    void SetVuMeterMode(short, short) override {}
    void EnableVuMeter(short, short enabled) override;

    static constexpr int duration = 3 * 60000 + 7500;

    int status = Empty;
    int startedAt = 0;
    int loopBegin = 0;
    int loopEnd = 0;
    bool looping = false;
    QElapsedTimer sinceStart;
    QTimer metering;
};
