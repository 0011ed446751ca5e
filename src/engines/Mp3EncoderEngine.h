#pragma once

#include <QObject>
#include <QString>

/// Encodes one WAV or RAW file into an MP3 file.
///
/// The properties hold from one encoding to the next. Until it is set, each has the engine's own default, which is
/// what the encoder does where nothing is asked of it; a value outside a range leaves the property as it was.
///
/// Calls and signals belong to the main thread.
class Mp3EncoderEngine : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~Mp3EncoderEngine() override;

    virtual void InputFile(const QString& path) = 0;
    virtual void OutputFile(const QString& path) = 0;

    /// How much of the processor the encoding may have: 0 idle, 1 lowest, 2 below normal, 3 normal, 4 above normal,
    /// 5 highest, 6 time critical.
    virtual void Priority(int index) = 0;

    /// 0 stereo, 1 joint stereo, 2 joint stereo with every frame as middle and side, 3 mono.
    virtual void Mode(short index) = 0;

    /// kbit/s.
    virtual void Bitrate(int rate) = 0;
    virtual void VoiceMode(bool on) = 0;

    virtual void UseVbr(bool on) = 0;

    /// 0, the best, to 9.
    virtual void VbrQuality(int quality) = 0;

    /// kbit/s.
    virtual void MinVbrBitrate(int rate) = 0;
    virtual void MaxVbrBitrate(int rate) = 0;
    virtual void DisableVbrTag(bool on) = 0;

    virtual void HighQuality(bool on) = 0;
    virtual void FastMode(bool on) = 0;
    virtual void DisableSfb21Cutoff(bool on) = 0;
    virtual void MixedBlockTypes(bool on) = 0;
    virtual void AthOnlyMasking(bool on) = 0;
    virtual void NoShortBlocks(bool on) = 0;

    /// The input has no head: it is PCM of 16 bits, two channels and 44100 Hz, the low byte first.
    virtual void RawInput(bool on) = 0;
    virtual void SwapBytes(bool on) = 0;
    virtual void DownmixToMono(bool on) = 0;

    virtual void AddChecksum(bool on) = 0;
    virtual void MarkCopyrighted(bool on) = 0;
    virtual void MarkNonOriginal(bool on) = 0;

    /// Begins an encoding with the properties as they are now and returns; one that is under way is finished first.
    /// The output file appears whole, in place of one of before, or not at all, and never over its own input. False
    /// where the input is no file that can be encoded, and where the output would be put over it, which is then all
    /// that happens; what goes wrong later is told by nothing but that 100 never comes.
    virtual bool Encode() = 0;

signals:
    /// 0 to 100 of the encoding under way. 100 comes once for each, when the file is there.
    void EncodePercent(int percent);
};
