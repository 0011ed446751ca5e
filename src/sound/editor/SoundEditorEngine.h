#pragma once

#include "engines/EditorEngine.h"
#include "engines/EngineError.h"
#include "sound/dsp/Changes.h"
#include "sound/editor/ChosenFormat.h"
#include "sound/editor/ExportJob.h"
#include "sound/media/FrameStream.h"
#include "sound/media/SoundTags.h"

#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>

namespace sound {

/// The offline editor over files.
///
/// A sound that is loaded is an open file: nothing of it is kept in memory. Effects are noted, and the sound is
/// stretched once for all of them when it is exported; so they take no time, and their jobs are over with the next
/// turn of the event loop. Only the whole sound can be changed.
class SoundEditorEngine : public EditorEngine, private EditorEffects
{
public:
    SoundEditorEngine();
    ~SoundEditorEngine() override;

    void InitEditor(int owner) override;
    int LoadSound(const QString& path) override;
    int ExportToFile(int frequency, int channels, int zero, int start, int end, const QString& path) override;
    void CloseSound() override;
    int LastError() const override { return code(lastError); }
    EditorEffects& Effects() override { return *this; }
    ::EncodeFormats& EncodeFormats() override { return chosen; }

private:
    struct Loaded
    {
        QString path;
        std::unique_ptr<FrameStream> stream;  // null once an export has read it
        SampleRate rate;
        FrameCount length;
        SoundTags tags;
        Changes changes;
        double gain = 1;
    };

    int ApplyTempo(int start, int end, float percent) override;
    int ApplyRate(int start, int end, float percent) override;
    int ApplyPitch(int start, int end, const float& semitones) override;
    int ApplyGain(int start, int end, int before, float percent, int after) override;

    int report(EngineError error);
    EngineError load(const QString& path);
    int apply(Effect effect, int start, int end, float value, const std::function<void(Loaded&)>& change);
    EngineError startExport(SampleRate rate, int channels, int start, int end, const QString& path);
    EngineError openAgain();
    void later(const std::function<void()>& events);
    void watchExport();

    bool initialized = false;
    EngineError lastError = EngineError::None;
    ChosenFormat chosen;
    std::unique_ptr<Loaded> loaded;
    std::unique_ptr<ExportJob> exporting;
    QTimer watch;
    short percentTold = -1;
    bool busy = false;
    std::uint64_t closings = 0;  // what was to be told before one is not told any more
};

}  // namespace sound
