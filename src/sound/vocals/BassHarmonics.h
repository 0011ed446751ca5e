#pragma once

#include <cstddef>
#include <vector>

namespace sound {

/// Tells how strong the harmonics of a bass are likely to be.
///
/// A bass stands where most voices stand, in the middle, and no direction parts the two. But its fundamental lies
/// below the voice, and its harmonics at the multiples of that, each about as weak as plucked and bowed strings
/// have it: with the square of its number.
class BassHarmonics
{
public:
    /// @p binWidth in hertz. Fundamentals are looked for below @p lowest, in hertz as well; the harmonics are told
    /// from there on.
    BassHarmonics(double binWidth, double lowest);

    /// How many bins from 0 on raise() looks at.
    std::size_t bins() const { return below + 1; }

    /// The bin behind the last one that raise() changes.
    std::size_t end() const { return behind; }

    /// @p low holds the power of bins() bins. Raises each number of @p power, that of bin 0 first and of end()
    /// bins, to the power that a harmonic is likely to have there.
    void raise(const float* low, float* power) const;

private:
    void raiseHarmonics(float fundamental, float strength, float* power) const;

    std::size_t first = 0;  // the lowest bin that may be a fundamental
    std::size_t below = 0;  // the first that may not
    std::size_t from = 0;   // the first bin that is raised
    std::size_t behind = 0;
};

}  // namespace sound
