#pragma once

#include "sound/dsp/Changes.h"
#include "sound/editor/PieceReader.h"
#include "sound/units/Frames.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace RubberBand {
class RubberBandStretcher;
}

namespace sound {

/// Stretches pieces of a sound one after the other: Rubber Band's R3 engine in its offline mode, which gives
/// exactly as many frames as theory wants, and its best quality. The same piece comes out the same, whatever was
/// stretched before.
///
/// **Threads.** One at a time.
class PieceStretcher
{
public:
    /// Of @p changes the tempo and the pitch count.
    PieceStretcher(SampleRate rate, int channels, const Changes& changes);
    ~PieceStretcher();

    /// How many frames of the source a piece's input holds before its own, and behind them: so much sounds on
    /// around a place.
    static FrameCount around(SampleRate rate);

    /// The piece's output, interleaved; whatever has come so far where @p stop becomes true. Adds to
    /// @p framesRendered as they come.
    std::vector<float> render(const Piece& piece, const std::atomic<bool>& stop,
                              std::atomic<std::int64_t>& framesRendered);

private:
    void pass(const std::vector<float>& interleaved, std::size_t first, std::size_t frames);
    void take(std::size_t& toDrop, std::size_t wanted, std::vector<float>& interleaved);

    std::size_t channels;
    double tempo;
    std::unique_ptr<RubberBand::RubberBandStretcher> stretcher;
    std::vector<std::vector<float>> planes;
    std::vector<float*> planePointers;
};

}  // namespace sound
