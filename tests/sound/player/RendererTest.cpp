#include "sound/player/RendererBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

using namespace sound;
using namespace sound::test;

namespace {

constexpr SampleRate rate{44100};
constexpr std::int64_t seamFrames = 441;  // 10 ms
constexpr std::int64_t fadeFrames = 221;  // 5 ms

PlayWindow loopOf(std::int64_t begin, std::int64_t end)
{
    return {{begin}, {end}, true};
}

double pitchOf(int semitones)
{
    return std::exp2(semitones / 12.0);
}

#ifdef LARKSPIN_SANITIZED
constexpr std::size_t manyPasses = 50;
#else
constexpr std::size_t manyPasses = 1000;
#endif

// --- Unchanged -------------------------------------------------------------------------------------------------

TEST(RendererTest, AnUnchangedStereoSoundComesOutBitForBitFromItsFirstFrame)
{
    RendererBench bench(noiseSound(rate, 2, {50000}));
    bench.play();
    bench.render(50000);
    ASSERT_GE(bench.output.size(), bench.sound().interleaved().size());
    EXPECT_TRUE(
        std::equal(bench.sound().interleaved().begin(), bench.sound().interleaved().end(), bench.output.begin()));
}

TEST(RendererTest, AMonoSoundComesOutBitForBitOnBothSides)
{
    RendererBench bench(noiseSound(rate, 1, {20000}));
    bench.play();
    bench.render(20000);
    for (std::int64_t frame = 0; frame < 20000; ++frame) {
        const auto index = static_cast<std::size_t>(2 * frame);
        ASSERT_EQ(bench.output[index], bench.sound().sample(frame, 0));
        ASSERT_EQ(bench.output[index + 1], bench.sound().sample(frame, 0));
    }
}

TEST(RendererTest, BeforePlayThereIsSilence)
{
    RendererBench bench(noiseSound(rate, 2, {5000}));
    bench.render(3000);
    EXPECT_TRUE(std::all_of(bench.output.begin(), bench.output.end(), [](float sample) { return sample == 0; }));
    EXPECT_FALSE(bench.renderer.active());
}

TEST(RendererTest, AtItsEndTheSoundIsSilentAndTellsThatItEnded)
{
    RendererBench bench(noiseSound(rate, 2, {1000}));
    bench.play();
    bench.render(2000);
    EXPECT_FALSE(bench.renderer.active());
    EXPECT_TRUE(bench.heard().ended);
    EXPECT_EQ(bench.position(), 1000);
    for (std::size_t index = 2000; index < bench.output.size(); ++index)
        ASSERT_EQ(bench.output[index], 0);
}

TEST(RendererTest, TheEndIsOnlyToldWhenItHasBeenHeard)
{
    RendererBench bench(noiseSound(rate, 2, {1000}));
    bench.play();
    bench.render(1323);  // three blocks of 441, the end in the last
    EXPECT_FALSE(bench.heard(400).ended);
    EXPECT_TRUE(bench.heard(0).ended);
}

// --- Loops -----------------------------------------------------------------------------------------------------

struct LoopCase
{
    const char* name;
    std::int64_t begin;
    std::int64_t length;
};

class NeutralLoopTest : public ::testing::TestWithParam<LoopCase>
{
};

TEST_P(NeutralLoopTest, AThousandPassesAreExactToTheFrameAndBitForBitOutsideTheSeam)
{
    const auto [name, begin, length] = GetParam();
    RendererBench bench(noiseSound(rate, 1, {begin + length + 5000}));
    bench.playWindow(loopOf(begin, begin + length));
    std::int64_t frame = 0;
    const std::int64_t end = static_cast<std::int64_t>(manyPasses) * length;
    while (frame < end) {
        bench.output.clear();
        bench.render(1 << 16);
        for (std::int64_t index = 0; index < bench.frames() && frame < end; ++index, ++frame) {
            const std::int64_t inPass = frame % length;
            if (inPass >= length - seamFrames)
                continue;
            ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * index)], bench.sound().sample(begin + inPass, 0))
                << "pass " << frame / length << ", frame " << inPass;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, NeutralLoopTest,
                         ::testing::Values(LoopCase{"ms137", 44100, 6042}, LoopCase{"ms2345", 44100, 103415},
                                           LoopCase{"fromTheBeginning", 0, 6042}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RendererTest, TheSeamOfALoopCutThroughAWaveMakesNoStepLargerThanTheWaveItself)
{
    for (const std::int64_t length : {6042, 6100, 6000, 6075}) {
        RendererBench bench(sineSound(rate, 1, 440, 2));
        bench.playWindow(loopOf(20000, 20000 + length));
        bench.render(length * 5);
        const double steady = largestStep(std::span(bench.sound().interleaved()));
        EXPECT_LT(largestStep(bench.left()), steady * 1.25) << length;
    }
}

TEST(RendererTest, TheAttackAtTheLoopBeginStaysWhole)
{
    // Silence up to the begin, a full-scale edge on its first frame.
    RendererBench bench(MemorySound::of(
        rate, 1, {30000}, [](std::int64_t frame, int) { return frame >= 10000 && frame < 10100 ? 0.9 : 0.0; }));
    bench.playWindow(loopOf(10000, 16000));
    bench.render(6000 * 3);
    const std::vector<float> left = bench.left();
    for (const std::size_t pass : {0U, 1U, 2U}) {
        EXPECT_EQ(left[pass * 6000], 0.9F);
        EXPECT_EQ(left[pass * 6000 + 99], 0.9F);
        EXPECT_EQ(left[pass * 6000 + 100], 0.0F);
    }
}

// The moments at which each pass of a loop is heard, from where a burst in it correlates best with the average
// pass.
std::vector<double> passMoments(const std::vector<float>& heard, double period, std::size_t passes)
{
    // The envelope of the sound: what a stretcher keeps in place when it turns phases.
    std::vector<double> envelope(heard.size());
    double level = 0;
    for (std::size_t frame = 0; frame < heard.size(); ++frame) {
        level += (std::abs(static_cast<double>(heard[frame])) - level) * 0.02;
        envelope[frame] = level;
    }
    std::vector<double> moments;
    for (std::size_t pass = 1; pass <= passes; ++pass) {
        // The centre of gravity of the envelope within the pass as theory places it.
        const double begin = period * static_cast<double>(pass);
        double weight = 0;
        double moment = 0;
        for (auto frame = static_cast<std::size_t>(begin); static_cast<double>(frame) < begin + period; ++frame) {
            weight += envelope[frame] * envelope[frame];
            moment += envelope[frame] * envelope[frame] * (static_cast<double>(frame) - begin);
        }
        moments.push_back(moment / weight);
    }
    return moments;
}

double slopeOf(const std::vector<double>& values)
{
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double product = 0;
    double square = 0;
    for (std::size_t index = 0; index < values.size(); ++index) {
        const double place = static_cast<double>(index) - (count - 1) / 2;
        product += place * (values[index] - mean);
        square += place * place;
    }
    return product / square;
}

double deviationOf(const std::vector<double>& values)
{
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double squares = 0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return std::sqrt(squares / count);
}

struct ChangedLoopCase
{
    const char* name;
    double tempo;
    int semitones;
    std::int64_t length;
    std::size_t passes;
};

class ChangedLoopTest : public ::testing::TestWithParam<ChangedLoopCase>
{
};

TEST_P(ChangedLoopTest, ThePeriodIsExactAgainstTheoryOverAllPasses)
{
    const ChangedLoopCase& loop = GetParam();
    constexpr std::int64_t begin = 30000;
    // A burst of tone in the middle of the window, so that its place in each pass can be told.
    RendererBench bench(MemorySound::of(rate, 1, {begin + loop.length + 30000}, [&](std::int64_t frame, int) {
        const double place = static_cast<double>(frame - begin - loop.length / 2) / 600;
        return 0.6 * std::exp(-place * place) * std::sin(static_cast<double>(frame) * 0.1);
    }));
    bench.settings.changes.tempo = loop.tempo;
    bench.settings.changes.pitch = pitchOf(loop.semitones);
    bench.playWindow(loopOf(begin, begin + loop.length));
    const double period = static_cast<double>(loop.length) / loop.tempo;
    bench.render(static_cast<std::int64_t>(period * (static_cast<double>(loop.passes) + 2)));

    // The account: so many frames heard are so many frames of the sound, to the frame.
    EXPECT_NEAR(bench.heard().position, begin + static_cast<double>(bench.frames()) * loop.tempo, 1.0);

    // The sound: the stretcher lets a burst waver by some frames from pass to pass, but nothing adds up. A slope
    // through wavering moments is uncertain by their deviation times the square root of 12 over their number.
    const std::vector<double> moments = passMoments(bench.left(), period, loop.passes);
    const auto passes = static_cast<double>(loop.passes);
    const double drift = slopeOf(moments) * passes;
    const double uncertainty = deviationOf(moments) * std::sqrt(12 / passes);
    RecordProperty("driftInFrames", std::to_string(drift));
    RecordProperty("uncertaintyInFrames", std::to_string(uncertainty));
    EXPECT_LT(std::abs(drift), 0.5 + 3 * uncertainty);
}

INSTANTIATE_TEST_SUITE_P(Loops, ChangedLoopTest,
                         ::testing::Values(ChangedLoopCase{"tempoDown35", 0.65, 0, 6042, manyPasses},
                                           ChangedLoopCase{"pitchUp5", 1, 5, 6042, manyPasses},
                                           ChangedLoopCase{"longTempoDown35", 0.65, 0, 103415, manyPasses / 50},
                                           ChangedLoopCase{"longPitchUp5", 1, 5, 103415, manyPasses / 50}),
                         [](const auto& info) { return std::string(info.param.name); });

// A chord with some noise in it, which is what music is to a seam.
MemorySound chordSound(double seconds)
{
    const MemorySound noise = noiseSound(rate, 1, {static_cast<std::int64_t>(seconds * rate.hertz)});
    return MemorySound::of(rate, 1, noise.length(), [&](std::int64_t frame, int) {
        double sum = 0.1 * static_cast<double>(noise.sample(frame, 0));
        for (const double hertz : {110.0, 138.6, 164.8, 220.3, 441.0, 659.2, 1321.0})
            sum += 0.08 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(frame) / rate.hertz);
        return sum;
    });
}

TEST(RendererTest, ALoopedChordMakesNoStepAtItsSeamThatStandsOutOfTheSteadySound)
{
    for (const Changes& changes : {Changes{1, 1, 1}, Changes{0.65, 1, 1}, Changes{1, pitchOf(5), 1}}) {
        RendererBench steady(chordSound(8));
        steady.settings.changes = changes;
        steady.play(44100);
        steady.render(4 * 44100);

        RendererBench looped(chordSound(8));
        looped.settings.changes = changes;
        looped.playWindow(loopOf(44100, 44100 + 6042));
        looped.render(4 * 44100);
        RecordProperty("ratio", std::to_string(largestStep(looped.left()) / largestStep(steady.left())));
        EXPECT_LT(largestStep(looped.left()), largestStep(steady.left()) * 1.2) << changes.tempo;
    }
}

TEST(RendererTest, EvenALoneToneCutAtTheWorstPlaceDoesNotClickAtAChangedSeam)
{
    // A phase that jumps within the stretcher's window swells for a moment; a click would be several times as
    // large.
    for (const Changes& changes : {Changes{0.65, 1, 1}, Changes{1, pitchOf(5), 1}}) {
        for (const double hertz : {110.0, 440.0, 1000.0, 3000.0}) {
            RendererBench steady(sineSound(rate, 1, hertz, 4));
            steady.settings.changes = changes;
            steady.play(44100);
            steady.render(44100);
            for (const std::int64_t length : {6042, 6060, 6080, 6020}) {
                RendererBench looped(sineSound(rate, 1, hertz, 4));
                looped.settings.changes = changes;
                looped.playWindow(loopOf(44100, 44100 + length));
                looped.render(44100);
                EXPECT_LT(largestStep(looped.left()), largestStep(steady.left()) * 1.4) << hertz << " " << length;
            }
        }
    }
}

TEST(RendererTest, PlayingOnOutOfALoopGoesOnWithoutAJump)
{
    RendererBench bench(noiseSound(rate, 1, {100000}));
    bench.playWindow(loopOf(10000, 30000));
    bench.render(5 * bench.block());
    bench.play();
    bench.render(40000);
    for (std::int64_t frame = 0; frame < 40000; ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * frame)], bench.sound().sample(10000 + frame, 0))
            << frame;
}

TEST(RendererTest, AnotherRangeWhileOnePlaysRestartsAtItsBeginWithoutAClick)
{
    RendererBench bench(sineSound(rate, 1, 300, 4));
    bench.playWindow(loopOf(10000, 30000));
    bench.render(7 * bench.block());
    bench.playWindow(loopOf(60013, 80000));
    bench.render(20000);
    const double steady = largestStep(std::span(bench.sound().interleaved()));
    EXPECT_LT(largestStep(bench.left()), steady * 1.3);
    // One block is the cross-fade; behind it every frame is the new range's.
    for (std::int64_t frame = bench.block(); frame < 15000; ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (7 * bench.block() + frame))],
                  bench.sound().sample(60013 + frame, 0));
}

// --- Transport -------------------------------------------------------------------------------------------------

TEST(RendererTest, ASeekWhilePlayingIsExactBehindAShortCrossFade)
{
    RendererBench bench(noiseSound(rate, 2, {200000}));
    bench.play();
    bench.render(10 * bench.block());
    bench.seek(123457);
    const std::int64_t before = bench.frames();
    bench.render(20 * bench.block());
    for (std::int64_t frame = bench.block(); frame < 20 * bench.block(); ++frame) {
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (before + frame))],
                  bench.sound().sample(123457 + frame, 0));
    }
}

TEST(RendererTest, APauseFadesOutKeepsThePlaceAndFadesInThere)
{
    RendererBench bench(noiseSound(rate, 2, {200000}));
    bench.play();
    bench.render(10 * bench.block());
    const std::int64_t place = bench.frames();
    bench.pause();
    bench.render(10 * bench.block());
    EXPECT_FALSE(bench.renderer.active());
    EXPECT_EQ(bench.position(), static_cast<double>(place));

    bench.resume();
    const std::int64_t resumed = bench.frames();
    bench.render(10 * bench.block());
    for (std::int64_t frame = fadeFrames; frame < 10 * bench.block(); ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (resumed + frame))],
                  bench.sound().sample(place + frame, 0));
}

TEST(RendererTest, NeitherPauseNorResumeNorStopClicks)
{
    RendererBench bench(MemorySound::of(rate, 1, {200000}, [](std::int64_t, int) { return 0.8; }));
    bench.play();
    bench.render(5 * bench.block());
    bench.pause();
    bench.render(5 * bench.block());
    bench.resume();
    bench.render(5 * bench.block());
    bench.stop();
    bench.render(5 * bench.block());
    const std::vector<float> left = bench.left();
    // Behind the first frame, which is heard whole, the steepest place is the middle of a five-millisecond fade.
    const double steepest = 0.8 * std::numbers::pi / 2 / fadeFrames;
    EXPECT_LT(largestStep(left), steepest * 1.05);
    EXPECT_EQ(bench.position(), 0);
}

TEST(RendererTest, SeekingWhileStoppedMovesThePlaceAtOnceAndPlayStartsThereWhole)
{
    RendererBench bench(noiseSound(rate, 2, {100000}));
    bench.seek(5000);
    EXPECT_EQ(bench.position(), 5000);
    bench.play();
    bench.render(1000);
    for (std::int64_t frame = 0; frame < 1000; ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * frame)], bench.sound().sample(5000 + frame, 0));
}

TEST(RendererTest, WhatIsNotDecodedYetIsWaitedForInSilenceAndNothingIsLost)
{
    RendererBench bench(noiseSound(rate, 2, {300000}));
    bench.sound().setAvailable({0});
    bench.play(100000);
    bench.render(10 * bench.block());
    EXPECT_TRUE(bench.renderer.active());
    EXPECT_TRUE(std::all_of(bench.output.begin(), bench.output.end(), [](float sample) { return sample == 0; }));
    EXPECT_EQ(bench.position(), 100000);

    bench.sound().setAvailable({300000});
    const std::int64_t waited = bench.frames();
    bench.render(10 * bench.block());
    for (std::int64_t frame = 0; frame < 10 * bench.block(); ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (waited + frame))],
                  bench.sound().sample(100000 + frame, 0));
}

// --- Changes while it plays --------------------------------------------------------------------------------------

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
    return static_cast<double>(crossings.size() - 1) / (crossings.back() - crossings.front()) * rate.hertz;
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
    RendererBench bench(sweepSound(rate, first, sweep, 20));
    bench.settings.changes = before;
    bench.play(2 * 44100);
    bench.render(44100);
    const std::int64_t changed = bench.frames();
    const double placeBefore = bench.position();
    bench.settings.changes = after;
    bench.settingsChanged();
    bench.render(bench.block());
    const double placeAfter = bench.position();
    // One block is 10 ms at the new speed; the place of a path is a whole frame at its start.
    EXPECT_NEAR(placeAfter - placeBefore, static_cast<double>(bench.block()) * after.tempo * after.rate, 1.5);
    bench.render(44100);

    // From 20 ms after the change on, the sound is what theory says of that place: its frequency tells.
    const std::vector<float> left = bench.left();
    const std::int64_t settled = changed + 882;
    const std::span<const float> heard(left.data() + settled, 4410);
    const double middle = placeBefore + (882 + 2205) * after.tempo * after.rate;
    const double expected = (first + sweep * middle / rate.hertz) * after.pitch * after.rate;
    // A place 10 ms off is 2 Hz off.
    EXPECT_NEAR(frequencyInTheMiddle(heard), expected, 2.0);
}

TEST_P(LiveChangeTest, ItMakesNoClickAndNoGapInASteadyTone)
{
    const auto& [name, before, after] = GetParam();
    RendererBench bench(sineSound(rate, 1, 330, 20));
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

TEST(RendererTest, ASliderThatIsDraggedChangesAllTheWayWithoutAClickAndEndsAtTheRightPlace)
{
    RendererBench bench(sineSound(rate, 1, 330, 30));
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

TEST(RendererTest, AfterADraggedSliderHasComeToRestThePlaceIsExactAgain)
{
    constexpr double first = 500;
    constexpr double sweep = 100;
    RendererBench bench(sweepSound(rate, first, sweep, 30));
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
    const double heard = (frequencyInTheMiddle(bench.left()) - first) / sweep * rate.hertz;
    EXPECT_NEAR(heard, (from + to) / 2, 100);
}

// --- Peaks and the way through
// -------------------------------------------------------------------------------------

TEST(RendererTest, PeaksAreThoseOfWhatIsHeardNotOfWhatIsRendered)
{
    RendererBench bench(MemorySound::of(rate, 2, {44100}, [](std::int64_t frame, int channel) {
        return frame < 4410 ? (channel == 0 ? 0.25 : 0.5) : 0.75;
    }));
    bench.play();
    bench.render(4410);
    EXPECT_EQ(bench.renderer.takePeaks({4410}).left, 0.0F);
    const Peaks heard = bench.renderer.takePeaks({0});
    EXPECT_EQ(heard.left, 0.25F);
    EXPECT_EQ(heard.right, 0.5F);
    EXPECT_EQ(bench.renderer.takePeaks({0}).left, 0.0F);
}

TEST(RendererTest, GainBalanceAndEqualizerReachTheSound)
{
    RendererBench bench(sineSound(rate, 2, 1000, 2));
    bench.settings.gain = 50;
    bench.settings.balance = -50;
    bench.settings.equalizer.count = 1;
    bench.settings.equalizer.enabled = true;
    bench.settings.equalizer.band[0] = {1000, 12, 6};
    bench.settingsChanged();
    bench.play();
    bench.render(44100);
    const std::vector<float> left = bench.left();
    const std::vector<float> right = channelOf(bench.output, 2, 1);
    const double wanted = 0.5 * 0.25 * std::pow(10, 6 / 20.0);
    EXPECT_NEAR(amplitudeAt(std::span(left).subspan(22050, 22050), rate, 1000), wanted, wanted * 0.01);
    EXPECT_EQ(*std::max_element(right.begin(), right.end()), 0.0F);
}

}  // namespace
