#include "sound/player/PlayPath.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

std::vector<float> rendered(PlayPath& path, std::int64_t frames, int channels = 1)
{
    std::vector<float> heard(static_cast<std::size_t>(frames * channels));
    for (std::int64_t done = 0; done < frames; done += hundredth.value)
        path.render({std::min(hundredth.value, frames - done)}, heard.data() + done * channels);
    return heard;
}

class PlayPathTest : public ::testing::Test
{
protected:
    PlayPathTest() { path.prepare(cdRate, 1, hundredth); }

    std::vector<float> render(std::int64_t frames) { return rendered(path, frames); }

    PlayPath path;
};

TEST_F(PlayPathTest, UnchangedEveryFrameIsTheSoundsOwn)
{
    const MemorySound noise = noiseSound(cdRate, 2, {44100});
    PlayPath stereo;
    stereo.prepare(cdRate, 2, hundredth);
    stereo.start(noise, wholeOf(noise.length()), {1234}, {});
    const auto heard = rendered(stereo, 20'000, 2);
    expectSame(heard, std::span(noise.interleaved()).subspan(2 * 1234, 2 * 20'000), 2, cdRate);
    EXPECT_EQ(stereo.position(), 21'234);
    EXPECT_EQ(stereo.position(10), 21'244);
}

TEST_F(PlayPathTest, OnlyWhatIsInTheWayAlreadyCanBeChangedLive)
{
    const MemorySound noise = noiseSound(cdRate, 1, {44100});
    const Changes none;
    const Changes tempo{0.8, 1, 1};
    const Changes pitch{1, 1.2, 1};
    const Changes turntable{1, 1, 1.3};
    const Changes all{0.8, 1.2, 1.3};
    const auto canChange = [&](const Changes& from, const Changes& to) {
        path.start(noise, wholeOf(noise.length()), {10'000}, from);
        EXPECT_EQ(path.changes(), from);
        return path.canChangeTo(to);
    };
    EXPECT_TRUE(canChange(none, none));
    EXPECT_FALSE(canChange(none, tempo));
    EXPECT_FALSE(canChange(none, turntable));
    EXPECT_TRUE(canChange(tempo, pitch));
    EXPECT_FALSE(canChange(tempo, none));
    EXPECT_FALSE(canChange(tempo, all));
    EXPECT_TRUE(canChange(turntable, {1, 1, 0.7}));
    EXPECT_FALSE(canChange(turntable, none));
    EXPECT_TRUE(canChange(all, {1.1, 0.9, 0.7}));
    EXPECT_FALSE(canChange(all, turntable));
}

struct ChangesCase
{
    const char* name;
    Changes changes;
};

const auto everyKind =
    ::testing::Values(ChangesCase{"Slower", {0.7, 1, 1}}, ChangesCase{"Higher", {1, 1.2599, 1}},
                      ChangesCase{"FasterAndLower", {1.4, 0.8409, 1}}, ChangesCase{"TurntableSlow", {1, 1, 0.6}},
                      ChangesCase{"TurntableFast", {1, 1, 1.5}}, ChangesCase{"AllAtOnce", {0.8, 1.1225, 1.2}});

class PlayPathChangesTest : public PlayPathTest, public ::testing::WithParamInterface<ChangesCase>
{
protected:
    const Changes changes = GetParam().changes;
    const double speed = changes.tempo * changes.rate;
    const double frequency = changes.pitch * changes.rate;
};

TEST_P(PlayPathChangesTest, PitchAndLevelAreTrue)
{
    const MemorySound sine = sineSound(cdRate, 1, 440, 6);
    path.start(sine, wholeOf(sine.length()), {30'000}, changes);
    const auto heard = render(2 * 44100);
    EXPECT_NEAR(centsBetween(measuredFrequency(heard, cdRate, 440 * frequency), 440 * frequency), 0, 0.1);
    EXPECT_NEAR(decibels(amplitudeAt(heard, cdRate, 440 * frequency), 0.5), 0, 0.1);
}

TEST_P(PlayPathChangesTest, ThePositionStartsWhereItWasAskedForAndMovesWithTheSpeed)
{
    const MemorySound noise = noiseSound(cdRate, 1, {6 * 44100});
    for (const std::int64_t first : {std::int64_t{0}, std::int64_t{500}, std::int64_t{50'000}}) {
        path.start(noise, wholeOf(noise.length()), {first}, changes);
        const double begin = path.position();
        EXPECT_NEAR(begin, static_cast<double>(first), 2);
        EXPECT_NEAR(path.position(100), begin + 100 * speed, 1e-3);
        render(44'100);
        EXPECT_NEAR(path.position(), begin + 44'100 * speed, 1e-3);
    }
}

// The frequency of a rising tone tells which place of it is heard.
TEST_P(PlayPathChangesTest, WhatIsHeardIsThePositionToAMillisecond)
{
    const MemorySound sweep = sweepSound(cdRate, 500, 400, 9);
    path.start(sweep, wholeOf(sweep.length()), {44'100}, changes);
    std::vector<double> phases;
    double phase = 0;
    const double first = path.position();
    for (int frame = 0; frame < 3 * 44'100; ++frame) {
        phases.push_back(phase);
        phase += turn * frequency * (500 + 400 * (first + frame * speed) / cdRate.hertz) / cdRate.hertz;
    }
    constexpr std::size_t window = 8192;
    const auto ahead = turnedAgainst(render(3 * 44'100), phases, window);
    const double hertz = (ahead.back() - ahead.front()) / turn * cdRate.hertz /
                         (static_cast<double>(window / 2) * static_cast<double>(ahead.size() - 1));
    EXPECT_NEAR(hertz / frequency / 400 * cdRate.hertz, 0, 44.1);
}

// A burst in the middle of the window: the centre of its energy is when it is heard.
TEST_P(PlayPathChangesTest, ALoopsPassesFollowEachOtherExactlyOneWindowApart)
{
    constexpr std::int64_t length = 9'001;
    constexpr std::int64_t first = 20'000;
    const MemorySound burst = MemorySound::of(cdRate, 1, {60'000}, [](std::int64_t frame, int) {
        const double off = static_cast<double>(frame - first - length / 2);
        return 0.5 * std::exp(-off * off / (2 * 300.0 * 300.0)) * std::sin(turn * 1000 * off / cdRate.hertz);
    });
    path.start(burst, {{first}, {first + length}, true}, {first}, changes);
    constexpr int passes = 100;
    const double period = length / speed;
    const double begin = path.position();
    const auto heard = render(std::llround(passes * period));
    EXPECT_NEAR(path.position(), begin + static_cast<double>(heard.size()) * speed, 0.01);

    std::vector<double> centres;
    for (int pass = 0; pass < passes; ++pass) {
        double energy = 0;
        double moment = 0;
        for (auto frame = static_cast<std::size_t>(pass * period);
             frame < static_cast<std::size_t>((pass + 1) * period) && frame < heard.size(); ++frame) {
            const double power = static_cast<double>(heard[frame]) * heard[frame];
            energy += power;
            moment += power * static_cast<double>(frame);
        }
        centres.push_back(moment / energy);
        // No pass strays from its place, the hundredth no more than the first.
        ASSERT_NEAR(centres.back() - pass * period, centres.front(), 60) << "pass " << pass;
    }
    const auto mean = [&](std::size_t from) {
        double sum = 0;
        for (std::size_t pass = from; pass < from + passes / 2; ++pass)
            sum += centres[pass] / (passes / 2);
        return sum;
    };
    // The library places single bursts some frames early or late, so that the mean of fifty is true to a few.
    EXPECT_NEAR(mean(passes / 2) - mean(0), passes / 2 * period, 15);
}

TEST_P(PlayPathChangesTest, ALoopOfATurningWaveIsSteady)
{
    // Twenty whole periods a window: the seam falls where the wave goes on by itself.
    constexpr std::int64_t length = 8'820;
    const MemorySound sine = sineSound(cdRate, 1, 100, 3);
    path.start(sine, {{20'000}, {20'000 + length}, true}, {20'000}, changes);
    const auto heard = render(3 * 44'100);
    EXPECT_NEAR(centsBetween(measuredFrequency(heard, cdRate, 100 * frequency), 100 * frequency), 0, 0.1);
    EXPECT_LT(largestStep(heard), 1.06 * largestStep(sine.interleaved()) * frequency);
}

TEST_P(PlayPathChangesTest, TheSeamMakesNoStepMuchLargerThanTheSteadySound)
{
    const MemorySound sine = sineSound(cdRate, 1, 440, 3);
    const double steady = largestStep(sine.interleaved());
    for (const std::int64_t length : {4000, 4037, 4075}) {
        path.start(sine, {{20'000}, {20'000 + length}, true}, {20'000}, changes);
        // Where the sine's phase turns, the library's windows see two sines at once and may swell; a stretcher that
        // is interrupted makes steps three times the steady sound's and more.
        EXPECT_LT(largestStep(render(44'100)), (changes.stretches() ? 2 : 1.3) * steady * frequency) << length;
    }
}

TEST_P(PlayPathChangesTest, LiveChangesKeepThePositionsCourse)
{
    const MemorySound noise = noiseSound(cdRate, 1, {9 * 44100});
    path.start(noise, wholeOf(noise.length()), {44'100}, changes);
    render(10'000);
    Changes next = changes;
    next.tempo = next.tempo == 1 ? 1 : 1.1;
    next.pitch = next.pitch == 1 ? 1 : 0.95;
    next.rate = next.rate == 1 ? 1 : 0.9;
    ASSERT_TRUE(path.canChangeTo(next));
    const double before = path.position();
    path.change(next);
    EXPECT_NEAR(path.position(), before, 2);
    render(20'000);
    const double later = path.position();
    render(10'000);
    EXPECT_NEAR(path.position() - later, 10'000 * next.tempo * next.rate, 0.01);
}

INSTANTIATE_TEST_SUITE_P(Changes, PlayPathChangesTest, everyKind, [](const auto& row) { return row.param.name; });

TEST_F(PlayPathTest, AnotherWindowTakesOverAtThePresentPlace)
{
    const MemorySound noise = noiseSound(cdRate, 1, {44100});
    path.start(noise, wholeOf(noise.length()), {10'000}, {});
    render(1000);
    path.replaceWindow(noise, {{5'000}, {12'000}, true});
    EXPECT_EQ(path.position(), 11'000);
    auto heard = render(1000 - 441);
    expectSame(heard, std::span(noise.interleaved()).subspan(11'000, 1000 - 441), 1, cdRate);
    render(441);
    heard = render(500);
    expectSame(heard, std::span(noise.interleaved()).subspan(5'000, 500), 1, cdRate);

    // In a later pass the present place is the one within the window.
    path.replaceWindow(noise, wholeOf(noise.length()));
    EXPECT_EQ(path.position(), 5'500);
    expectSame(render(20'000), std::span(noise.interleaved()).subspan(5'500, 20'000), 1, cdRate);
}

TEST_F(PlayPathTest, AUsedPathStartedAnewUnchangedIsBitExactAgain)
{
    const MemorySound noise = noiseSound(cdRate, 1, {44100});
    path.start(noise, wholeOf(noise.length()), {10'000}, {0.8, 1.1, 1.2});
    render(1000);
    path.start(noise, wholeOf(noise.length()), {3'000}, {});
    expectSame(render(1000), std::span(noise.interleaved()).subspan(3'000, 1000), 1, cdRate);
}

}  // namespace
