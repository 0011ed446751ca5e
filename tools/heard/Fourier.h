#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <memory>
#include <vector>

struct fftw_plan_s;

namespace heard {

using Spectrum = std::vector<std::complex<double>>;

/// The discrete Fourier transform of one length, and its inverse without the division by the length; both in place.
class FourierTransform
{
public:
    explicit FourierTransform(std::size_t size);

    void forward(Spectrum& values) const;
    void backward(Spectrum& values) const;

private:
    struct Destroy
    {
        void operator()(fftw_plan_s* plan) const;
    };
    using Plan = std::unique_ptr<fftw_plan_s, Destroy>;

    static Plan planOf(std::size_t size, int sign);

    Plan forwardPlan;
    Plan backwardPlan;
};

std::size_t powerOfTwoFrom(std::size_t atLeast);

/// How large a value is; quicker than std::abs, which takes care of what is too large or too small to be squared.
inline double magnitudeOf(const std::complex<double>& value)
{
    return std::sqrt(std::norm(value));
}

/// Weights that rise from 0 and fall again, as a raised cosine does.
std::vector<double> hannWindow(std::size_t size);

/// A signal to correlate others with.
class Correlator
{
public:
    explicit Correlator(const std::vector<double>& signal);

    /// The sum of signal[i + lag] * other[i] over all i, for each lag from 0 to the signal's length less one;
    /// beyond its ends a signal is 0.
    std::vector<double> with(const std::vector<double>& other) const;

private:
    std::size_t length;
    FourierTransform fourier;
    Spectrum spectrum;
};

/// The sum of all values before each place, and behind the last.
std::vector<double> sumsUpTo(const std::vector<double>& values);

/// That of their squares.
std::vector<double> energiesUpTo(const std::vector<double>& values);

}  // namespace heard
