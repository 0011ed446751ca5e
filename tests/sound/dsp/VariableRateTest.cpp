#include "sound/dsp/VariableRate.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"
#include "sound/dsp/SoundInput.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

std::vector<float> rendered(VariableRate& variable, FrameInput& input, std::int64_t frames, int channels = 1)
{
    std::vector<float> sound(static_cast<std::size_t>(frames * channels));
    for (std::int64_t begin = 0; begin < frames; begin += hundredth.value)
        variable.render(input, {std::min(hundredth.value, frames - begin)}, sound.data() + begin * channels);
    return sound;
}

/// Counts what is drawn from it.
class CountingInput : public SoundInput
{
public:
    using SoundInput::SoundInput;

    void next(FrameCount count, float* interleaved) override
    {
        SoundInput::next(count, interleaved);
        drawn += count.value;
    }

    std::int64_t drawn = 0;
};

/// A rising tone, of which every frame is known.
class SweepInput
{
public:
    /// Renders so many frames, each of which must be within half a frame of the place that is told for it.
    void expectToldPlaces(VariableRate& variable, std::int64_t frames)
    {
        std::vector<double> places;
        for (std::int64_t frame = 0; frame < frames; ++frame)
            places.push_back(variable.inputAt(static_cast<double>(frame)));
        const auto heard = rendered(variable, input, frames);
        for (std::size_t frame = 0; frame < heard.size(); ++frame) {
            const double time = places[frame] / cdRate.hertz;
            const double wanted = 0.5 * std::sin(turn * (300 * time + 150 * time * time));
            const double halfAFrame = 0.5 * 0.5 * turn * (300 + 300 * time) / cdRate.hertz;
            ASSERT_NEAR(heard[frame], wanted, halfAFrame) << "place " << places[frame];
        }
    }

    const MemorySound sound = sweepSound(cdRate, 300, 300, 12);
    SoundInput input{sound};
};

class VariableRateTest : public ::testing::Test
{
protected:
    VariableRateTest() { variable.prepare(1, hundredth); }

    std::vector<float> render(FrameInput& input, std::int64_t frames) { return rendered(variable, input, frames); }

    VariableRate variable;
};

class VariableRateSpeedTest : public VariableRateTest, public ::testing::WithParamInterface<double>
{
protected:
    const double speed = GetParam();
};

TEST_P(VariableRateSpeedTest, PitchFollowsTheSpeedToATenthOfACent)
{
    for (const double hertz : {55.0, 440.0, 3000.0}) {
        const MemorySound sound = sineSound(cdRate, 1, hertz, 4);
        SoundInput input(sound);
        variable.start(input, speed);
        const auto heard = render(input, 2 * cdRate.hertz);
        EXPECT_NEAR(centsBetween(measuredFrequency(heard, cdRate, hertz * speed), hertz * speed), 0, 0.01) << hertz;
    }
}

TEST_P(VariableRateSpeedTest, TheFirstFrameIsTheOneAskedFor)
{
    const MemorySound sound = noiseSound(cdRate, 1, {44100});
    SoundInput input(sound);
    variable.start(input, speed);
    EXPECT_NEAR(variable.inputAt(0), static_cast<double>(VariableRate::lead().value), speed / 2 + 1e-6);
}

// The phase of a rising tone tells which place of it is heard.
TEST_P(VariableRateSpeedTest, WhatIsHeardIsThePlaceThatIsTold)
{
    const MemorySound sound = sweepSound(cdRate, 300, 500, 8);
    SoundInput input(sound);
    variable.start(input, speed);
    const double first = variable.inputAt(0);
    constexpr std::int64_t frames = 4 * 44100;
    const auto heard = render(input, frames);
    EXPECT_NEAR(variable.inputAt(0), first + static_cast<double>(frames) * speed, 1e-3);

    std::vector<double> phases;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const double time = (first + static_cast<double>(frame) * speed) / cdRate.hertz;
        phases.push_back(turn * (300 * time + 250 * time * time));
    }
    const std::size_t window = 2048;
    const auto ahead = turnedAgainst(heard, phases, window);
    for (std::size_t index = 0; index < ahead.size(); ++index) {
        const double time = (first + static_cast<double>(index * window / 2 + window / 2) * speed) / cdRate.hertz;
        const double framesAhead = ahead[index] / turn / (300 + 500 * time) * cdRate.hertz;
        ASSERT_NEAR(framesAhead, 0, 0.3) << "window " << index;
    }
}

TEST_P(VariableRateSpeedTest, TheLevelIsKeptUpToTwoFifthsOfTheLowerRate)
{
    for (const double part : {0.001, 0.05, 0.1, 0.2, 0.3, 0.4}) {
        // Of the lower of the input's and the output's rate, both in the input's terms.
        const double hertz = part * cdRate.hertz * std::min(1.0, 1 / speed);
        const MemorySound sound = sineSound(cdRate, 1, hertz, 2);
        SoundInput input(sound);
        variable.start(input, speed);
        const auto heard = render(input, 44100);
        EXPECT_NEAR(decibels(amplitudeAt(heard, cdRate, hertz * speed), 0.5), 0, 0.1) << part;
    }
}

TEST_P(VariableRateSpeedTest, NothingIsHeardBesideTheTone)
{
    for (const double part : {0.01, 0.1, 0.25, 0.4}) {
        const double hertz = part * cdRate.hertz * std::min(1.0, 1 / speed);
        const MemorySound sound = sineSound(cdRate, 1, hertz, 2);
        SoundInput input(sound);
        variable.start(input, speed);
        const double first = variable.inputAt(0);
        const auto heard = render(input, 44100);
        std::vector<double> phases;
        for (std::size_t frame = 0; frame < heard.size(); ++frame)
            phases.push_back(turn * hertz * (first + static_cast<double>(frame) * speed) / cdRate.hertz);
        // What is left when the tone itself, at its measured level and phase, is taken out.
        const double ahead = turnedAgainst(heard, phases, heard.size()).front();
        const double amplitude = amplitudeAt(heard, cdRate, hertz * speed);
        std::vector<float> rest;
        for (std::size_t frame = 0; frame < heard.size(); ++frame)
            rest.push_back(static_cast<float>(heard[frame] - amplitude * std::sin(phases[frame] + ahead)));
        EXPECT_LT(decibels(levelOf(rest), levelOf(heard)), -80) << part;
    }
}

TEST_P(VariableRateSpeedTest, WhatTheOutputCannotCarryIsNotFoldedBack)
{
    if (speed <= 1.2)
        return;
    for (const double part : {0.6, 0.65, 0.7}) {  // of the output's rate
        const double hertz = part / speed * cdRate.hertz;
        if (hertz > 0.49 * cdRate.hertz)
            continue;
        const MemorySound sound = sineSound(cdRate, 1, hertz, 2);
        SoundInput input(sound);
        variable.start(input, speed);
        const auto heard = render(input, 44100);
        EXPECT_LT(decibels(levelOf(heard), levelOf(sound.interleaved())), -80) << part;
    }
}

INSTANTIATE_TEST_SUITE_P(Speeds, VariableRateSpeedTest, ::testing::Values(0.4, 0.63, 0.9, 1.0, 1.1, 1.37, 1.6),
                         [](const auto& row) {
                             return "At" + std::to_string(std::lround(row.param * 100)) + "PerCent";
                         });

TEST_F(VariableRateTest, APlaceIsToldAcrossChangesOfSpeed)
{
    SweepInput sweep;
    variable.start(sweep.input, 1.2);
    for (const double speed : {1.2, 0.4, 1.6, 0.95, 1.0, 1.001, 0.7, 1.3}) {
        variable.change(speed);
        // Odd pieces, so that changes fall anywhere in the resampler's own blocks.
        for (const std::int64_t piece : {1777, 3, 12'009, 501}) {
            const double first = variable.inputAt(0);
            sweep.expectToldPlaces(variable, piece);
            ASSERT_NEAR(variable.inputAt(0) - first, static_cast<double>(piece) * speed, 3);
        }
    }
}

TEST_F(VariableRateTest, ManyTinyChangesDoNotAddUpToAnError)
{
    SweepInput sweep;
    variable.start(sweep.input, 0.5);
    for (int step = 0; step < 500; ++step) {
        variable.change(0.5 + 0.002 * step);
        sweep.expectToldPlaces(variable, hundredth.value);
    }
}

TEST_F(VariableRateTest, AChangeOfSpeedDoesNotClick)
{
    const MemorySound sound = sineSound(cdRate, 1, 440, 6);
    SoundInput input(sound);
    variable.start(input, 1.6);
    const auto fast = render(input, 22050);
    auto heard = fast;
    for (const double speed : {0.4, 1.6, 0.9, 1.1, 1.6}) {
        variable.change(speed);
        const auto part = render(input, 4410);
        heard.insert(heard.end(), part.begin(), part.end());
    }
    EXPECT_LT(largestStep(heard), 1.1 * largestStep(fast));
}

TEST_F(VariableRateTest, StartingAnewNothingIsLeftOfTheSoundBefore)
{
    const MemorySound loud = sineSound(cdRate, 1, 3000, 2);
    const MemorySound silent = MemorySound::of(cdRate, 1, {44100}, [](std::int64_t, int) { return 0.0; });
    for (const double speed : {0.4, 1.0, 1.6}) {
        SoundInput loudInput(loud);
        variable.start(loudInput, 1.3);
        render(loudInput, 4410);
        SoundInput silentInput(silent);
        variable.start(silentInput, speed);
        const auto heard = render(silentInput, 4410);
        // A sound at half of full scale, 120 dB further down.
        expectClose(heard, std::vector<float>(heard.size(), 0.0F), 5e-7, 1, cdRate);
    }
}

TEST_F(VariableRateTest, StartingAnewSoundsAsTheFirstTime)
{
    const MemorySound sound = sweepSound(cdRate, 300, 500, 3);
    for (int time = 0; time < 20; ++time) {
        SoundInput input(sound);
        variable.start(input, 0.7 + 0.04 * time);
        const double first = variable.inputAt(0);
        EXPECT_NEAR(first, static_cast<double>(VariableRate::lead().value), 0.9);
        const auto heard = render(input, 4410);
        std::vector<float> wanted;
        for (int frame = 0; frame < 4410; ++frame) {
            const double moment = (first + frame * (0.7 + 0.04 * time)) / cdRate.hertz;
            wanted.push_back(static_cast<float>(0.5 * std::sin(turn * (300 * moment + 250 * moment * moment))));
        }
        expectClose(heard, wanted, 0.005, 1, cdRate);
    }
}

TEST_F(VariableRateTest, ItDrawsNoMoreThanItNeedsInBlocksOfAnySizeAndAfterAnyNumberOfStarts)
{
    const MemorySound sound = noiseSound(cdRate, 1, {441'000});
    for (const std::int64_t size : {1, 16, 80, 441}) {
        for (int time = 0; time < 20; ++time) {
            CountingInput input(sound);
            variable.start(input, 0.4 + 0.05 * time);
            std::vector<float> piece(static_cast<std::size_t>(size));
            for (std::int64_t frame = 0; frame < 8000; frame += size)
                variable.render(input, {size}, piece.data());
            EXPECT_LT(static_cast<double>(input.drawn) - variable.inputAt(0), 1024) << size << " start " << time;
        }
    }
}

TEST_F(VariableRateTest, BothChannelsAreHeardAlike)
{
    const MemorySound stereo = MemorySound::of(cdRate, 2, {88200}, [](std::int64_t frame, int channel) {
        return 0.5 * std::sin(turn * (channel == 0 ? 440 : 1000) * static_cast<double>(frame) / cdRate.hertz);
    });
    VariableRate both;
    both.prepare(2, hundredth);
    SoundInput input(stereo);
    both.start(input, 1.25);
    const auto heard = rendered(both, input, 44100, 2);
    for (const int channel : {0, 1}) {
        const auto channelSamples = channelOf(stereo.interleaved(), 2, channel);
        const MemorySound mono(cdRate, 1, channelSamples);
        SoundInput monoInput(mono);
        VariableRate one;
        one.prepare(1, hundredth);
        one.start(monoInput, 1.25);
        expectSame(channelOf(heard, 2, channel), rendered(one, monoInput, 44100), 1, cdRate);
    }
}

}  // namespace
