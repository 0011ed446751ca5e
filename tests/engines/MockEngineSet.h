#pragma once

#include "engines/DiscEngine.h"
#include "engines/EditorEngine.h"
#include "engines/EngineSet.h"
#include "engines/Mp3EncoderEngine.h"
#include "engines/OutputMixer.h"
#include "engines/PlayerEngine.h"
#include "engines/RecorderEngine.h"
#include "engines/VocalRemoverEngine.h"

#include <gmock/gmock.h>

class MockEngineSet : public EngineSet
{
public:
    MOCK_METHOD(std::unique_ptr<PlayerEngine>, createPlayer, (), (override));
    MOCK_METHOD(std::unique_ptr<EditorEngine>, createEditor, (), (override));
    MOCK_METHOD(std::unique_ptr<RecorderEngine>, createRecorder, (), (override));
    MOCK_METHOD(std::unique_ptr<VocalRemoverEngine>, createVocalRemover, (), (override));
    MOCK_METHOD(std::unique_ptr<VocalRemoverExtendedEngine>, createVocalRemoverExtended, (), (override));
    MOCK_METHOD(std::unique_ptr<Mp3EncoderEngine>, createMp3Encoder, (), (override));
    MOCK_METHOD(std::unique_ptr<DiscEngine>, createDisc, (), (override));
    MOCK_METHOD(std::unique_ptr<OutputMixer>, createOutputMixer, (), (override));
};
