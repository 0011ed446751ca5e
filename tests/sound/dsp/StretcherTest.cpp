#include "sound/dsp/Stretcher.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"
#include "sound/dsp/SoundInput.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <numbers>
#include <string>

using namespace sound;
using namespace sound::test;

namespace {

constexpr FramePosition begin{44100};

double semitones(double count)
{
    return std::exp2(count / 12);
}

/// A stretcher and what it draws from.
class Stretching
{
public:
    explicit Stretching(const SampleSource& sound, FrameCount blockFrames = hundredth)
        : source(sound)
        , blockFrames(blockFrames)
    {
        stretcher.prepare(source.rate(), source.channels(), blockFrames);
    }

    void start(FramePosition first, double tempo, double pitch)
    {
        input = std::make_unique<SoundInput>(source, first - stretcher.lead());
        stretcher.begin(first, 1 / tempo, pitch);
        stretcher.primeHalf(*input);
        stretcher.prime(*input);
    }

    void change(double tempo, double pitch) { stretcher.change(1 / tempo, pitch); }

    std::vector<float> render(std::int64_t frames)
    {
        std::vector<float> heard(static_cast<std::size_t>(frames * source.channels()));
        for (std::int64_t done = 0; done < frames; done += blockFrames.value) {
            for (std::int64_t frame = done; frame < std::min(done + blockFrames.value, frames); ++frame)
                places.push_back(stretcher.inputAt(stretcher.rendered() + static_cast<double>(frame - done)));
            stretcher.render(*input, {std::min(blockFrames.value, frames - done)},
                             heard.data() + done * source.channels());
        }
        return heard;
    }

    Stretcher stretcher;
    /// What was told of each frame's place just before its block was rendered.
    std::vector<double> places;

private:
    const SampleSource& source;
    FrameCount blockFrames;
    std::unique_ptr<SoundInput> input;
};

struct Change
{
    std::string name;
    double tempo;
    double semitones;
};

class StretcherPitchTest : public ::testing::TestWithParam<Change>
{
};

#ifdef LARKSPIN_SANITIZED  // all tones go the same way
constexpr std::array tones{55.0};
#else
constexpr std::array tones{55.0, 110.0, 440.0, 1000.0, 3000.0};
#endif

TEST_P(StretcherPitchTest, PitchIsTrueToATenthOfACent)
{
    const auto& [name, tempo, steps] = GetParam();
    for (const double hertz : tones) {
        const MemorySound sound = sineSound(cdRate, 1, hertz, 7);
        Stretching stretching(sound);
        stretching.start(begin, tempo, semitones(steps));
        const auto heard = stretching.render(5 * cdRate.hertz / 2);
        const double wanted = hertz * semitones(steps);
        EXPECT_NEAR(centsBetween(measuredFrequency(heard, cdRate, wanted), wanted), 0, 0.1) << hertz;
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, StretcherPitchTest,
                         ::testing::Values(Change{"OctaveDown", 1, -12}, Change{"FourthDown", 1, -5},
                                           Change{"SemitoneDown", 1, -1}, Change{"ThirtySevenCentsUp", 1, 0.37},
                                           Change{"ToneUp", 1, 2}, Change{"FifthUp", 1, 7},
                                           Change{"OctaveUp", 1, 12}, Change{"Slowest", 0.4, 0},
                                           Change{"Slow", 0.75, 0}, Change{"Fast", 1.25, 0},
                                           Change{"Fastest", 1.6, 0}, Change{"SlowestOctaveUp", 0.4, 12},
                                           Change{"FastestOctaveDown", 1.6, -12}),
                         [](const auto& row) { return row.param.name; });

/// The sweep whose frequency tells the place.
constexpr double sweepFirst = 500;
constexpr double sweepRise = 400;

/// How far the place that is heard, told by the frequency of the rising tone, lies off the one told by the map, in
/// source frames: one value a window.
std::vector<double> placeErrors(const std::vector<float>& heard, const std::vector<double>& places, double pitch,
                                std::size_t window)
{
    std::vector<double> phases;
    double phase = 0;
    for (std::size_t frame = 0; frame < heard.size(); ++frame) {
        phases.push_back(phase);
        phase += turn * pitch * (sweepFirst + sweepRise * places[frame] / cdRate.hertz) / cdRate.hertz;
    }
    const auto ahead = turnedAgainst(heard, phases, window);
    std::vector<double> errors;
    for (std::size_t index = 1; index < ahead.size(); ++index) {
        const double hertz =
            (ahead[index] - ahead[index - 1]) / turn * cdRate.hertz / (static_cast<double>(window) / 2);
        errors.push_back(hertz / pitch / sweepRise * cdRate.hertz);
    }
    return errors;
}

double mean(const std::vector<double>& values)
{
    double sum = 0;
    for (const double value : values)
        sum += value;
    return sum / static_cast<double>(values.size());
}

constexpr double oneMillisecond = 44.1;

class StretcherPlaceTest : public ::testing::TestWithParam<Change>
{
};

TEST_P(StretcherPlaceTest, SoManyFramesStandForSoManyOfTheInput)
{
    const auto& [name, tempo, steps] = GetParam();
    const MemorySound sound = noiseSound(cdRate, 1, {6 * 44100});
    Stretching stretching(sound);
    stretching.start(begin, tempo, semitones(steps));
    const double first = stretching.stretcher.inputAt(0);
    EXPECT_NEAR(first, 44100, 1);
    stretching.render(2 * 44100);
    EXPECT_EQ(stretching.stretcher.rendered(), 2 * 44100);
    EXPECT_NEAR(stretching.stretcher.inputAt(2 * 44100) - first, 2 * 44100 * tempo, 1e-3);
    EXPECT_NEAR(stretching.stretcher.inputAt(2 * 44100 + 500) - first, (2 * 44100 + 500) * tempo, 1e-3);
}

TEST_P(StretcherPlaceTest, WhatIsHeardIsThePlaceThatIsToldToAMillisecond)
{
    const auto& [name, tempo, steps] = GetParam();
    const MemorySound sound = sweepSound(cdRate, sweepFirst, sweepRise, 9);
    Stretching stretching(sound);
    stretching.start(begin, tempo, semitones(steps));
    const auto heard = stretching.render(4 * 44100);
    const double error = mean(placeErrors(heard, stretching.places, semitones(steps), 8192));
    EXPECT_LT(std::abs(error), oneMillisecond);
}

INSTANTIATE_TEST_SUITE_P(Changes, StretcherPlaceTest,
                         ::testing::Values(Change{"Slowest", 0.4, 0}, Change{"Slow", 0.8, 0},
                                           Change{"Fast", 1.25, 0}, Change{"Fastest", 1.6, 0},
                                           Change{"OctaveDown", 1, -12}, Change{"ToneUp", 1, 2},
                                           Change{"OctaveUp", 1, 12}, Change{"SlowAndHigh", 0.7, 4},
                                           Change{"FastAndLow", 1.4, -7}),
                         [](const auto& row) { return row.param.name; });

// The library takes up a new stretch between its input and its resampler at its next window, up to a hop later than
// the map says: a large change costs so much of a hop as that stretch changes by, once.
TEST(StretcherTest, PlacesStayTrueAcrossLiveChanges)
{
    constexpr double longestHop = 410;
    const MemorySound sound = sweepSound(cdRate, sweepFirst, sweepRise, 12);
    Stretching stretching(sound);
    stretching.start(begin, 0.9, 1);
    stretching.render(4410);
    double stretchBefore = 1 / 0.9;
    double errorBefore = 0;
    for (const auto& [name, tempo, steps] :
         {Change{"faster", 1.6, 0}, Change{"slower", 0.5, 0}, Change{"higher", 0.5, 3}, Change{"lower", 0.5, -9},
          Change{"both", 1.3, 5}, Change{"back", 1, 0}}) {
        stretching.change(tempo, semitones(steps));
        stretching.render(8192);
        stretching.places.clear();
        const auto heard = stretching.render(44100);
        const double error = mean(placeErrors(heard, stretching.places, semitones(steps), 8192));
        const double stretch = semitones(steps) / tempo;
        const double stretchChange = std::abs(stretchBefore / stretch - 1);
        EXPECT_LT(std::abs(error - errorBefore), oneMillisecond + longestHop * stretchChange) << name;
        stretchBefore = stretch;
        errorBefore = error;
    }
}

// As while a slider is being dragged: the account must not drift by what each change costs.
TEST(StretcherTest, ManySmallChangesDoNotAddUpToADrift)
{
    const MemorySound sound = sweepSound(cdRate, sweepFirst, sweepRise, 14);
    Stretching stretching(sound);
    stretching.start(begin, 0.6, semitones(-6));
    for (int step = 1; step <= 300; ++step) {
        stretching.change(0.6 + 0.0025 * step, semitones(-6 + 0.04 * step));
        stretching.render(hundredth.value);
    }
    stretching.render(8192);
    stretching.places.clear();
    const auto heard = stretching.render(2 * 44100);
    const double error = mean(placeErrors(heard, stretching.places, semitones(6), 8192));
    EXPECT_LT(std::abs(error), oneMillisecond);
}

TEST(StretcherTest, TheFirstFramesAreAsLoudAsTheRest)
{
    const MemorySound sound = sineSound(cdRate, 1, 440, 4);
    for (const double tempo : {0.4, 0.8, 1.25, 1.6}) {
        Stretching stretching(sound);
        stretching.start(begin, tempo, 1);
        const auto heard = stretching.render(44100);
        // Ten periods a piece.
        for (std::size_t piece = 0; piece < 20; ++piece) {
            const auto part = std::span(heard).subspan(piece * 1002, 1002);
            EXPECT_NEAR(decibels(amplitudeAt(part, cdRate, 440), 0.5), 0, 0.1) << tempo << " piece " << piece;
        }
    }
}

TEST(StretcherTest, StartingMakesNoStepLargerThanTheSteadySound)
{
    const MemorySound sound = sineSound(cdRate, 1, 440, 4);
    const double steady = largestStep(sound.interleaved());
    for (const double tempo : {0.4, 1.25, 1.6}) {
        for (const double steps : {-12.0, 0.0, 7.0}) {
            Stretching stretching(sound);
            stretching.start(begin, tempo, semitones(steps));
            EXPECT_LT(largestStep(stretching.render(8820)), 1.05 * steady * semitones(steps))
                << tempo << " " << steps;
        }
    }
}

TEST(StretcherTest, AChangeOfPitchIsHeardAtOnceAndWithoutAClick)
{
    const MemorySound sound = sineSound(cdRate, 1, 440, 8);
    const double steady = largestStep(sound.interleaved());
    Stretching stretching(sound);
    stretching.start(begin, 0.8, 1);
    stretching.render(22050);
    double before = 1;
    for (const double steps : {2.0, -3.0, 0.5, 7.0, -12.0, 12.0}) {
        stretching.change(0.8, semitones(steps));
        const auto heard = stretching.render(22050);
        EXPECT_LT(largestStep(heard), 1.15 * steady * std::max(before, semitones(steps))) << steps;
        // Twenty milliseconds on the old pitch is over.
        const auto after = std::span(heard).subspan(882);
        const double wanted = 440 * semitones(steps);
        EXPECT_NEAR(decibels(amplitudeAt(after, cdRate, wanted), 0.5), 0, 0.5) << steps;
        before = semitones(steps);
    }
}

class StretcherFormatTest : public ::testing::TestWithParam<std::tuple<int, int>>
{
};

TEST_P(StretcherFormatTest, PitchLevelAndLengthAreTrueAtEveryRateInEveryChannel)
{
    const SampleRate soundRate{std::get<0>(GetParam())};
    const int channels = std::get<1>(GetParam());
    const FrameCount blockFrames{soundRate.hertz / 100};
    const MemorySound sound =
        MemorySound::of(soundRate, channels, {3 * soundRate.hertz}, [&](std::int64_t frame, int channel) {
            return 0.5 * std::sin(turn * (channel == 0 ? 440 : 660) * static_cast<double>(frame) / soundRate.hertz);
        });
    Stretching stretching(sound, blockFrames);
    stretching.start({soundRate.hertz / 2}, 1.2, semitones(3));
    const auto heard = stretching.render(soundRate.hertz);
    EXPECT_NEAR(stretching.stretcher.inputAt(soundRate.hertz), 1.7 * soundRate.hertz, 1);
    for (int channel = 0; channel < channels; ++channel) {
        const double wanted = (channel == 0 ? 440 : 660) * semitones(3);
        const auto mono = channelOf(heard, channels, channel);
        EXPECT_NEAR(centsBetween(measuredFrequency(mono, soundRate, wanted), wanted), 0, 0.1);
        EXPECT_NEAR(decibels(amplitudeAt(mono, soundRate, wanted), 0.5), 0, 0.1);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, StretcherFormatTest,
                         ::testing::Combine(::testing::Values(8000, 44100, 48000, 96000, 192000),
                                            ::testing::Values(1, 2)),
                         [](const auto& row) {
                             return std::to_string(std::get<0>(row.param)) + "Hertz" +
                                    (std::get<1>(row.param) == 1 ? "Mono" : "Stereo");
                         });

// The phases of the library's output run on through a new start, so that the samples differ; all that is heard must
// not.
TEST(StretcherTest, StartedAgainItSoundsAsTrueAsTheFirstTime)
{
    const MemorySound sweep = sweepSound(cdRate, sweepFirst, sweepRise, 5);
    const MemorySound sine = sineSound(cdRate, 1, 440, 5);
    Stretching sweeping(sweep);
    Stretching steady(sine);
    for (int time = 0; time < 6; ++time) {
        const double tempo = 0.45 + 0.2 * time;
        const double pitch = semitones(2 * time - 6);
        sweeping.start({30'000}, 2 - tempo, 1 / pitch);
        sweeping.render(2000);
        sweeping.change(1.1, semitones(3));
        sweeping.render(500);
        sweeping.start(begin, tempo, pitch);
        sweeping.places.clear();
        const auto heard = sweeping.render(2 * 44'100);
        // A pitch that was changed live leaves the library's resampler with another delay, up to 75 frames.
        EXPECT_LT(std::abs(mean(placeErrors(heard, sweeping.places, pitch, 8192))), 2 * oneMillisecond) << time;

        steady.start(begin, tempo, pitch);
        const auto tone = steady.render(22'050);
        EXPECT_NEAR(centsBetween(measuredFrequency(tone, cdRate, 440 * pitch), 440 * pitch), 0, 0.1) << time;
        const auto beginning = std::span(tone).first(2205);
        EXPECT_NEAR(decibels(amplitudeAt(beginning, cdRate, 440 * pitch), 0.5), 0, 0.1) << time;
    }
}

TEST(StretcherTest, StartingAnyNumberOfTimesMovesNoPlace)
{
    const MemorySound sweep = sweepSound(cdRate, sweepFirst, sweepRise, 5);
    Stretching stretching(sweep);
    for (int time = 0; time < 5; ++time) {
        stretching.start({30'000}, 0.45 + 0.2 * time, semitones(2 * time - 6));
        stretching.render(2000);
        stretching.start(begin, 0.85, semitones(3));
        stretching.places.clear();
        const auto heard = stretching.render(2 * 44'100);
        EXPECT_LT(std::abs(mean(placeErrors(heard, stretching.places, semitones(3), 8192))), oneMillisecond)
            << time;
    }
}

TEST(StretcherTest, TheSameFramesInTheSameOrderSoundTheSame)
{
    const MemorySound sound = noiseSound(cdRate, 2, {3 * 44100});
    Stretching one(sound);
    Stretching other(sound);
    for (const double tempo : {0.85, 1.3}) {
        one.start(begin, tempo, semitones(1));
        other.start(begin, tempo, semitones(1));
        expectSame(one.render(4410), other.render(4410), 2, cdRate);
    }
}

TEST(StretcherTest, PiecesOfAnySizeSoundTheSame)
{
    const MemorySound sound = noiseSound(cdRate, 2, {3 * 44100});
    Stretching whole(sound);
    whole.start(begin, 1.3, semitones(-2));
    const auto wanted = whole.render(20'000);
    Stretching pieces(sound);
    pieces.start(begin, 1.3, semitones(-2));
    std::vector<float> actual;
    for (std::int64_t size = 1; actual.size() < wanted.size(); size = size * 7 % 1009) {
        const auto piece =
            pieces.render(std::min(size, static_cast<std::int64_t>((wanted.size() - actual.size()) / 2)));
        actual.insert(actual.end(), piece.begin(), piece.end());
    }
    expectSame(actual, wanted, 2, cdRate);
}

/// What is written to the standard error stream while it lives, also by libraries.
class StandardError
{
public:
    StandardError()
        : kept(::dup(STDERR_FILENO))
        , file(std::tmpfile())
    {
        std::fflush(stderr);
        ::dup2(::fileno(file), STDERR_FILENO);
    }
    ~StandardError()
    {
        restore();
        std::fclose(file);
    }
    StandardError(const StandardError&) = delete;
    StandardError& operator=(const StandardError&) = delete;

    std::string written()
    {
        restore();
        std::rewind(file);
        std::string text;
        for (int character = std::fgetc(file); character != EOF; character = std::fgetc(file))
            text += static_cast<char>(character);
        return text;
    }

private:
    void restore()
    {
        if (kept < 0)
            return;
        std::fflush(stderr);
        ::dup2(kept, STDERR_FILENO);
        ::close(kept);
        kept = -1;
    }

    int kept;
    std::FILE* file;
};

TEST(StretcherTest, TheLibraryHasNothingToComplainOf)
{
    const MemorySound sound = noiseSound(cdRate, 2, {5 * 44100});
    StandardError standardError;
    Stretching stretching(sound);
    for (const double tempo : {0.4, 1.0, 1.6}) {
        for (const double steps : {-12.0, 0.0, 12.0}) {
            stretching.start(begin, tempo, semitones(steps));
            for (const std::int64_t piece : {1, 3000, 17, 441}) {
                stretching.render(piece);
                stretching.change(2 - tempo, semitones(steps / 2));
            }
        }
    }
    EXPECT_EQ(standardError.written(), "");
}

}  // namespace
