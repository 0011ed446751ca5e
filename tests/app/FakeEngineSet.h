#pragma once

#include "app/FakeDiscEngine.h"
#include "app/FakeEditorEngine.h"
#include "app/FakeMp3EncoderEngine.h"
#include "app/FakePlayerEngine.h"
#include "app/FakeRecorderEngine.h"
#include "app/FakeVocalRemoverEngine.h"
#include "engines/EngineSet.h"
#include "engines/OutputMixer.h"

#include <memory>

/// Speakers at full volume.
class FakeOutputMixer : public OutputMixer
{
public:
    int mixerOpen() override { return 0; }
    bool mixerGetLineControls() override { return true; }
    int mixerGetControlDetails() override { return 65535; }
};

/// Engines without sound: for looking at the windows.
class FakeEngineSet : public EngineSet
{
public:
    std::unique_ptr<PlayerEngine> createPlayer() override { return std::make_unique<FakePlayerEngine>(); }
    std::unique_ptr<EditorEngine> createEditor() override { return std::make_unique<FakeEditorEngine>(); }
    std::unique_ptr<RecorderEngine> createRecorder() override { return std::make_unique<FakeRecorderEngine>(); }
    std::unique_ptr<VocalRemoverEngine> createVocalRemover() override
    {
        return std::make_unique<FakeVocalRemoverEngine>();
    }
    std::unique_ptr<VocalRemoverExtendedEngine> createVocalRemoverExtended() override
    {
        return std::make_unique<FakeVocalRemoverExtendedEngine>();
    }
    std::unique_ptr<Mp3EncoderEngine> createMp3Encoder() override
    {
        return std::make_unique<FakeMp3EncoderEngine>();
    }
    std::unique_ptr<DiscEngine> createDisc() override { return std::make_unique<FakeDiscEngine>(); }
    std::unique_ptr<OutputMixer> createOutputMixer() override { return std::make_unique<FakeOutputMixer>(); }
};
