#pragma once

#include "sound/dsp/Changes.h"
#include "sound/dsp/FrameInput.h"
#include "sound/dsp/Stretcher.h"
#include "sound/dsp/VariableRate.h"
#include "sound/player/WindowReader.h"

namespace sound {

class SampleSource;

/// One way from a sound to the ear: through a window, then stretched, then resampled, each only where it is asked
/// for. Unchanged, the frames come out bit for bit.
///
/// A player has two: one that sounds, and one that is started beside it when something changes at once, to be
/// cross-faded to.
///
/// **Threads.** prepare() allocates and belongs to the main thread; the rest takes no lock and allocates nothing.
class PlayPath
{
public:
    PlayPath();

    void prepare(SampleRate rate, int channels, FrameCount block);

    /// The next frame of render() is the one at running position @p first. It takes as long as the rendering of
    /// about ten blocks where the sound is stretched.
    void start(const SampleSource& source, const PlayWindow& window, FramePosition first, const Changes& changes);

    /// The same in two halves of the time; nothing else is asked of the path in between.
    void beginStart(const SampleSource& source, const PlayWindow& window, FramePosition first,
                    const Changes& changes);
    void finishStart();

    /// Whether change() can bring these about, or the path must be started anew.
    bool canChangeTo(const Changes& changes) const;
    void change(const Changes& changes);

    /// Another window with the same sound at the present place, in the unchanged path only.
    void replaceWindow(const SampleSource& source, const PlayWindow& window);

    void render(FrameCount count, float* interleaved);

    /// The running position, in source frames, of the frame that render() gives @p ahead frames from now.
    double position(double ahead = 0) const;

    const Changes& changes() const { return current; }
    const WindowReader& reader() const { return windowReader; }

private:
    /// What the resampler draws from: the stretcher.
    class Stretched : public FrameInput
    {
    public:
        explicit Stretched(PlayPath& owner)
            : path(owner)
        {
        }
        void next(FrameCount count, float* interleaved) override;

    private:
        PlayPath& path;
    };

    WindowReader windowReader;
    Stretcher stretcher;
    VariableRate variableRate;
    Stretched stretched;
    Changes current;
    FramePosition begin;  // of what is read since start()
};

}  // namespace sound
