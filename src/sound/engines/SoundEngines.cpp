#include "sound/engines/SoundEngines.h"

#include "engines/RecorderEngine.h"
#include "sound/device/PulseMixer.h"
#include "sound/device/SystemOutput.h"
#include "sound/editor/SoundEditorEngine.h"
#include "sound/player/SoundPlayerEngine.h"

namespace sound {
namespace {

class SoundEngines : public EngineSet
{
public:
    std::unique_ptr<PlayerEngine> createPlayer() override
    {
        return std::make_unique<SoundPlayerEngine>([] { return std::make_unique<SystemOutput>(); });
    }

    std::unique_ptr<EditorEngine> createEditor() override { return std::make_unique<SoundEditorEngine>(); }

    std::unique_ptr<RecorderEngine> createRecorder() override { return nullptr; }

    std::unique_ptr<OutputMixer> createOutputMixer() override { return std::make_unique<PulseMixer>(); }
};

}  // namespace

std::unique_ptr<EngineSet> makeSoundEngines()
{
    return std::make_unique<SoundEngines>();
}

}  // namespace sound
