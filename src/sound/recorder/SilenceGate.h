#pragma once

#include "sound/units/Frames.h"

#include <span>
#include <vector>

namespace sound {

/// Leaves silence out of a sound, as a hand on the pause button would that knew in advance when the music starts.
///
/// It opens a lead-in before the moment at which it is told to, so that no attack is cut, and does not click: where
/// frames are left out, what is before and behind them is faded for a moment. Frames come out a moment later than
/// they go in.
class SilenceGate
{
public:
    static constexpr Milliseconds leadIn{100};
    static constexpr Milliseconds fade{10};

    explicit SilenceGate(SampleRate rate);

    /// Closed, and nothing held.
    void reset();

    /// From the next frame on.
    void open();
    void close(std::vector<float>& kept);

    /// Adds to @p kept what of these frames, and of those before, goes on.
    void pass(std::span<const float> stereo, std::vector<float>& kept);

    /// Adds what is still held: the sound goes on without a gate.
    void release(std::vector<float>& kept);

    bool isOpen() const { return opened; }

private:
    void keepAll(std::vector<float>& kept);

    std::size_t leadInFrames;
    std::size_t fadeFrames;
    bool opened = false;
    bool hasDropped = false;  // before what is held
    std::vector<float> held;
};

}  // namespace sound
