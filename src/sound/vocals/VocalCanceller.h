#pragma once

#include "sound/units/Frames.h"

#include <memory>
#include <span>

namespace sound {

/// Where in a stereo sound the voice is.
struct VoicePlace
{
    /// Hertz. What lies below the first and above the second passes untouched; where the second is not above the
    /// first, everything does, to the bit.
    double lowCutOff = 200;
    double highCutOff = 8000;

    /// -100 the very left, 0 the centre, 100 the very right.
    int pan = 0;
};

/// Takes a voice out of stretches of a stereo sound.
///
/// The stretches of a sound may be taken in any order, each with a canceller of its own or with the same: what
/// comes out of a stretch depends on it and its surroundings alone. Stretches that begin at multiples of grid()
/// meet bit for bit, as if the sound had been taken in one piece.
///
/// **Threads.** Each canceller is used by one thread at a time; cancellers are made and destroyed by any.
class VocalCanceller
{
public:
    VocalCanceller(SampleRate rate, const VoicePlace& place);
    ~VocalCanceller();

    /// How many frames before and behind a stretch its result depends on.
    FrameCount surroundings() const;
    FrameCount grid() const;

    /// @p from holds surroundings(), the stretch, and surroundings() again, interleaved left and right, with zeros
    /// where the sound has none; @p to has room for the stretch.
    void remove(std::span<const float> from, std::span<float> to);

private:
    class Work;
    std::unique_ptr<Work> work;
};

}  // namespace sound
