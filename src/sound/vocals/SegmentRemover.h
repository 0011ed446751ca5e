#pragma once

#include "engines/VocalRemoverEngine.h"
#include "sound/units/Frames.h"
#include "sound/vocals/VocalCanceller.h"
#include "sound/vocals/WaveInput.h"
#include "sound/vocals/WaveOutput.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sound {

/// Takes the voice out of segments of a file, one after the other in any order, into another file of the same form.
///
/// **Threads.** One at a time; others may work on the same two files with removers of their own.
class SegmentRemover
{
public:
    /// The files outlive it.
    SegmentRemover(const WaveInput& input, WaveOutput& output, const VoicePlace& place);

    const VocalCanceller& voiceCanceller() const { return canceller; }

    /// Of frames that the input has; the first one is a multiple of the canceller's grid. What the canceller has
    /// not changed stays the same to the bit. Done, CannotReadInput or CannotWriteOutput.
    VocalRemoval remove(FramePosition from, FrameCount count);

private:
    bool readAround(FramePosition from, FrameCount count);

    const WaveInput& input;
    WaveOutput& output;
    VocalCanceller canceller;
    std::vector<float> around;         // the segment between its surroundings
    std::vector<float> without;        // the segment without the voice
    std::vector<std::uint8_t> packed;  // what of the first is in the file
    std::span<std::uint8_t> segment;   // the segment in it
};

}  // namespace sound
