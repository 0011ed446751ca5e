#pragma once

#include "engines/PlayerEngine.h"

#include <gmock/gmock.h>

class MockVuMeter : public VuMeterControl
{
public:
    MOCK_METHOD(void, SetVuMeterMode, (short player, short mode), (override));
    MOCK_METHOD(void, EnableVuMeter, (short player, short enabled), (override));
};

class MockPlayerEngine : public PlayerEngine
{
public:
    MOCK_METHOD(void, InitPlayers, (short count, int owner, short zero1, short zero2, short zero3, short zero4),
                (override));
    MOCK_METHOD(int, LoadSound, (short player, const QString& path), (override));
    MOCK_METHOD(int, LoadSoundForExport, (short player, const QString& path), (override));
    MOCK_METHOD(void, CloseSound, (short player), (override));
    MOCK_METHOD(void, PlaySound, (short player), (override));
    MOCK_METHOD(void, PlaySoundRange, (short player, int begin, int end, int repeat), (override));
    MOCK_METHOD(int, PlaySoundSegment, (short player, const int& begin, int end), (override));
    MOCK_METHOD(void, PauseSound, (short player), (override));
    MOCK_METHOD(void, ResumeSound, (short player), (override));
    MOCK_METHOD(void, StopSound, (short player), (override));
    MOCK_METHOD(void, SeekSound, (short player, int position), (override));
    MOCK_METHOD(int, GetPosition, (short player), (const, override));
    MOCK_METHOD(int, GetDuration, (short player), (const, override));
    MOCK_METHOD(int, GetPlayerStatus, (short player), (const, override));
    MOCK_METHOD(void, ChangeTempo, (short player, float percent), (override));
    MOCK_METHOD(void, ChangeRate, (short player, float percent), (override));
    MOCK_METHOD(void, ChangePitchSemitones, (short player, short semitones), (override));
    MOCK_METHOD(void, ChangePitchCents, (short player, float semitones), (override));
    MOCK_METHOD(void, SetGain, (short player, short gain), (override));
    MOCK_METHOD(void, SetBalance, (short player, short balance), (override));
    MOCK_METHOD(void, EnableEqualizer, (bool enabled), (override));
    MOCK_METHOD(void, AddEqualizerBand, (short player, float frequency, float bandwidth, float gain), (override));
    MOCK_METHOD(void, ChangeEqualizerBand, (short player, float frequency, const float& gain), (override));
    MOCK_METHOD(short, GetEqualizerBandCount, (short player), (const, override));
    MOCK_METHOD(float, GetEqualizerBandFrequency, (short player, int band), (const, override));
    MOCK_METHOD(void, GetEqualizerBand, (short player, float& frequency, float& bandwidth, float& gain),
                (const, override));
    MOCK_METHOD(void, ResetEqualizer, (short player), (override));
    MOCK_METHOD(void, LoadEqualizerPreset, (short player, int preset), (override));
    MOCK_METHOD(int, LoadEqualizerFile, (short player, const QString& path), (override));
    MOCK_METHOD(int, SaveEqualizerFile, (short player, const QString& path), (override));
    MOCK_METHOD(int, ExportSoundRange, (short player, const QString& path, int begin, const int& end), (override));
    MOCK_METHOD(int, LastError, (), (const, override));
    MOCK_METHOD(VuMeterControl&, VuMeter, (), (override));
};
