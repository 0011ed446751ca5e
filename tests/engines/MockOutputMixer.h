#pragma once

#include "engines/OutputMixer.h"

#include <gmock/gmock.h>

class MockOutputMixer : public OutputMixer
{
public:
    MOCK_METHOD(int, mixerOpen, (), (override));
    MOCK_METHOD(bool, mixerGetLineControls, (), (override));
    MOCK_METHOD(int, mixerGetControlDetails, (), (override));
};
