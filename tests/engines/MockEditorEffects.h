#pragma once

#include "engines/EditorEngine.h"

#include <gmock/gmock.h>

class MockEditorEffects : public EditorEffects
{
public:
    MOCK_METHOD(int, ApplyTempo, (int start, int end, float percent), (override));
    MOCK_METHOD(int, ApplyRate, (int start, int end, float percent), (override));
    MOCK_METHOD(int, ApplyPitch, (int start, int end, const float& semitones), (override));
    MOCK_METHOD(int, ApplyGain, (int start, int end, int before, float percent, int after), (override));
};
