#include "sound/player/RendererBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

using namespace sound;
using namespace sound::test;

namespace {

// The frequency in the middle of a short stretch of a sweep, from its first and last upward crossings.
double frequencyInTheMiddle(std::span<const float> heard)
{
    std::vector<double> crossings;
    for (std::size_t frame = 1; frame < heard.size(); ++frame) {
        const double before = heard[frame - 1];
        const double after = heard[frame];
        if (before < 0 && after >= 0)
            crossings.push_back(static_cast<double>(frame) - after / (after - before));
    }
    if (crossings.size() < 2)
        return 0;
    return static_cast<double>(crossings.size() - 1) / (crossings.back() - crossings.front()) * cdRate.hertz;
}

struct ChangeCase
{
    const char* name;
    Changes before;
    Changes after;
};

class LiveChangeTest : public ::testing::TestWithParam<ChangeCase>
{
};

TEST_P(LiveChangeTest, ItIsHeardWithinTwentyMillisecondsAndThePlaceGoesOn)
{
    const auto& [name, before, after] = GetParam();
    constexpr double first = 500;
    constexpr double sweep = 200;
    RendererBench bench(sweepSound(cdRate, first, sweep, 20));
    bench.settings.changes = before;
    bench.play(2 * 44100);
    bench.render(44100);
    const std::int64_t changed = bench.frames();
    const double placeBefore = bench.position();
    bench.settings.changes = after;
    bench.settingsChanged();
    bench.render(2 * bench.block());
    const double placeAfter = bench.position();
    // Two blocks of 10 ms, the first of them at the old speed where a stretcher is primed meanwhile; the place of a
    // path is a whole frame at its start.
    const double newSpeed = after.tempo * after.rate;
    const double firstSpeed = after.stretches() ? before.tempo * before.rate : newSpeed;
    const double wayOfFirst = (firstSpeed - newSpeed) * static_cast<double>(bench.block());
    EXPECT_NEAR(placeAfter - placeBefore, wayOfFirst + 2 * newSpeed * static_cast<double>(bench.block()), 1.5);
    bench.render(44100);

    // From 20 ms after the change on, the sound is what theory says of that place: its frequency tells.
    const std::vector<float> left = bench.left();
    const std::int64_t settled = changed + 882;
    const std::span<const float> heard(left.data() + settled, 4410);
    const double middle = placeBefore + wayOfFirst + (882 + 2205) * newSpeed;
    const double expected = (first + sweep * middle / cdRate.hertz) * after.pitch * after.rate;
    // A place 5 ms off is 1 Hz off.
    EXPECT_NEAR(frequencyInTheMiddle(heard), expected, 1.0);
}

TEST_P(LiveChangeTest, ItMakesNoClickAndNoGapInASteadyTone)
{
    const auto& [name, before, after] = GetParam();
    RendererBench bench(sineSound(cdRate, 1, 330, 20));
    bench.settings.changes = before;
    bench.play(2 * 44100);
    bench.render(44100 / 2);
    bench.settings.changes = after;
    bench.settingsChanged();
    bench.render(44100 / 2);

    const std::vector<float> left = bench.left();
    const std::span<const float> all(left);
    const double steadyBefore = largestStep(all.subspan(4410, 44100 / 4));
    const double steadyAfter = largestStep(all.subspan(all.size() - 44100 / 4));
    EXPECT_LT(largestStep(all.subspan(4410)), std::max(steadyBefore, steadyAfter) * 1.3);

    // The level over each ten milliseconds or so: phases may differ, but nothing falls away.
    for (std::size_t begin = 44100 / 4; begin + 600 < left.size(); begin += 150) {
        double square = 0;
        for (std::size_t frame = begin; frame < begin + 600; ++frame)
            square += static_cast<double>(left[frame]) * left[frame];
        ASSERT_GT(std::sqrt(square / 600), 0.5 / std::numbers::sqrt2 * 0.6) << begin;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, LiveChangeTest,
                         ::testing::Values(ChangeCase{"neutralToSlow", {1, 1, 1}, {0.8, 1, 1}},
                                           ChangeCase{"slowToSlower", {0.8, 1, 1}, {0.5, 1, 1}},
                                           ChangeCase{"slowToNeutral", {0.8, 1, 1}, {1, 1, 1}},
                                           ChangeCase{"neutralToHigher", {1, 1, 1}, {1, pitchOf(2), 1}},
                                           ChangeCase{"higherToLower", {1, pitchOf(2), 1}, {1, pitchOf(-3), 1}},
                                           ChangeCase{"neutralToTurntable", {1, 1, 1}, {1, 1, 0.8}},
                                           ChangeCase{"turntableToFaster", {1, 1, 0.8}, {1, 1, 1.25}},
                                           ChangeCase{"turntableToNeutral", {1, 1, 1.25}, {1, 1, 1}},
                                           ChangeCase{"allAtOnce", {1, 1, 1}, {0.7, pitchOf(2), 1.1}}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RendererChangeTest, ASliderThatIsDraggedChangesAllTheWayWithoutAClickAndEndsAtTheRightPlace)
{
    RendererBench bench(sineSound(cdRate, 1, 330, 30));
    bench.play(44100);
    bench.render(44100);
    double expected = bench.position();
    for (int percent = 0; percent >= -40; --percent) {
        bench.settings.changes.tempo = 1 + percent / 100.0;
        bench.settingsChanged();
        bench.render(2 * bench.block());
    }
    bench.render(44100);
    const double placeOne = bench.position();
    bench.render(44100);
    // In the end it runs at the last tempo exactly.
    const double played =
        std::ceil(44100.0 / static_cast<double>(bench.block())) * static_cast<double>(bench.block());
    EXPECT_NEAR(bench.position() - placeOne, played * 0.6, 2);
    EXPECT_GT(placeOne, expected);
    const std::vector<float> left = bench.left();
    const std::span<const float> all(left);
    EXPECT_LT(largestStep(all.subspan(441)), largestStep(all.subspan(441, 40000)) * 1.3);
}

TEST(RendererChangeTest, AfterADraggedSliderHasComeToRestThePlaceIsExactAgain)
{
    constexpr double first = 500;
    constexpr double sweep = 100;
    RendererBench bench(sweepSound(cdRate, first, sweep, 30));
    bench.play(44100);
    bench.render(22050);
    // Leaps as a drag across the whole slider makes them.
    for (const double tempo : {0.9, 1.6, 0.5, 1.5, 0.6}) {
        bench.settings.changes.tempo = tempo;
        bench.settingsChanged();
        bench.render(2 * bench.block());
    }
    bench.render(22050);  // rested, and started anew
    const double from = bench.position();
    bench.output.clear();
    bench.render(22050);
    const double to = bench.position();
    const double heard = (frequencyInTheMiddle(bench.left()) - first) / sweep * cdRate.hertz;
    EXPECT_NEAR(heard, (from + to) / 2, 100);
}

TEST(RendererChangeTest, WhileMoreIsWantedAtOnceNothingIsBegunAndTheRunningSoundGoesOn)
{
    RendererBench bench(sineSound(cdRate, 1, 330, 30));
    bench.settings.changes.tempo = 0.8;
    bench.play(44100);
    bench.render(44100);

    bench.hurried = true;
    bench.settings.changes.pitch = pitchOf(2);
    bench.settingsChanged();
    bench.seek(10 * 44100);
    const double before = bench.position();
    bench.render(5 * bench.block());
    EXPECT_NEAR(bench.position() - before, 0.8 * 5 * static_cast<double>(bench.block()), 1.5);

    // What has been begun is finished.
    bench.hurried = false;
    bench.render(bench.block());
    bench.hurried = true;
    bench.render(bench.block());
    EXPECT_NEAR(bench.position(), 10 * 44100 + 0.8 * static_cast<double>(bench.block()), 1.5);
}

TEST(RendererChangeTest, AChangeOfMindWhileAStartIsUnderWayLeavesThePlaceExact)
{
    constexpr double first = 500;
    constexpr double sweep = 200;
    RendererBench bench(sweepSound(cdRate, first, sweep, 20));
    bench.play(2 * 44100);
    bench.render(44100);
    const double before = bench.position();
    bench.settings.changes = {0.8, 1, 1};
    bench.settingsChanged();
    bench.render(bench.block());
    bench.settings.changes = {0.7, pitchOf(2), 1.1};
    bench.settingsChanged();
    bench.render(6 * bench.block());
    // One block as before; five with what had been begun, of which three are rest; one with the change that holds.
    EXPECT_NEAR(bench.position() - before, (1 + 5 * 0.8 + 0.7 * 1.1) * static_cast<double>(bench.block()), 1.5);
    bench.render(bench.block());
    const double from = bench.position();
    bench.output.clear();
    bench.render(10 * bench.block());
    const double middle = (from + bench.position()) / 2;
    EXPECT_NEAR(frequencyInTheMiddle(bench.left()), (first + sweep * middle / cdRate.hertz) * pitchOf(2) * 1.1,
                1.0);
}

TEST(RendererChangeTest, AnotherPlaceInEachBlockIsHeardAllTheSame)
{
    RendererBench bench(noiseSound(cdRate, 1, {20 * 44100}));
    bench.settings.changes = {0.8, 1, 1};
    bench.play(0);
    bench.render(44100);
    double last = bench.position();
    int arrivals = 0;
    for (int place = 1; place <= 30; ++place) {
        bench.seek(place * 22050);
        bench.render(bench.block());
        if (std::abs(bench.position() - last) > 2 * static_cast<double>(bench.block()))
            ++arrivals;
        last = bench.position();
    }
    EXPECT_EQ(arrivals, 6);  // three blocks of rest, and two for a start
}

}  // namespace
