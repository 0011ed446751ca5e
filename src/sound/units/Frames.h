#pragma once

#include <chrono>
#include <compare>
#include <cstdint>

/// Units of the sound half. A frame is one sample of every channel. Positions, counts, rates and milliseconds are
/// types of their own so that they do not mix by accident; every conversion and its rounding is here.
namespace sound {

/// A number of frames.
struct FrameCount
{
    std::int64_t value = 0;

    constexpr auto operator<=>(const FrameCount&) const = default;
};

/// A place in a sound: the frame of this index, 0 the first.
struct FramePosition
{
    std::int64_t value = 0;

    constexpr auto operator<=>(const FramePosition&) const = default;
};

constexpr FrameCount operator+(FrameCount a, FrameCount b)
{
    return {a.value + b.value};
}
constexpr FrameCount operator-(FrameCount a, FrameCount b)
{
    return {a.value - b.value};
}
constexpr FramePosition operator+(FramePosition a, FrameCount b)
{
    return {a.value + b.value};
}
constexpr FramePosition operator-(FramePosition a, FrameCount b)
{
    return {a.value - b.value};
}
constexpr FrameCount operator-(FramePosition a, FramePosition b)
{
    return {a.value - b.value};
}
constexpr FramePosition endOf(FrameCount length)
{
    return {length.value};
}

/// Frames a second.
struct SampleRate
{
    int hertz = 0;

    constexpr auto operator<=>(const SampleRate&) const = default;
};

using Milliseconds = std::chrono::milliseconds;

/// The frame nearest to a moment, halves up. For rates of 1000 Hz and more millisecondsAt() of it gives the same
/// millisecond again.
FramePosition frameAt(Milliseconds moment, SampleRate rate);

/// The millisecond nearest to a frame, halves up; beyond 32 bits it stays at their largest value.
Milliseconds millisecondsAt(FramePosition position, SampleRate rate);

/// How long so many frames sound, to the nearest millisecond.
Milliseconds durationOf(FrameCount length, SampleRate rate);

/// How many frames sound in this time, to the nearest.
FrameCount framesIn(std::chrono::microseconds time, SampleRate rate);

}  // namespace sound
