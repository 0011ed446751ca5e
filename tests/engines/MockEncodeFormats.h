#pragma once

#include "engines/EncodeFormats.h"

#include <gmock/gmock.h>

class MockMp3Settings : public Mp3Settings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, BitRate, (int bitsPerSecond), (override));
};

class MockWmaSettings : public WmaSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, BitRate, (int bitsPerSecond), (override));
};

class MockOggSettings : public OggSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Quality, (int quality), (override));
};

class MockAacSettings : public AacSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
    MOCK_METHOD(void, Mp4Container, (bool wanted), (override));
    MOCK_METHOD(void, Quality, (int quality), (override));
};

class MockWavSettings : public WavSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
};

class MockFlacSettings : public FlacSettings
{
public:
    MOCK_METHOD(void, Mode, (int mode), (override));
};

/// Hands out the settings that belong to it, each a strict mock: a test expects what is written to them.
class MockEncodeFormats : public EncodeFormats
{
public:
    ::testing::StrictMock<MockMp3Settings> mp3;
    ::testing::StrictMock<MockWmaSettings> wma;
    ::testing::StrictMock<MockOggSettings> ogg;
    ::testing::StrictMock<MockAacSettings> aac;
    ::testing::StrictMock<MockWavSettings> wav;
    ::testing::StrictMock<MockFlacSettings> flac;

    MOCK_METHOD(void, FormatForExport, (int format), (override));
    ::Mp3Settings& Mp3Settings() override { return mp3; }
    ::WmaSettings& WmaSettings() override { return wma; }
    ::OggSettings& OggSettings() override { return ogg; }
    ::AacSettings& AacSettings() override { return aac; }
    ::WavSettings& WavSettings() override { return wav; }
    ::FlacSettings& FlacSettings() override { return flac; }
};
