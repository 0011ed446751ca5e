#include "sound/dsp/SampleRateConverter.h"

#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <ostream>

using namespace sound;
using namespace sound::test;

namespace {

struct Conversion
{
    int from;
    int to;
    double hertz;
};

void PrintTo(const Conversion& conversion, std::ostream* out)
{
    *out << conversion.hertz << " Hz from " << conversion.from << " to " << conversion.to;
}

std::vector<float> converted(const MemorySound& sound, double to)
{
    SampleRateConverter converter(sound.rate().hertz, to, sound.channels());
    std::vector<float> result;
    const std::size_t piece = 5000 * static_cast<std::size_t>(sound.channels());
    for (std::span<const float> rest(sound.interleaved()); !rest.empty();) {
        const auto now = rest.first(std::min(piece, rest.size()));
        converter.convert(now, result);
        rest = rest.subspan(now.size());
    }
    converter.finish(result);
    return result;
}

class SampleRateConverterTest : public ::testing::TestWithParam<Conversion>
{
};

// The sine of this frequency that is nearest to what came is taken out of it: its level and its place are what
// theory says, and what is left was added.
TEST_P(SampleRateConverterTest, ASineComesOutInItsPlaceWithNothingAdded)
{
    const Conversion asked = GetParam();
    const std::vector<float> out = converted(sineSound({asked.from}, 1, asked.hertz, 2), asked.to);
    EXPECT_NEAR(static_cast<double>(out.size()), 2.0 * asked.to, 1);

    const auto edge = static_cast<std::size_t>(asked.to) / 4;  // the sine begins and ends like a step
    const auto angle = [&](std::size_t frame) {
        return 2 * std::numbers::pi * asked.hertz * static_cast<double>(frame) / asked.to;
    };
    // Over whole seconds, so of whole periods: sine and cosine do not mix.
    const auto second = static_cast<std::size_t>(asked.to);
    double ofSine = 0;
    double ofCosine = 0;
    for (std::size_t frame = edge; frame < edge + second; ++frame) {
        ofSine += 2 * out[frame] * std::sin(angle(frame)) / static_cast<double>(second);
        ofCosine += 2 * out[frame] * std::cos(angle(frame)) / static_cast<double>(second);
    }
    EXPECT_NEAR(decibels(std::hypot(ofSine, ofCosine), 0.5), 0, 0.01);
    EXPECT_NEAR(std::atan2(ofCosine, ofSine), 0, 1e-5);

    std::vector<float> added;
    for (std::size_t frame = edge; frame < edge + second; ++frame)
        added.push_back(
            static_cast<float>(out[frame] - ofSine * std::sin(angle(frame)) - ofCosine * std::cos(angle(frame))));
    // In all of the band together; a float's own rounding lies at -150 dB.
    EXPECT_LT(decibels(levelOf(added), 0.5 / std::numbers::sqrt2), -130);
}

INSTANTIATE_TEST_SUITE_P(Tones, SampleRateConverterTest,
                         ::testing::Values(Conversion{48000, 44100, 55}, Conversion{48000, 44100, 1000},
                                           Conversion{48000, 44100, 19000}, Conversion{96000, 44100, 1000},
                                           Conversion{96000, 44100, 18000}, Conversion{8000, 44100, 440},
                                           Conversion{8000, 44100, 3400}, Conversion{192000, 44100, 5000},
                                           Conversion{44100, 48000, 997}, Conversion{22050, 44100, 9000},
                                           Conversion{44100, 192000, 15000}, Conversion{192000, 8000, 3000}));

TEST(SampleRateConverterTest, WhatTheNewRateCannotHoldIsGone)
{
    const std::vector<float> out = converted(sineSound({96000}, 1, 30000, 2), 44100);
    const std::span<const float> steady = std::span(out).subspan(11025, 66150);
    EXPECT_LT(decibels(levelOf(steady), 0.5), -120);
}

TEST(SampleRateConverterTest, TheFirstFrameIsTheFirst)
{
    // A smooth bump, whose middle is at 50 ms.
    for (const int to : {44100, 96000}) {
        const MemorySound bump = MemorySound::of({48000}, 1, {9600}, [](std::int64_t frame, int) {
            return 0.8 * std::exp(-std::pow((static_cast<double>(frame) - 2400) / 240, 2));
        });
        const std::vector<float> out = converted(bump, to);
        double weights = 0;
        double places = 0;
        for (std::size_t frame = 0; frame < out.size(); ++frame) {
            weights += out[frame];
            places += static_cast<double>(frame) * out[frame];
        }
        EXPECT_NEAR(places / weights, 0.05 * to, 0.001);
    }
}

TEST(SampleRateConverterTest, ChannelsStayApart)
{
    const MemorySound sound = MemorySound::of({48000}, 2, {48000}, [](std::int64_t frame, int channel) {
        return channel == 0 ? 0.5 * std::sin(2 * std::numbers::pi * 0.01 * static_cast<double>(frame)) : 0.0;
    });
    const std::vector<float> out = converted(sound, 44100);
    EXPECT_EQ(levelOf(channelOf(out, 2, 1)), 0);
    EXPECT_NEAR(amplitudeAt(channelOf(out, 2, 0), {44100}, 480), 0.5, 0.001);
}

TEST(SampleRateConverterTest, ShortSoundsComeOutToo)
{
    for (const std::int64_t frames : {0, 1, 2, 100}) {
        const std::vector<float> out = converted(noiseSound({48000}, 1, {frames}), 44100);
        EXPECT_NEAR(static_cast<double>(out.size()), static_cast<double>(frames) * 44100 / 48000, 1);
    }
}

}  // namespace
