#pragma once

#include "engines/EditorEngine.h"
#include "engines/EncodeFormats.h"

#include <QTimer>

/// An editor without sound whose jobs are done at once: for looking at the windows.
class FakeEditorEngine : public EditorEngine,
                         private EditorEffects,
                         private ::EncodeFormats,
                         private ::Mp3Settings,
                         private ::WmaSettings,
                         private ::OggSettings,
                         private ::AacSettings,
                         private ::WavSettings,
                         private ::FlacSettings
{
public:
    void InitEditor(int) override {}
    int LoadSound(const QString&) override
    {
        return soon([this] { emit LoadDone(0); });
    }
    int ExportToFile(int, int, int, int, int, const QString&) override
    {
        return soon([this] { emit ExportDone(0); });
    }
    void CloseSound() override {}
    int LastError() const override { return 0; }
    EditorEffects& Effects() override { return *this; }
    ::EncodeFormats& EncodeFormats() override { return *this; }

private:
    template <typename Report>
    int soon(Report report)
    {
        QTimer::singleShot(0, this, report);
        return 0;
    }

    int apply(short effect)
    {
        return soon([this, effect] { emit EffectDone(effect, 0); });
    }

    int ApplyTempo(int, int, float) override { return apply(Tempo); }
    int ApplyRate(int, int, float) override { return apply(Speed); }
    int ApplyPitch(int, int, const float&) override { return apply(Pitch); }
    int ApplyGain(int, int, int, float, int) override { return apply(Gain); }
    void FormatForExport(int) override {}
    ::Mp3Settings& Mp3Settings() override { return *this; }
    ::WmaSettings& WmaSettings() override { return *this; }
    ::OggSettings& OggSettings() override { return *this; }
    ::AacSettings& AacSettings() override { return *this; }
    ::WavSettings& WavSettings() override { return *this; }
    ::FlacSettings& FlacSettings() override { return *this; }
    void Mode(int) override {}
    void BitRate(int) override {}
    void Quality(int) override {}
    void Mp4Container(bool) override {}
};
