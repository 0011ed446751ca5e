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
/// gain moves. Gains move over a few milliseconds, a step every few frames. A band whose centre the sample rate
/// can't carry is left out. Render thread; allocates nothing.
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
        float gain = 0;
        float target = 0;
        // Coefficients of the present gain, and two integrators a side.
        double a1 = 1, a2 = 0, a3 = 0, m1 = 0;
        std::array<double, 2> first{}, second{};

        void tune(double hertz);
    };

    void step(Filter& filter) const;

    std::array<Filter, EqualizerBands::capacity> filters{};
    std::size_t count = 0;
    double hertz = 44100;
    float stepDecibels = 1;
};

}  // namespace sound
