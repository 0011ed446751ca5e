#include "heard/Fourier.h"

#include <algorithm>
#include <bit>
#include <numbers>
#include <utility>

namespace heard {

namespace {

void sortByReversedBits(Spectrum& values)
{
    for (std::size_t i = 1, reversed = 0; i < values.size(); ++i) {
        std::size_t bit = values.size() >> 1;
        for (; (reversed & bit) != 0; bit >>= 1) {
            reversed ^= bit;
        }
        reversed ^= bit;
        if (i < reversed) {
            std::swap(values[i], values[reversed]);
        }
    }
}

}  // namespace

FourierTransform::FourierTransform(std::size_t size)
    : turns(size / 2)
{
    for (std::size_t i = 0; i < turns.size(); ++i) {
        turns[i] = std::polar(1.0, -2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size));
    }
}

void FourierTransform::butterflies(Spectrum& values, bool backward) const
{
    sortByReversedBits(values);
    for (std::size_t half = 1; half < values.size(); half *= 2) {
        const std::size_t stride = turns.size() / half;
        for (std::size_t block = 0; block < values.size(); block += 2 * half) {
            for (std::size_t i = 0; i < half; ++i) {
                const std::complex<double> turn = backward ? std::conj(turns[i * stride]) : turns[i * stride];
                std::complex<double>& first = values[block + i];
                std::complex<double>& second = values[block + i + half];
                const std::complex<double> turned = second * turn;
                second = first - turned;
                first += turned;
            }
        }
    }
}

std::size_t powerOfTwoFrom(std::size_t atLeast)
{
    return std::bit_ceil(std::max<std::size_t>(atLeast, 2));
}

std::vector<double> correlation(const std::vector<double>& a, const std::vector<double>& b)
{
    const std::size_t size = powerOfTwoFrom(a.size() + b.size());
    const FourierTransform fourier(size);
    Spectrum product(size);
    Spectrum other(size);
    std::copy(a.begin(), a.end(), product.begin());
    std::copy(b.begin(), b.end(), other.begin());
    fourier.forward(product);
    fourier.forward(other);
    std::transform(product.begin(), product.end(), other.begin(), product.begin(),
                   [](const auto& one, const auto& two) { return one * std::conj(two); });
    fourier.backward(product);

    std::vector<double> sums(a.size());
    std::transform(product.begin(), product.begin() + static_cast<std::ptrdiff_t>(a.size()), sums.begin(),
                   [size](const auto& value) { return value.real() / static_cast<double>(size); });
    return sums;
}

}  // namespace heard
