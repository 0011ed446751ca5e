#include "sound/editor/ParallelStretcher.h"

#include "sound/Comparison.h"
#include "sound/editor/MemoryStream.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <future>
#include <map>
#include <numbers>
#include <random>

using namespace sound;
using namespace sound::test;

namespace {

using std::numbers::pi;
constexpr FrameCount shortPiece{2 * 44100};

#ifdef LARKSPIN_SANITIZED
constexpr double seconds = 5;
#else
constexpr double seconds = 8;
#endif

std::vector<float> stretched(const MemorySound& sound, const Changes& changes, int workers, FrameCount piece)
{
    const auto source = wholeOf(sound);
    ParallelStretcher stretcher(*source, changes, workers, piece);
    std::vector<float> out = allOf(stretcher);
    EXPECT_EQ(static_cast<std::int64_t>(out.size()) / sound.channels(), stretcher.length().value);
    return out;
}

/// Without any join.
std::vector<float> inOnePiece(const MemorySound& sound, const Changes& changes)
{
    return stretched(sound, changes, 1, {sound.length().value * 5});
}

/// What is steady in the middle of a sound: its beginning and its end are attacks.
std::span<const float> middleOf(const std::vector<float>& mono)
{
    constexpr std::size_t edge = 22050;
    return std::span(mono).subspan(edge, mono.size() - 2 * edge);
}

/// By how much each short window's level is away from the one-piece render's, in decibels; of windows that are not
/// all but silent.
std::vector<double> differences(const std::vector<float>& joined, const std::vector<float>& whole,
                                std::size_t window)
{
    std::vector<double> all;
    const double audible = 0.01 * levelOf(whole);
    for (std::size_t begin = 0; begin + window <= joined.size(); begin += window / 2) {
        const double wanted = levelOf(std::span(whole).subspan(begin, window));
        if (wanted > audible)
            all.push_back(decibels(levelOf(std::span(joined).subspan(begin, window)), wanted));
    }
    return all;
}

const Changes toneChanges{0.8, std::exp2(2.0 / 12), 1};

/// A steady tone without any join and with several.
struct StretchedTone
{
    explicit StretchedTone(double hertz)
        : whole(inOnePiece(sineSound(cdRate, 1, hertz, seconds), toneChanges))
        , joined(stretched(sineSound(cdRate, 1, hertz, seconds), toneChanges, 2, shortPiece))
    {
    }

    std::vector<float> whole;
    std::vector<float> joined;
};

/// Each is rendered once for all tests.
const StretchedTone& stretchedTone(double hertz)
{
    static std::map<double, StretchedTone> tones;
    return tones.try_emplace(hertz, hertz).first->second;
}

class SteadyToneTest : public ::testing::TestWithParam<double>
{
protected:
    double heard = GetParam() * toneChanges.pitch;
    const std::vector<float>& whole = stretchedTone(GetParam()).whole;
    const std::vector<float>& joined = stretchedTone(GetParam()).joined;
};

TEST_P(SteadyToneTest, HasNoDipAndNoStepAtItsJoins)
{
    ASSERT_EQ(joined.size(), whole.size());
    const auto window = static_cast<std::size_t>(std::max(0.02, 3 / heard) * cdRate.hertz);
    const double steady = amplitudeAt(middleOf(whole), cdRate, heard);
    EXPECT_NEAR(steady, 0.5, 0.005);
    for (std::size_t begin = 0; begin + window <= middleOf(joined).size(); begin += window / 2) {
        const double amplitude = amplitudeAt(middleOf(joined).subspan(begin, window), cdRate, heard);
        ASSERT_NEAR(decibels(amplitude, steady), 0, 0.5) << "frame " << begin;
    }
    EXPECT_LT(largestStep(middleOf(joined)), 1.1 * largestStep(middleOf(whole)));
}

// From the first piece to the last a tone runs with the sine that theory wants. Only in the treble does it turn in
// a join, by half a turn at most.
TEST_P(SteadyToneTest, HasItsPitchThroughAllItsJoins)
{
    const bool treble = heard > 2000;
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(middleOf(whole), cdRate, heard), heard)), 0.01);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(middleOf(joined), cdRate, heard), heard)),
              treble ? 0.1 : 0.01);

    std::vector<double> phases;
    for (std::size_t frame = 0; frame < middleOf(joined).size(); ++frame)
        phases.push_back(2 * pi * heard * static_cast<double>(frame) / cdRate.hertz);
    const auto window = static_cast<std::size_t>(std::max(0.1, 6 / heard) * cdRate.hertz);
    const std::vector<double> turns = turnedAgainst(middleOf(joined), phases, window);
    for (std::size_t index = 0; index < turns.size() && !treble; ++index)
        EXPECT_NEAR(turns[index], turns.front(), 0.02) << "window " << index;
}

INSTANTIATE_TEST_SUITE_P(Tones, SteadyToneTest, ::testing::Values(55, 330, 5000));

TEST(ParallelStretcherTest, AnyNumberOfWorkersMakesTheSameSound)
{
    const MemorySound noise = noiseSound(cdRate, 2, {3 * 44100});
    const MemorySound sound = MemorySound::of(cdRate, 2, noise.length(), [&](std::int64_t frame, int channel) {
        return noise.sample(frame, channel) / 4 +
               0.5 * std::sin(2 * pi * 220 * static_cast<double>(frame) / cdRate.hertz);
    });
    const Changes changes{1.25, 0.9, 1};
    const std::vector<float> one = stretched(sound, changes, 1, {30'000});
    for (const int workers : {2, 4})
        expectSame(stretched(sound, changes, workers, {30'000}), one, 2, cdRate);
}

TEST(ParallelStretcherTest, TheLengthIsExactWhateverTheTempo)
{
    for (const std::int64_t frames : {1, 1000, 16'384, 100'003}) {
        for (const double tempo : {0.4, 0.77, 1.0, 1.6}) {
            const auto source = wholeOf(noiseSound(cdRate, 1, {frames}));
            ParallelStretcher stretcher(*source, {tempo, 1.1, 1}, 2, {40'000});
            const auto wanted = std::llround(static_cast<double>(frames) / tempo);
            EXPECT_EQ(stretcher.length().value, wanted);
            EXPECT_EQ(static_cast<std::int64_t>(allOf(stretcher).size()), wanted) << frames << " by " << tempo;
        }
    }
}

TEST(ParallelStretcherTest, ASoundWithoutFramesEndsAtOnce)
{
    const auto source = wholeOf(MemorySound(cdRate, 2, {}));
    ParallelStretcher stretcher(*source, {0.8, 1, 1}, 2);
    EXPECT_TRUE(allOf(stretcher).empty());
}

TEST(ParallelStretcherTest, NoiseKeepsItsLevelOverItsJoins)
{
    const MemorySound sound = noiseSound(cdRate, 1, {static_cast<std::int64_t>(seconds * cdRate.hertz)});
    const std::vector<float> whole = inOnePiece(sound, {0.8, 1, 1});
    const std::vector<float> joined = stretched(sound, {0.8, 1, 1}, 2, {44100});
    const std::vector<double> away = differences(joined, whole, 8820);
    EXPECT_GT(*std::min_element(away.begin(), away.end()), -0.5);
    EXPECT_LT(*std::max_element(away.begin(), away.end()), 0.5);
    EXPECT_NEAR(decibels(levelOf(joined), levelOf(whole)), 0, 0.1);
}

// Chords that are struck every three quarters of a second and ring on, with beats between them.
TEST(ParallelStretcherTest, MusicKeepsItsLevelOverItsJoins)
{
    const std::vector<std::vector<double>> chords{
        {110, 220, 277.2, 329.6}, {98, 196, 246.9, 293.7}, {130.8, 261.6, 392}};
    std::minstd_rand grain(7);
    const MemorySound music = MemorySound::of(
        cdRate, 1, {static_cast<std::int64_t>(seconds * cdRate.hertz)}, [&](std::int64_t frame, int) {
            const double time = static_cast<double>(frame) / cdRate.hertz;
            const double struck = std::fmod(time, 0.75);
            const auto number = static_cast<std::size_t>(time / 0.75);
            double sum = 0;
            for (const double hertz : chords[number % chords.size()]) {
                for (int partial = 1; partial <= 5; ++partial)
                    sum += std::exp(-struck * partial) * std::sin(2 * pi * hertz * partial * struck) / partial;
            }
            const double beat = std::fmod(time, 0.375);
            const double noise = static_cast<double>(grain() % 2001) / 1000 - 1;
            return 0.08 * sum + 0.2 * noise * std::exp(-beat * 40);
        });
    const std::vector<float> whole = inOnePiece(music, {0.8, 1, 1});
    const std::vector<float> joined = stretched(music, {0.8, 1, 1}, 2, shortPiece);
    for (const double away : differences(joined, whole, 4410))
        EXPECT_NEAR(away, 0, 0.75);
    EXPECT_NEAR(decibels(levelOf(joined), levelOf(whole)), 0, 0.1);
}

TEST(ParallelStretcherTest, ReadsNoFurtherAheadThanThePiecesUnderWayNeed)
{
    auto stream = std::make_unique<MemoryStream>(noiseSound({8000}, 1, {400'000}));
    const MemoryStream& watched = *stream;
    SourcePart source(std::move(stream), {0}, {400'000});
    constexpr int workers = 2;
    constexpr std::int64_t piece = 10'000;
    ParallelStretcher stretcher(source, {0.5, 1, 1}, workers, {piece});
    std::vector<float> frames;
    const auto given = [&] { return static_cast<double>(frames.size()) * 0.5; };
    while (stretcher.next(frames)) {
        // The workers' pieces, the one that waits, and as much as one more around them.
        EXPECT_LE(static_cast<double>(watched.framesRead()) - given(), (workers + 3) * piece * 0.5 + 20'000);
    }
    EXPECT_EQ(watched.framesRead(), 400'000);
}

TEST(ParallelStretcherTest, AStopInTheMiddleEndsEverythingSoon)
{
    constexpr std::int64_t frames = std::int64_t{300} * 44100;
    const auto source = std::make_unique<SourcePart>(
        std::make_unique<MemoryStream>(noiseSound({44100}, 1, {frames})), FramePosition{0}, FrameCount{frames});
    std::chrono::steady_clock::time_point begin;
    {
        ParallelStretcher stretcher(*source, {0.5, 1, 1}, 2);
        auto ended = std::async(std::launch::async, [&] { return allOf(stretcher).size(); });
        begin = std::chrono::steady_clock::now();
        stretcher.stop();
        EXPECT_LT(ended.get(), 2U * frames);
        std::vector<float> nothing;
        EXPECT_FALSE(stretcher.next(nothing));
        EXPECT_TRUE(nothing.empty());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{5});
}

TEST(ParallelStretcherTest, CanGoBeforeAllHasBeenTaken)
{
    const auto source = wholeOf(noiseSound(cdRate, 2, {20 * 44100}));
    ParallelStretcher stretcher(*source, {0.5, 1, 1}, 2, {44100});
    std::vector<float> frames;
    EXPECT_TRUE(stretcher.next(frames));
    EXPECT_FALSE(frames.empty());
}

}  // namespace
