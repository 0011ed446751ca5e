#pragma once

#include "sound/units/Frames.h"

#include <array>
#include <cstddef>

namespace sound {

/// One band of an equalizer.
struct EqualizerBand
{
    float frequency = 0;  ///< Hertz.
    float bandwidth = 0;  ///< Semitones between the points of half the gain.
    float gain = 0;       ///< Decibels.

    bool operator==(const EqualizerBand&) const = default;
};

/// The bands of one player, as they travel from the main thread to the render thread.
struct EqualizerBands
{
    static constexpr std::size_t capacity = 16;

    std::array<EqualizerBand, capacity> band{};
    std::size_t count = 0;
    bool enabled = false;
};

/// A row of peaking filters for a stereo sound. With all gains at rest at 0 not a bit of the sound is changed.
///
/// Each band is a state variable filter in the trapezoidal form of A. Simper ("Solving the continuous SVF equations
/// using trapezoidal integration and equivalent currents", 2013), which stays stable and free of clicks while its
/// gain moves. Gains glide to their targets without a corner, within a twentieth of a second from end to end of
/// their range. A band whose centre the sample rate can't carry is left out. Render thread; allocates nothing.
class Equalizer
{
public:
    void prepare(SampleRate rate);
    void set(const EqualizerBands& bands);

    /// Jumps to the gains set last and forgets the sound so far.
    void settle();

    void process(float* stereo, FrameCount count);

private:
    struct Filter
    {
        float frequency = 0;
        float bandwidth = 0;
        double gain = 0;
        double speed = 0;  // decibels a frame
        float target = 0;
        // The centre and the width as the filter sees them, the coefficients of the present gain, and two
        // integrators a side.
        double warpedCentre = 0, damping = 0;
        double a1 = 1, a2 = 0, a3 = 0, m1 = 0;
        std::array<double, 2> first{}, second{};

        void place(double rate);
        void tune();
        void glide(double pull);
        float filtered(float sample, std::size_t side);
    };

    std::array<Filter, EqualizerBands::capacity> filters{};
    std::size_t count = 0;
    double hertz = 44100;
    double pull = 1;
};

}  // namespace sound
