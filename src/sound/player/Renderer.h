#pragma once

#include "sound/dsp/Equalizer.h"
#include "sound/dsp/LevelStage.h"
#include "sound/dsp/Limiter.h"
#include "sound/player/Settings.h"
#include "sound/player/Snapshot.h"
#include "sound/player/Timeline.h"
#include "sound/player/Transport.h"
#include "sound/units/OneThread.h"

namespace sound {

class PlayPath;

/// Makes a player's sound, block by block: the source's frames through a path, then equalizer, gain and balance,
/// and the limiter. It follows the transport and the settings, and keeps account of which source frame each output
/// frame stands for.
///
/// Whatever changes while sound comes out goes over in one block's cross-fade from a path that was started beside
/// it: no gap, no click, no shift. A start from standstill is not faded: the first frame is heard whole.
///
/// **Threads.** All members belong to one thread, the render thread; none takes a lock, allocates or waits. It
/// needs no thread of its own: a test may render an hour as fast as it likes.
class Renderer
{
public:
    Renderer();

    /// Takes over what the main thread wants.
    void update(const Transport& transport, const Settings& settings);

    /// Whether there is sound, or will be as soon as it is decoded.
    bool active() const { return state != State::Silent; }

    /// Whether all sound that was rendered has been heard, with so many frames still under way.
    bool allHeard(FrameCount delay) const;

    /// The rate that the next block is rendered for; 0 before there was any sound.
    SampleRate rate() const { return outputRate; }
    FrameCount block() const { return blockFrames; }

    /// Writes the next block() frames, left and right interleaved; silence where nothing plays.
    ///
    /// @p hurried tells that the output wants the next block at once behind this one. What takes long is then not
    /// begun: a change that comes a block later is better than a gap.
    void render(float* stereo, bool hurried = false);

    /// What is heard when the frames of the last @p delay are still under way.
    Snapshot heard(FrameCount delay) const;

    /// Peaks of what came to be heard since the last call.
    Peaks takePeaks(FrameCount delay);

private:
    /// A start of the idle path of which half is done: what it is for.
    struct HalfStart
    {
        bool done = false;
        bool jumps = false;
        Transport transport;
        FramePosition first;
    };

    enum class State : std::uint8_t
    {
        Silent,   // nothing to play: stopped, paused or at the end
        Waiting,  // to play, but not decoded yet
        Sounding,
    };

    void adopt();
    void renderSilence(float* stereo);
    void renderStart(float* stereo);
    void renderSounding(float* stereo);
    void renderLeaving(float* stereo);
    void renderRestart(FramePosition first, float* stereo, bool hurried);
    void renderCrossover(float* stereo);
    void finish(const float* frames, float* stereo, TimelineEntry entry);

    bool decodedAt(FramePosition first) const;
    FramePosition place() const;
    TimelineEntry entryAt(double position, double slope) const;
    PlayPath& path() const;

    OneThread renderThread;
    Transport wanted;   // what the main thread asked for last
    Transport current;  // what is in force
    Settings settings;

    State state = State::Silent;
    double held = 0;        // the running position while nothing sounds
    bool resuming = false;  // the sound left with a fade and comes back with one
    bool ended = false;
    int activePath = 0;
    HalfStart halfStart;
    FrameCount sinceChange;     // of tempo or pitch
    FrameCount sinceStart;      // of the path that sounds
    bool dragged = false;       // changes went into the running path since it was started
    std::int64_t soundEnd = 0;  // the output frame behind the last one that was not plain silence

    SampleRate outputRate;
    FrameCount blockFrames{0};
    Equalizer equalizer;
    LevelStage level;
    Limiter limiter;
    Timeline timeline;
    std::int64_t peaksTakenTo = 0;
};

}  // namespace sound
