#pragma once

#include "engines/VocalRemoverEngine.h"

#include <gmock/gmock.h>

class MockVocalRemoverEngine : public VocalRemoverEngine
{
public:
    MOCK_METHOD(void, InputFile, (const QString& path), (override));
    MOCK_METHOD(void, OutputFile, (const QString& path), (override));
    MOCK_METHOD(void, LowCutOff, (int frequency), (override));
    MOCK_METHOD(void, HighCutOff, (int frequency), (override));
    MOCK_METHOD(VocalRemoval, RemoveVocals, (), (override));
    MOCK_METHOD(void, GiveUp, (), (override));
};

class MockVocalRemoverExtendedEngine : public VocalRemoverExtendedEngine
{
public:
    MOCK_METHOD(void, InputFile, (const QString& path), (override));
    MOCK_METHOD(void, OutputFile, (const QString& path), (override));
    MOCK_METHOD(void, LowCutOff, (int frequency), (override));
    MOCK_METHOD(void, HighCutOff, (int frequency), (override));
    MOCK_METHOD(void, VocalPan, (int pan), (override));
    MOCK_METHOD(VocalRemoval, RemoveVocals, (), (override));
    MOCK_METHOD(void, GiveUp, (), (override));
};
