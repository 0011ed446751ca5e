#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace heard {

using Spectrum = std::vector<std::complex<double>>;

/// The discrete Fourier transform of one length, a power of two, and its inverse without the division by the
/// length; both in place.
class FourierTransform
{
public:
    explicit FourierTransform(std::size_t size);

    void forward(Spectrum& values) const { butterflies(values, false); }
    void backward(Spectrum& values) const { butterflies(values, true); }

private:
    void butterflies(Spectrum& values, bool backward) const;

    Spectrum turns;
};

std::size_t powerOfTwoFrom(std::size_t atLeast);

/// The sum of a[i + lag] * b[i] over all i, for each lag from 0 to the length of @p a less one; beyond its ends a
/// signal is 0.
std::vector<double> correlation(const std::vector<double>& a, const std::vector<double>& b);

}  // namespace heard
