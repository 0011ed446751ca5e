#pragma once

#include <memory>
#include <span>
#include <vector>

struct soxr;

namespace sound {

/// Brings a sound to another sample rate, as for a master: libsoxr at its very high quality, whose errors lie below
/// the 24th bit. The first frame that comes out is the first that went in.
///
/// **Threads.** One at a time.
class SampleRateConverter
{
public:
    /// @p from frames of the input become @p to frames of the output; neither need be whole.
    SampleRateConverter(double from, double to, int channels);
    ~SampleRateConverter();

    /// Adds what comes out of these frames, and of those before, to @p converted.
    void convert(std::span<const float> interleaved, std::vector<float>& converted);

    /// Adds what is still inside. Nothing may follow.
    void finish(std::vector<float>& converted);

private:
    struct Delete
    {
        void operator()(soxr* resampler) const;
    };

    std::size_t process(const float* from, std::size_t frames, std::vector<float>& converted, std::size_t* used);

    double ratio;
    int channels;
    std::unique_ptr<soxr, Delete> resampler;
};

}  // namespace sound
