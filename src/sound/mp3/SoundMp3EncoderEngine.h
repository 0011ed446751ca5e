#pragma once

#include "engines/Mp3EncoderEngine.h"
#include "sound/mp3/EncodingJob.h"

#include <QTimer>
#include <deque>
#include <memory>

namespace sound {

/// Encodes with LAME, on a thread of its own.
///
/// Input is WAV (integers of 1 to 32 bits, floats of 32 and 64) or RAW, in one or two channels. Which of LAME's
/// switches each property is stands in docs/decisions/mp3-switches.md. Bit rates are taken from 8 to 320 kbit/s,
/// and LAME chooses the nearest that goes with the rate of the sound.
///
/// An encoding has the properties, the priority too, that were set when it was called for; its input is opened when
/// its turn has come. One that would be put over its own input is refused. Destroyed, the engine gives up the one
/// under way, without waiting for the disc, and those that wait.
class SoundMp3EncoderEngine : public Mp3EncoderEngine
{
public:
    SoundMp3EncoderEngine();
    ~SoundMp3EncoderEngine() override;

    void InputFile(const QString& path) override { order.input = path; }
    void OutputFile(const QString& path) override { order.output = path; }

    void Priority(int index) override;

    void Mode(short index) override;
    void Bitrate(int rate) override;
    void VoiceMode(bool on) override { order.switches.voiceMode = on; }

    void UseVbr(bool on) override { order.switches.variableBitrate = on; }
    void VbrQuality(int quality) override;
    void MinVbrBitrate(int rate) override;
    void MaxVbrBitrate(int rate) override;
    void DisableVbrTag(bool on) override { order.switches.noInfoTag = on; }

    void HighQuality(bool on) override { order.switches.highQuality = on; }
    void FastMode(bool on) override { order.switches.fast = on; }
    void DisableSfb21Cutoff(bool on) override { order.switches.allFrequencies = on; }
    void MixedBlockTypes(bool on) override { order.switches.mixedBlockTypes = on; }
    void AthOnlyMasking(bool on) override { order.switches.thresholdOfHearingOnly = on; }
    void NoShortBlocks(bool on) override { order.switches.noShortBlocks = on; }

    void RawInput(bool on) override { order.reading.raw = on; }
    void SwapBytes(bool on) override { order.reading.swapBytes = on; }
    void DownmixToMono(bool on) override { order.switches.downmixToMono = on; }

    void AddChecksum(bool on) override { order.switches.checksum = on; }
    void MarkCopyrighted(bool on) override { order.switches.copyrighted = on; }
    void MarkNonOriginal(bool on) override { order.switches.notOriginal = on; }

    bool Encode() override;

private:
    void beginNext();
    void watchEncoding();

    EncodingOrder order;  // the properties
    std::deque<EncodingOrder> waiting;
    std::unique_ptr<EncodingJob> underWay;
    int percentTold = -1;
    QTimer watch;
};

}  // namespace sound
