#include "sound/dsp/RealTransform.h"

#include <fftw3.h>
#include <mutex>

namespace sound {
namespace {

// The library keeps what it knows of all plans in one place, without a lock of its own.
std::mutex planning;

}  // namespace

void RealTransform::FreePlan::operator()(fftwf_plan_s* plan) const
{
    const std::lock_guard lock(planning);
    fftwf_destroy_plan(plan);
}

RealTransform::RealTransform(std::size_t size)
    : time(size)
    , frequencies(size / 2 + 1)
{
    const std::lock_guard lock(planning);
    auto* ofFrequencies = reinterpret_cast<fftwf_complex*>(frequencies.data());
    const auto length = static_cast<int>(size);
    there.reset(fftwf_plan_dft_r2c_1d(length, time.data(), ofFrequencies, FFTW_ESTIMATE));
    back.reset(fftwf_plan_dft_c2r_1d(length, ofFrequencies, time.data(), FFTW_ESTIMATE));
}

RealTransform::~RealTransform() = default;

void RealTransform::forward()
{
    fftwf_execute(there.get());
}

void RealTransform::backward()
{
    fftwf_execute(back.get());
}

}  // namespace sound
