#include "sound/engines/SoundEngines.h"

#include "sound/burner/BurnerDrives.h"
#include "sound/device/PulseMixer.h"
#include "sound/device/PulseSources.h"
#include "sound/device/SystemOutput.h"
#include "sound/disc/SoundDiscEngine.h"
#include "sound/editor/SoundEditorEngine.h"
#include "sound/engines/KeepAwake.h"
#include "sound/mp3/SoundMp3EncoderEngine.h"
#include "sound/player/SoundPlayerEngine.h"
#include "sound/recorder/SoundRecorderEngine.h"
#include "sound/vocals/SoundVocalRemoverEngine.h"

#include <optional>
#include <utility>

namespace sound {
namespace {

using MakeBarMeters = std::function<std::unique_ptr<RecorderBarMeters>()>;

class SoundEngines : public EngineSet
{
public:
    SoundEngines(MakeBarMeters make, QString folder)
        : makeBarMeters(std::move(make))
        , recordingsFolder(std::move(folder))
    {
    }

    std::unique_ptr<PlayerEngine> createPlayer() override
    {
        return std::make_unique<SoundPlayerEngine>(makeOutput);
    }

    std::unique_ptr<EditorEngine> createEditor() override { return std::make_unique<SoundEditorEngine>(); }

    std::unique_ptr<RecorderEngine> createRecorder() override
    {
        return std::make_unique<SoundRecorderEngine>(RecorderParts{std::make_unique<PulseSources>(),
                                                                   makeBarMeters(), makeOutput,
                                                                   keepsAwake(awakeToRecord, "Recording sound")});
    }

    std::unique_ptr<VocalRemoverEngine> createVocalRemover() override
    {
        return std::make_unique<SoundVocalRemoverEngine>();
    }

    std::unique_ptr<VocalRemoverExtendedEngine> createVocalRemoverExtended() override
    {
        return std::make_unique<SoundVocalRemoverExtendedEngine>();
    }

    std::unique_ptr<Mp3EncoderEngine> createMp3Encoder() override
    {
        return std::make_unique<SoundMp3EncoderEngine>();
    }

    std::unique_ptr<DiscEngine> createDisc() override
    {
        return std::make_unique<SoundDiscEngine>(burnerDrives(), recordingsFolder,
                                                 keepsAwake(awakeToWrite, "Writing a disc"));
    }

    std::unique_ptr<OutputMixer> createOutputMixer() override { return std::make_unique<PulseMixer>(); }

private:
    static std::unique_ptr<AudioOutput> makeOutput() { return std::make_unique<SystemOutput>(); }

    // Whoever never records or writes needs no bus for it.
    static std::function<void(bool)> keepsAwake(std::optional<KeepAwake>& keeper, const char* reason)
    {
        return [&keeper, reason](bool awake) {
            if (!keeper)
                keeper.emplace(QString::fromLatin1(reason));
            keeper->keep(awake);
        };
    }

    const MakeBarMeters makeBarMeters;
    const QString recordingsFolder;
    std::optional<KeepAwake> awakeToRecord;
    std::optional<KeepAwake> awakeToWrite;
};

}  // namespace

std::unique_ptr<EngineSet> makeSoundEngines(std::function<std::unique_ptr<RecorderBarMeters>()> makeBarMeters,
                                            const QString& recordingsFolder)
{
    return std::make_unique<SoundEngines>(std::move(makeBarMeters), recordingsFolder);
}

}  // namespace sound
