#pragma once

#include "sound/units/Frames.h"

#include <array>
#include <cstddef>

namespace sound {

/// One band of an equalizer.
struct EqualizerBand
{
    static constexpr float greatestGain = 15;        ///< Either way.
    static constexpr float greatestBandwidth = 120;  ///< Ten octaves.

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
/// Each band follows the analog peaking filter of its centre, width and gain up to half the sample rate. A digital
/// filter that is made from it by the bilinear transform alone gains nothing at half the rate: its bands are
/// squeezed together there, and one at 16 kHz is widened far into the treble below it. Here a band has
/// - its gain at its centre, and nowhere more of it,
/// - half its gain, in decibels, half the bandwidth below its centre,
/// - no gain at 0 Hz, and at half the rate the gain that the analog filter has there,
/// all four exactly; in between it stays within a twelfth of its gain in decibels of the analog filter, at
/// centres below a fifteenth of the rate within a hundredth. (That the gain at half the rate is prescribed is S. J.
/// Orfanidis' idea, "Digital Parametric Equalizer Design With Prescribed Nyquist-Frequency Gain", 1997.) A band
/// whose centre the rate can't carry is left out.
///
/// It runs as a state variable filter in the trapezoidal form of A. Simper ("Solving the continuous SVF equations
/// using trapezoidal integration and equivalent currents", 2013), which stays stable and free of clicks while its
/// gain moves. Gains glide to their targets without a corner, within a twentieth of a second from end to end of
/// their range. Render thread; allocates nothing.
class Equalizer
{
public:
    void prepare(SampleRate rate);

    /// Gains are finite; frequencies and widths are above 0.
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

        // What the rate makes of centre and width. Frequencies are squares of the tangent of half their angle.
        bool carried = false;
        double centre = 0;
        double lowerEdge = 0;
        double detuning = 0;  // squared: how far half the rate lies from the centre
        double width = 0;     // squared: of the analog filter

        // The coefficients of the present gain, and two integrators a side.
        double a1 = 1, a2 = 0, a3 = 0, m0 = 1, m1 = 0, m2 = 0;
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
