#include "sound/dsp/SampleRateConverter.h"

#include <soxr.h>
#include <cmath>

namespace sound {

void SampleRateConverter::Delete::operator()(soxr* resampler) const
{
    soxr_delete(resampler);
}

SampleRateConverter::SampleRateConverter(double from, double to, int channelCount)
    : ratio(to / from)
    , channels(channelCount)
{
    const soxr_io_spec_t io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
    const soxr_runtime_spec_t runtime = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    resampler.reset(soxr_create(from, to, static_cast<unsigned>(channels), &error, &io, &quality, &runtime));
}

SampleRateConverter::~SampleRateConverter() = default;

void SampleRateConverter::convert(std::span<const float> interleaved, std::vector<float>& converted)
{
    const std::size_t frames = interleaved.size() / static_cast<std::size_t>(channels);
    for (std::size_t done = 0; done < frames;) {
        std::size_t used = 0;
        const std::size_t given = process(interleaved.data() + done * static_cast<std::size_t>(channels),
                                          frames - done, converted, &used);
        if (used == 0 && given == 0)
            return;
        done += used;
    }
}

void SampleRateConverter::finish(std::vector<float>& converted)
{
    while (process(nullptr, 4096, converted, nullptr) > 0) {
    }
}

std::size_t SampleRateConverter::process(const float* from, std::size_t frames, std::vector<float>& converted,
                                         std::size_t* used)
{
    const auto stride = static_cast<std::size_t>(channels);
    const std::size_t before = converted.size();
    const auto room = static_cast<std::size_t>(std::ceil(static_cast<double>(frames) * ratio)) + 4096;
    converted.resize(before + room * stride);
    std::size_t given = 0;
    soxr_process(resampler.get(), from, from != nullptr ? frames : 0, used, converted.data() + before, room,
                 &given);
    converted.resize(before + given * stride);
    return given;
}

}  // namespace sound
