#pragma once

#include "engines/Mp3EncoderEngine.h"

#include <gmock/gmock.h>

class MockMp3EncoderEngine : public Mp3EncoderEngine
{
public:
    MOCK_METHOD(void, InputFile, (const QString& path), (override));
    MOCK_METHOD(void, OutputFile, (const QString& path), (override));
    MOCK_METHOD(void, Priority, (int index), (override));
    MOCK_METHOD(void, Mode, (short index), (override));
    MOCK_METHOD(void, Bitrate, (int rate), (override));
    MOCK_METHOD(void, VoiceMode, (bool on), (override));
    MOCK_METHOD(void, UseVbr, (bool on), (override));
    MOCK_METHOD(void, VbrQuality, (int quality), (override));
    MOCK_METHOD(void, MinVbrBitrate, (int rate), (override));
    MOCK_METHOD(void, MaxVbrBitrate, (int rate), (override));
    MOCK_METHOD(void, DisableVbrTag, (bool on), (override));
    MOCK_METHOD(void, HighQuality, (bool on), (override));
    MOCK_METHOD(void, FastMode, (bool on), (override));
    MOCK_METHOD(void, DisableSfb21Cutoff, (bool on), (override));
    MOCK_METHOD(void, MixedBlockTypes, (bool on), (override));
    MOCK_METHOD(void, AthOnlyMasking, (bool on), (override));
    MOCK_METHOD(void, NoShortBlocks, (bool on), (override));
    MOCK_METHOD(void, RawInput, (bool on), (override));
    MOCK_METHOD(void, SwapBytes, (bool on), (override));
    MOCK_METHOD(void, DownmixToMono, (bool on), (override));
    MOCK_METHOD(void, AddChecksum, (bool on), (override));
    MOCK_METHOD(void, MarkCopyrighted, (bool on), (override));
    MOCK_METHOD(void, MarkNonOriginal, (bool on), (override));
    MOCK_METHOD(bool, Encode, (), (override));
};
