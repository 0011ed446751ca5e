#pragma once

#include "sound/dsp/Changes.h"
#include "sound/editor/PhaseContinuation.h"
#include "sound/editor/PieceReader.h"
#include "sound/editor/SourcePart.h"
#include "sound/editor/SpectralJoin.h"
#include "sound/units/Frames.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace sound {

/// Stretches a whole sound with all cores: cut into pieces of some seconds that are rendered beside each other, by
/// the stretcher that the player uses too, and joined without a trace.
///
/// The pieces that are under way take a bounded amount of memory, however long the sound is. The threads yield to
/// all others that have work, so that sound goes on playing beside them.
///
/// **Threads.** One at a time; stop() from any.
class ParallelStretcher
{
public:
    /// Of @p changes the tempo and the pitch count. @p source outlives the stretcher. @p pieceLength is of the
    /// output; 0 is what fits.
    ParallelStretcher(SourcePart& source, const Changes& changes, int workers, FrameCount pieceLength = {});
    ~ParallelStretcher();
    ParallelStretcher(const ParallelStretcher&) = delete;
    ParallelStretcher& operator=(const ParallelStretcher&) = delete;

    /// Of the whole output: the source's length by the tempo, to the nearest frame.
    FrameCount length() const { return total; }

    /// Adds the next frames to @p interleaved, about a second of them. False, with nothing added, at the end and
    /// after stop().
    bool next(std::vector<float>& interleaved);

    /// How much of the output has been rendered, 0 to 1; ahead of what next() has given. Any thread.
    double progress() const;

    /// Makes next() return soon.
    void stop();

private:
    struct Rendered
    {
        std::vector<float> frames;
        bool last = false;
    };

    void work();
    bool fetch();

    SourcePart& source;
    Changes changes;
    FrameCount total;
    FrameCount common;
    std::size_t mostUnderWay;

    std::mutex mutex;
    std::condition_variable changed;
    PieceReader reader;
    std::size_t begun = 0;    // pieces that a worker has taken
    std::size_t fetched = 0;  // pieces that next() has taken
    std::map<std::size_t, Rendered> rendered;
    std::atomic<bool> stopped = false;
    std::atomic<std::int64_t> framesRendered = 0;  // those that two pieces have in common twice

    PhaseContinuation continuation;
    SpectralJoin joint;
    std::vector<float> ready;    // joined to what came before
    std::size_t given = 0;       // samples of it
    std::vector<float> leaving;  // what it has in common with the next piece
    bool ended = false;

    std::vector<std::thread> threads;
};

}  // namespace sound
