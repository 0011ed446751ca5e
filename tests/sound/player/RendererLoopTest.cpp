#include "sound/player/RendererBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::int64_t seamFrames = 441;  // 10 ms

#ifdef LARKSPIN_SANITIZED
constexpr std::size_t manyPasses = 50;
constexpr std::size_t somePasses = 5;
#else
constexpr std::size_t manyPasses = 1000;
constexpr std::size_t somePasses = 20;
#endif

PlayWindow loopOf(std::int64_t begin, std::int64_t end)
{
    return {{begin}, {end}, true};
}

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
    RendererBench bench(noiseSound(cdRate, 1, {begin + length + 5000}));
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

TEST(RendererLoopTest, TheSeamOfALoopCutThroughAWaveMakesNoStepLargerThanTheWaveItself)
{
    for (const std::int64_t length : {6042, 6100, 6000, 6075}) {
        RendererBench bench(sineSound(cdRate, 1, 440, 2));
        bench.playWindow(loopOf(20000, 20000 + length));
        bench.render(length * 5);
        const double steady = largestStep(std::span(bench.sound().interleaved()));
        EXPECT_LT(largestStep(bench.left()), steady * 1.05) << length;
    }
}

TEST(RendererLoopTest, TheAttackAtTheLoopBeginStaysWhole)
{
    // Silence up to the begin, a full-scale edge on its first frame.
    RendererBench bench(MemorySound::of(
        cdRate, 1, {30000}, [](std::int64_t frame, int) { return frame >= 10000 && frame < 10100 ? 0.9 : 0.0; }));
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
    RendererBench bench(MemorySound::of(cdRate, 1, {begin + loop.length + 30000}, [&](std::int64_t frame, int) {
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
                                           ChangedLoopCase{"longTempoDown35", 0.65, 0, 103415, somePasses},
                                           ChangedLoopCase{"longPitchUp5", 1, 5, 103415, somePasses}),
                         [](const auto& info) { return std::string(info.param.name); });

// A chord with some noise in it, which is what music is to a seam.
MemorySound chordSound(double seconds)
{
    const MemorySound noise = noiseSound(cdRate, 1, {static_cast<std::int64_t>(seconds * cdRate.hertz)});
    return MemorySound::of(cdRate, 1, noise.length(), [&](std::int64_t frame, int) {
        double sum = 0.1 * static_cast<double>(noise.sample(frame, 0));
        for (const double hertz : {110.0, 138.6, 164.8, 220.3, 441.0, 659.2, 1321.0})
            sum += 0.08 * std::sin(2 * std::numbers::pi * hertz * static_cast<double>(frame) / cdRate.hertz);
        return sum;
    });
}

TEST(RendererLoopTest, ALoopedChordMakesNoStepAtItsSeamThatStandsOutOfTheSteadySound)
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
        EXPECT_LT(largestStep(looped.left()), largestStep(steady.left()) * 1.05) << changes.tempo;
    }
}

TEST(RendererLoopTest, EvenALoneToneCutAtTheWorstPlaceDoesNotClickAtAChangedSeam)
{
    // A phase that has to be made up within the fade is a higher tone for a moment; a click would be several times
    // as large.
    for (const Changes& changes : {Changes{0.65, 1, 1}, Changes{1, pitchOf(5), 1}}) {
        for (const double hertz : {110.0, 440.0, 1000.0, 3000.0}) {
            RendererBench steady(sineSound(cdRate, 1, hertz, 4));
            steady.settings.changes = changes;
            steady.play(44100);
            steady.render(44100);
            for (const std::int64_t length : {6042, 6060, 6080, 6020}) {
                RendererBench looped(sineSound(cdRate, 1, hertz, 4));
                looped.settings.changes = changes;
                looped.playWindow(loopOf(44100, 44100 + length));
                looped.render(44100);
                EXPECT_LT(largestStep(looped.left()), largestStep(steady.left()) * 1.1) << hertz << " " << length;
            }
        }
    }
}

TEST(RendererLoopTest, PlayingOnOutOfALoopGoesOnWithoutAJump)
{
    RendererBench bench(noiseSound(cdRate, 1, {100000}));
    bench.playWindow(loopOf(10000, 30000));
    bench.render(5 * bench.block());
    bench.play();
    bench.render(40000);
    for (std::int64_t frame = 0; frame < 40000; ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * frame)], bench.sound().sample(10000 + frame, 0))
            << frame;
}

TEST(RendererLoopTest, AnotherRangeWhileOnePlaysRestartsAtItsBeginWithoutAClick)
{
    RendererBench bench(sineSound(cdRate, 1, 300, 4));
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

}  // namespace
