#pragma once

#include "sound/dsp/Limiter.h"
#include "sound/dsp/PeakMeter.h"
#include "sound/recorder/FileSequence.h"
#include "sound/recorder/LevelWatch.h"
#include "sound/recorder/SilenceGate.h"

#include <optional>
#include <span>
#include <vector>

namespace sound {

/// What happens to captured frames: they are metered, the level is watched, what comes too near to full scale is
/// turned down, silence is left out where it is to be, and the rest goes to the file that is open.
///
/// The watch hears what comes in, with or without a recording. Silence is left out while the level is watched for
/// pauses of no length. **Threads.** One at a time.
class RecordingChain
{
public:
    /// Where what is written stays below while clipping is kept off: a tenth of a decibel under full scale.
    static constexpr float ceiling = 0.98855F;

    /// The most that is taken at once.
    static constexpr FrameCount largestStep{4096};

    explicit RecordingChain(SampleRate captured);

    /// The frames that follow come from elsewhere, at this rate.
    void changeRate(SampleRate captured);

    void keepFromClipping(bool wanted) { keepsFromClipping = wanted; }
    void watchLevel(bool wanted);
    void setThreshold(int level);
    void setShortestPause(Milliseconds pause);

    /// The next frame is the first of this file; a recording that is under way goes over to it. False where the
    /// file cannot be made: then no recording is under way.
    bool begin(const QString& path, const RecordingFormat& format);

    /// False where the last file could not be finished.
    bool end();

    bool isRecording() const { return files.isOpen(); }

    struct Step
    {
        FrameCount taken;
        std::optional<LevelWatch::Change> change;  ///< Behind the frames that were taken.
        bool failed = false;                       ///< The recording has ended: the disc is full or fails.
    };

    /// Takes the frames up to the first change of level, or all of them.
    Step take(std::span<const float> stereo);

    /// The highest since the last call.
    Peaks takePeaks();

private:
    bool leavesSilenceOut() const { return watching && shortestPause == Milliseconds{0}; }
    bool write(std::span<const float> stereo, std::optional<LevelWatch::Change> change);

    SampleRate rate;
    LevelWatch watch;
    SilenceGate gate;
    Limiter limiter{largestStep, ceiling};
    FileSequence files;
    Peaks peaks;
    bool keepsFromClipping = false;
    bool watching = false;
    int threshold = 0;
    Milliseconds shortestPause{0};
    std::vector<float> limited;
    std::vector<float> kept;
};

}  // namespace sound
