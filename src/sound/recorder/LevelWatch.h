#pragma once

#include "sound/units/Frames.h"

#include <optional>
#include <span>

namespace sound {

/// Tells when the captured sound falls silent and when it comes back, to the frame.
///
/// A frame is loud where one of its channels lies above the threshold. Sound begins with a loud frame; silence has
/// come when the pause behind the last loud one is long enough. What was before the watch began counts as neither.
class LevelWatch
{
public:
    enum class Change
    {
        Silence,
        Sound,
    };

    /// How silence has to last where the shortest pause is 0: a tone swings through zero, a word has stops.
    static constexpr Milliseconds hangOver{300};

    explicit LevelWatch(SampleRate rate);

    /// 32767 is full scale.
    void setThreshold(int level);

    /// Of a pause that counts.
    void setShortestPause(Milliseconds pause);

    /// Forgets what has been: the next loud frame is a beginning, and a pause counts from here.
    void restart();

    struct Found
    {
        FrameCount before;  ///< Frames of the stretch that come before the change.
        Change change = Change::Silence;
    };

    /// Watches the stretch up to the first change in it, or all of it. Call it again with what is behind.
    std::optional<Found> watch(std::span<const float> stereo);

private:
    FrameCount longEnough() const;

    SampleRate rate;
    float threshold = 0;
    Milliseconds shortestPause{0};
    std::optional<Change> last;
    FrameCount pause;  // since the last loud frame
};

}  // namespace sound
