#pragma once

#include <complex>
#include <cstddef>
#include <memory>
#include <vector>

struct fftwf_plan_s;

namespace sound {

using Spectrum = std::vector<std::complex<float>>;

/// Takes short stretches of a sound apart into spectra and puts them together again, under a window both times.
/// Spectra that are taken step() apart, and put back where they were, add up to the sound.
///
/// **Threads.** One at a time; the constructor and destructor not at the same time as another one's.
class WindowedTransform
{
public:
    /// @p windowSize in frames, a power of two from 16.
    explicit WindowedTransform(std::size_t windowSize);
    ~WindowedTransform();
    WindowedTransform(const WindowedTransform&) = delete;
    WindowedTransform& operator=(const WindowedTransform&) = delete;

    static constexpr std::size_t stepsAWindow = 8;
    std::size_t size() const { return window.size(); }
    std::size_t step() const { return window.size() / stepsAWindow; }
    std::size_t bins() const { return window.size() / 2 + 1; }

    /// Of size() samples, each @p stride behind the last; @p spectrum holds bins().
    void analyse(const float* first, std::size_t stride, Spectrum& spectrum);

    /// Adds what @p spectrum stands for to size() samples, each @p stride behind the last.
    void add(const Spectrum& spectrum, float* first, std::size_t stride);

    /// How much of the sound one spectrum brings back at this frame of its window; step() apart they add up to 1.
    float share(std::size_t frame) const { return window[frame] * window[frame] / overlap; }

private:
    struct FreePlan
    {
        void operator()(fftwf_plan_s* plan) const;
    };
    using Plan = std::unique_ptr<fftwf_plan_s, FreePlan>;

    // The squares of the windows that lie over one frame add up to this.
    static constexpr float overlap = 3.0F / 8 * stepsAWindow;

    std::vector<float> window;
    std::vector<float> time;
    Spectrum frequencies;
    Plan forward;
    Plan backward;
};

}  // namespace sound
