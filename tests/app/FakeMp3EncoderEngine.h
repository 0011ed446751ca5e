#pragma once

#include "engines/Mp3EncoderEngine.h"

#include <QTimer>

/// An encoder that takes ten seconds for each file and writes none: for looking at the window.
class FakeMp3EncoderEngine : public Mp3EncoderEngine
{
public:
    FakeMp3EncoderEngine()
    {
        progress.setInterval(100);
        QObject::connect(&progress, &QTimer::timeout, this, [this] {
            if (percent == 100)
                progress.stop();
            emit EncodePercent(percent++);
        });
    }

    void InputFile(const QString&) override {}
    void OutputFile(const QString&) override {}
    void Priority(int) override {}
    void Mode(short) override {}
    void Bitrate(int) override {}
    void VoiceMode(bool) override {}
    void UseVbr(bool) override {}
    void VbrQuality(int) override {}
    void MinVbrBitrate(int) override {}
    void MaxVbrBitrate(int) override {}
    void DisableVbrTag(bool) override {}
    void HighQuality(bool) override {}
    void FastMode(bool) override {}
    void DisableSfb21Cutoff(bool) override {}
    void MixedBlockTypes(bool) override {}
    void AthOnlyMasking(bool) override {}
    void NoShortBlocks(bool) override {}
    void RawInput(bool) override {}
    void SwapBytes(bool) override {}
    void DownmixToMono(bool) override {}
    void AddChecksum(bool) override {}
    void MarkCopyrighted(bool) override {}
    void MarkNonOriginal(bool) override {}

    bool Encode() override
    {
        percent = 0;
        progress.start();
        return true;
    }

private:
    QTimer progress;
    int percent = 0;
};
