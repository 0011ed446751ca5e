#pragma once

#include <complex>
#include <cstddef>
#include <memory>
#include <vector>

struct fftwf_plan_s;

namespace sound {

using Spectrum = std::vector<std::complex<float>>;

/// The Fourier transform of real samples, by FFTW. There and back makes each sample size() times as large.
///
/// **Threads.** Each is used by one thread at a time; they are made and destroyed by any.
class RealTransform
{
public:
    explicit RealTransform(std::size_t size);
    ~RealTransform();
    RealTransform(const RealTransform&) = delete;
    RealTransform& operator=(const RealTransform&) = delete;

    std::size_t size() const { return time.size(); }
    std::size_t bins() const { return frequencies.size(); }

    /// From time to frequencies.
    void forward();

    /// From frequencies to time; the frequencies are used up.
    void backward();

    std::vector<float> time;
    Spectrum frequencies;

private:
    struct FreePlan
    {
        void operator()(fftwf_plan_s* plan) const;
    };
    using Plan = std::unique_ptr<fftwf_plan_s, FreePlan>;

    Plan there;
    Plan back;
};

}  // namespace sound
