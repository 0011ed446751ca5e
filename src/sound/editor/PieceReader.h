#pragma once

#include "sound/editor/SourcePart.h"
#include "sound/units/Frames.h"

#include <vector>

namespace sound {

/// A stretch of a sound that is rendered on its own: what comes out of it, and the frames of the source for that.
struct Piece
{
    FramePosition begin;  ///< Of the output.
    FrameCount length;    ///< Of the output, with what it has in common with the next piece.
    bool last = false;

    FramePosition source;      ///< The frame of the source that @p begin stands for.
    FramePosition inputBegin;  ///< The frame that input begins with; silence before the sound's beginning.
    std::vector<float> input;
};

/// How a sound is cut into pieces.
struct Cutting
{
    double tempo = 1;   ///< Frames of the source a frame of the output.
    FrameCount length;  ///< Of the whole output.
    FrameCount piece;   ///< Of the output, about.
    FrameCount common;  ///< What two neighbours both render, and are joined in.
    FrameCount around;  ///< Frames of the source that a rendering reads beyond its own, before and behind.
};

/// Cuts a sound into pieces that overlap, each cut where the sound is calm: two renderings of an attack are never
/// quite at the same place, two renderings of a held note are.
///
/// **Threads.** One at a time.
class PieceReader
{
public:
    /// @p source outlives the reader.
    PieceReader(SourcePart& source, const Cutting& cutting);

    bool atEnd() const { return ended; }

    /// The next piece; not at the end.
    Piece next();

private:
    void readTo(FramePosition end);
    FramePosition sourceOf(FramePosition output) const;
    FramePosition calmest(FramePosition earliest, FramePosition latest) const;

    SourcePart& source;
    Cutting cutting;
    FramePosition regular;  // where the next piece would begin if all were as long
    FramePosition begin;    // where it does
    bool ended = false;
    std::vector<float> buffer;
    FramePosition bufferBegin;
};

}  // namespace sound
