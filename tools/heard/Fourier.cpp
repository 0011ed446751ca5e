#include "heard/Fourier.h"

#include <fftw3.h>
#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <numeric>

namespace heard {

namespace {

fftw_complex* numbersOf(Spectrum& values)
{
    return reinterpret_cast<fftw_complex*>(values.data());  // which FFTW promises to be the same
}

}  // namespace

void FourierTransform::Destroy::operator()(fftw_plan_s* plan) const
{
    fftw_destroy_plan(plan);
}

FourierTransform::Plan FourierTransform::planOf(std::size_t size, int sign)
{
    Spectrum values(size);  // an estimate does not touch them, and any others may be transformed
    return Plan(fftw_plan_dft_1d(static_cast<int>(size), numbersOf(values), numbersOf(values), sign,
                                 FFTW_ESTIMATE | FFTW_UNALIGNED));
}

FourierTransform::FourierTransform(std::size_t size)
    : forwardPlan(planOf(size, FFTW_FORWARD))
    , backwardPlan(planOf(size, FFTW_BACKWARD))
{
}

void FourierTransform::forward(Spectrum& values) const
{
    fftw_execute_dft(forwardPlan.get(), numbersOf(values), numbersOf(values));
}

void FourierTransform::backward(Spectrum& values) const
{
    fftw_execute_dft(backwardPlan.get(), numbersOf(values), numbersOf(values));
}

std::size_t powerOfTwoFrom(std::size_t atLeast)
{
    return std::bit_ceil(std::max<std::size_t>(atLeast, 2));
}

std::vector<double> hannWindow(std::size_t size)
{
    std::vector<double> window(size);
    for (std::size_t i = 0; i < size; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(size);
        window[i] = .5 - .5 * std::cos(2 * std::numbers::pi * part);
    }
    return window;
}

Correlator::Correlator(const std::vector<double>& signal)
    : length(signal.size())
    , fourier(powerOfTwoFrom(2 * length))
    , spectrum(powerOfTwoFrom(2 * length))
{
    std::copy(signal.begin(), signal.end(), spectrum.begin());
    fourier.forward(spectrum);
}

std::vector<double> Correlator::with(const std::vector<double>& other) const
{
    Spectrum product(spectrum.size());
    std::copy_n(other.begin(), std::min(other.size(), length), product.begin());  // what is beyond meets only zeros
    fourier.forward(product);
    std::transform(spectrum.begin(), spectrum.end(), product.begin(), product.begin(),
                   [](const auto& one, const auto& two) { return one * std::conj(two); });
    fourier.backward(product);

    std::vector<double> sums(length);
    const auto scale = static_cast<double>(product.size());
    std::transform(product.begin(), product.begin() + static_cast<std::ptrdiff_t>(length), sums.begin(),
                   [scale](const auto& value) { return value.real() / scale; });
    return sums;
}

std::vector<double> sumsUpTo(const std::vector<double>& values)
{
    std::vector<double> sums(values.size() + 1);
    std::partial_sum(values.begin(), values.end(), sums.begin() + 1);
    return sums;
}

std::vector<double> energiesUpTo(const std::vector<double>& values)
{
    std::vector<double> squares(values.size());
    std::transform(values.begin(), values.end(), squares.begin(), [](double value) { return value * value; });
    return sumsUpTo(squares);
}

}  // namespace heard
