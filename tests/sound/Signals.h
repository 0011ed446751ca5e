#pragma once

#include "sound/media/SampleSource.h"

#include <functional>
#include <numbers>
#include <span>
#include <vector>

/// Sounds that a test makes, and what it measures of sounds that it hears.
namespace sound::test {

/// That of a CD, for sounds that might have any.
inline constexpr SampleRate cdRate{44100};

/// What outputs ask for at once, at that rate: a hundredth of a second.
inline constexpr FrameCount hundredth{441};

/// In radians.
inline constexpr double turn = 2 * std::numbers::pi;

/// How many times higher a sound is by so many semitones.
double pitchOf(int semitones);

/// A sound in memory, all decoded; or only up to a place that the test moves.
class MemorySound : public SampleSource
{
public:
    MemorySound(SampleRate rate, int channels, std::vector<float> interleaved);

    /// A sound whose sample in channel c at frame n is @p wave(n, c).
    static MemorySound of(SampleRate rate, int channels, FrameCount length,
                          const std::function<double(std::int64_t, int)>& wave);

    SampleRate rate() const override { return soundRate; }
    int channels() const override { return channelCount; }
    FrameCount length() const override;
    FrameCount available() const override { return decoded; }
    void read(FramePosition from, FrameCount count, float* interleaved) const override;
    void willReadNear(FramePosition) const override {}

    float sample(std::int64_t frame, int channel) const;
    const std::vector<float>& interleaved() const { return samples; }

    void setAvailable(FrameCount count) { decoded = count; }

private:
    SampleRate soundRate;
    int channelCount;
    std::vector<float> samples;
    FrameCount decoded;
};

/// A sine of this frequency at half of full scale.
MemorySound sineSound(SampleRate rate, int channels, double hertz, double seconds);

/// A sine whose frequency rises evenly: what is heard tells by its frequency which moment of the sound it is.
MemorySound sweepSound(SampleRate rate, double firstHertz, double hertzASecond, double seconds);

/// White noise of a fixed seed, at a quarter of full scale.
MemorySound noiseSound(SampleRate rate, int channels, FrameCount length, unsigned seed = 1);

/// One channel of an interleaved sound.
std::vector<float> channelOf(std::span<const float> interleaved, int channels, int channel);

/// The frequency of a steady tone, from the phase of its component near @p expected at many places: exact to better
/// than a hundredth of a cent over a few seconds.
double measuredFrequency(std::span<const float> mono, SampleRate rate, double expected);

/// Hundredths of a semitone from @p reference to @p hertz.
double centsBetween(double hertz, double reference);

/// The amplitude of the component at @p hertz.
double amplitudeAt(std::span<const float> mono, SampleRate rate, double hertz);

/// The gain in decibels, at any frequency up to half the rate, of what answers so to an impulse.
double answeredGain(std::span<const float> answer, SampleRate rate, double hertz);

bool allFinite(std::span<const float> samples);

/// The largest difference between neighbouring samples.
double largestStep(std::span<const float> mono);

/// The largest difference between neighbouring steps: a click in a slow wave stands out in it.
double largestBend(std::span<const float> mono);

/// The root of the mean square.
double levelOf(std::span<const float> mono);

/// Amplitude of @p part against @p whole in decibels.
double decibels(double part, double whole);

/// How far a wave runs ahead of the sine of these phases (radians, one a frame), in radians: one value a window of
/// so many frames, which begin half a window apart. Values are continued over full turns.
std::vector<double> turnedAgainst(std::span<const float> mono, std::span<const double> phases, std::size_t window);

}  // namespace sound::test
