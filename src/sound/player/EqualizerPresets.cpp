#include "sound/player/EqualizerPresets.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sound {
namespace {

constexpr std::size_t bands = 10;
constexpr std::array<float, bands> centres{80, 170, 310, 600, 1000, 3000, 6000, 12000, 14000, 16000};

// The last three bands lie within half an octave and add up: what is wanted of the treble is spread over them.
constexpr std::array<std::array<float, bands>, equalizerPresets> gains{{
    // 80    170   310   600   1k    3k    6k    12k   14k   16k
    {+3.0F, +2.0F, +0.0F, -1.0F, +0.0F, +1.5F, +2.0F, +1.0F, +0.0F, -1.0F},  // Club: weight, and words above it
    {+5.0F, +3.0F, +0.0F, -2.0F, -2.5F, -1.0F, +1.5F, +1.5F, +1.0F, +0.0F},  // Dance: kick and hi-hat
    {+5.0F, +4.0F, +3.0F, +1.0F, +0.0F, -1.0F, -2.0F, -1.5F, -1.0F, -1.0F},  // Full Bass
    {+5.0F, +3.5F, +0.5F, -2.5F, -3.0F, -0.5F, +3.0F, +2.0F, +1.0F, +1.0F},  // Full Bass Treble
    {-3.0F, -3.0F, -2.5F, -1.5F, +0.0F, +2.5F, +4.0F, +2.0F, +1.0F, +1.5F},  // Full Treble
    {-6.0F, +3.0F, +4.0F, +1.5F, +0.0F, +1.0F, +2.5F, +1.0F, +0.5F, +0.0F},  // Laptop Speakers: the bass they have
    {+3.0F, +3.0F, +2.5F, +1.0F, +0.0F, -1.5F, -2.5F, -1.5F, -1.0F, -1.5F},  // Large Hall: air swallows the treble
    {-2.0F, +0.0F, +1.0F, +2.0F, +2.5F, +3.0F, +2.0F, +1.0F, +0.5F, +0.5F},  // Live: close to the stage
    {+4.5F, +3.0F, +0.0F, -1.0F, -1.0F, +0.0F, +2.0F, +1.5F, +0.5F, +1.0F},  // Party
    {-1.0F, +1.0F, +2.5F, +3.5F, +3.0F, +0.0F, -1.0F, -0.5F, -0.5F, -0.5F},  // Pop: the voice in front
    {+4.5F, +3.0F, +0.0F, -2.5F, -1.0F, +2.5F, +1.5F, +0.0F, -0.5F, -1.0F},  // Reggae: bass and off-beat chords
    {+4.0F, +2.5F, -1.5F, -3.0F, -1.5F, +1.5F, +3.0F, +1.5F, +1.0F, +1.0F},  // Rock: drums around the guitars
    {-1.5F, -1.0F, +0.0F, +1.5F, +2.5F, +3.5F, +3.0F, +1.0F, +0.5F, +0.5F},  // Ska: guitar strokes and brass
    {+1.5F, +0.5F, +0.0F, -1.0F, -1.5F, -3.0F, -2.5F, -1.0F, -0.5F, +0.0F},  // Soft: nothing sharp
    {+1.5F, +2.0F, +1.5F, +0.5F, -1.0F, -1.5F, +0.0F, +1.0F, +0.5F, +1.0F},  // Soft Rock
    {+4.5F, +2.0F, -1.0F, -3.0F, -3.5F, +0.5F, +3.5F, +1.0F, +0.5F, +0.5F},  // Techno: kick and sizzle
}};

}  // namespace

float presetGain(int preset, float frequency)
{
    const auto& curve = gains[static_cast<std::size_t>(preset)];
    const auto above = std::upper_bound(centres.begin(), centres.end(), frequency);
    if (above == centres.begin())
        return curve.front();
    const auto below = static_cast<std::size_t>(above - centres.begin() - 1);
    if (above == centres.end() || centres[below] == frequency)
        return curve[below];
    const float part = std::log2(frequency / centres[below]) / std::log2(*above / centres[below]);
    return std::lerp(curve[below], curve[below + 1], part);
}

}  // namespace sound
