#include "sound/player/WindowReader.h"

#include "sound/Comparison.h"
#include "sound/Signals.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::int64_t longestSeam = 441;  // 10 ms

class WindowReaderTest : public ::testing::Test
{
protected:
    WindowReaderTest() { reader.prepare(cdRate, 2); }

    std::vector<float> read(std::int64_t frames, std::int64_t piece = 441)
    {
        std::vector<float> heard(static_cast<std::size_t>(2 * frames));
        for (std::int64_t done = 0; done < frames; done += piece)
            reader.next({std::min(piece, frames - done)}, heard.data() + 2 * done);
        return heard;
    }

    std::vector<float> own(std::int64_t from, std::int64_t frames) const
    {
        std::vector<float> samples(static_cast<std::size_t>(2 * frames));
        sound.read({from}, {frames}, samples.data());
        return samples;
    }

    const MemorySound sound = noiseSound(cdRate, 2, {44100});
    WindowReader reader;
};

TEST_F(WindowReaderTest, AWindowThatPlaysOnceIsTheSoundsOwnFramesAndThenSilence)
{
    reader.open(sound, {{1000}, {3000}, false}, {1500});
    auto wanted = own(1500, 1500);
    wanted.resize(2 * 2500);
    expectSame(read(2500), wanted, 2, cdRate);
    EXPECT_EQ(reader.position(), FramePosition{4000});
}

TEST_F(WindowReaderTest, BeforeTheSoundThereIsSilence)
{
    reader.open(sound, wholeOf(sound.length()), {-100});
    auto wanted = std::vector<float>(200);
    const auto beginning = own(0, 50);
    wanted.insert(wanted.end(), beginning.begin(), beginning.end());
    expectSame(read(150), wanted, 2, cdRate);
}

TEST_F(WindowReaderTest, ARepeatingWindowIsLedUpToByTheSoundItself)
{
    reader.open(sound, {{5000}, {8000}, true}, {4000});
    expectSame(read(1500), own(4000, 1500), 2, cdRate);
}

TEST_F(WindowReaderTest, EveryPassIsExactlyOneWindowLong)
{
    for (const std::int64_t length : {1, 2, 3, 10, 441, 442, 443, 1000, 4410}) {
        reader.open(sound, {{2000}, {2000 + length}, true}, {2000});
        const auto first = read(length);
        for (int pass = 0; pass < 50; ++pass) {
            EXPECT_EQ(foldedIn(reader.window(), reader.position()), FramePosition{2000});
            expectSame(read(length), first, 2, cdRate);
        }
    }
}

TEST_F(WindowReaderTest, OutsideTheSeamEveryPassIsTheSoundBitForBit)
{
    for (const std::int64_t length : {1, 2, 3, 10, 441, 442, 1000, 4410}) {
        reader.open(sound, {{2000}, {2000 + length}, true}, {2000});
        const std::int64_t untouched = length - std::min(longestSeam, length / 2);
        ASSERT_GE(untouched, 1);
        for (int pass = 0; pass < 3; ++pass) {
            auto heard = read(length);
            heard.resize(static_cast<std::size_t>(2 * untouched));
            expectSame(heard, own(2000, untouched), 2, cdRate);
        }
    }
}

TEST_F(WindowReaderTest, TheSeamBeginsAsTheWindowsEndAndEndsAsWhatLeadsUpToItsBegin)
{
    reader.open(sound, {{10'000}, {14'000}, true}, {14'000 - longestSeam});
    const auto heard = read(longestSeam);
    const auto leaving = own(14'000 - longestSeam, longestSeam);
    const auto coming = own(10'000 - longestSeam, longestSeam);
    for (const std::size_t frame : {0U, 1U, 2U, 5U})
        EXPECT_NEAR(heard[2 * frame], leaving[2 * frame], 0.001) << frame;
    for (const std::size_t back : {1U, 2U, 5U}) {
        const std::size_t frame = longestSeam - back;
        EXPECT_NEAR(heard[2 * frame + 1], coming[2 * frame + 1], 0.001) << frame;
    }
}

TEST_F(WindowReaderTest, AtTheSoundsOwnBeginningTheSeamFadesIntoSilence)
{
    reader.open(sound, {{0}, {4000}, true}, {0});
    const auto heard = read(8000);
    EXPECT_NEAR(heard[2 * 3999], 0, 0.005);
    expectSame(std::span(heard).subspan(2 * 4000, 2000), own(0, 1000), 2, cdRate);
}

TEST_F(WindowReaderTest, AWindowToTheVeryEndOfTheSoundRepeatsLikeAnyOther)
{
    reader.open(sound, {{40'000}, {44'100}, true}, {40'000});
    const auto first = read(4100);
    expectSame(std::span(first).first(2 * (4100 - longestSeam)), own(40'000, 4100 - longestSeam), 2, cdRate);
    expectSame(read(4100), first, 2, cdRate);
}

TEST_F(WindowReaderTest, PiecesOfAnySizeAreTheSameSound)
{
    const PlayWindow window{{2000}, {2700}, true};
    reader.open(sound, window, {1900});
    const auto wanted = read(5000, 5000);
    for (const std::int64_t piece : {1, 7, 440, 441, 442, 701}) {
        reader.open(sound, window, {1900});
        expectSame(read(5000, piece), wanted, 2, cdRate);
    }
}

TEST_F(WindowReaderTest, SeekingGoesToARunningPositionInAnyPass)
{
    const PlayWindow window{{2000}, {3000}, true};
    reader.open(sound, window, {2000});
    const auto wanted = read(4000);
    reader.seek({2000 + 500});
    expectSame(read(2000), std::span(wanted).subspan(2 * 500, 2 * 2000), 2, cdRate);
    reader.seek({2000 + 1'000'000 + 900});
    expectSame(read(2000), std::span(wanted).subspan(2 * 900, 2 * 2000), 2, cdRate);
}

TEST_F(WindowReaderTest, TheSeamKnowsItsPlaces)
{
    reader.open(sound, {{2000}, {3000}, true}, {2000});
    EXPECT_FALSE(reader.inSeam({2000}));
    EXPECT_FALSE(reader.inSeam({2999 - longestSeam}));
    EXPECT_TRUE(reader.inSeam({3000 - longestSeam}));
    EXPECT_TRUE(reader.inSeam({2999}));
    EXPECT_FALSE(reader.inSeam({3000}));
    EXPECT_TRUE(reader.inSeam({3999}));
    reader.open(sound, {{2000}, {3000}, false}, {2000});
    EXPECT_FALSE(reader.inSeam({2999}));
}

TEST_F(WindowReaderTest, FramesAreReadyWhenAllThatAreAskedForAreDecoded)
{
    MemorySound partial = noiseSound(cdRate, 2, {10'000});
    partial.setAvailable({5000});
    const PlayWindow once{{0}, {10'000}, false};
    EXPECT_TRUE(WindowReader::ready(partial, once, {4000}, {1000}));
    EXPECT_FALSE(WindowReader::ready(partial, once, {4001}, {1000}));
    EXPECT_FALSE(WindowReader::ready(partial, once, {9000}, {1}));
    // Beyond the window's end nothing is asked for.
    EXPECT_TRUE(WindowReader::ready(partial, {{0}, {5000}, false}, {4999}, {100'000}));
    const PlayWindow repeating{{1000}, {5000}, true};
    EXPECT_TRUE(WindowReader::ready(partial, repeating, {4900}, {1000}));
    EXPECT_TRUE(WindowReader::ready(partial, repeating, {1'000'000}, {1000}));
    EXPECT_FALSE(WindowReader::ready(partial, {{1000}, {5001}, true}, {4900}, {1000}));
}

TEST(WindowReaderSeamTest, ACutThroughASineMakesNoStepMuchLargerThanTheSines)
{
    for (const double hertz : {55.0, 220.0, 440.0, 1000.0}) {
        const MemorySound sine = sineSound(cdRate, 1, hertz, 1);
        const double steady = largestStep(sine.interleaved());
        WindowReader reader;
        reader.prepare(cdRate, 1);
        for (std::int64_t begin = 10'000; begin < 10'400; begin += 37) {
            for (std::int64_t length = 4000; length < 4400; length += 41) {
                reader.open(sine, {{begin}, {begin + length}, true}, {begin});
                std::vector<float> heard(static_cast<std::size_t>(2 * length + 500));
                reader.next({static_cast<std::int64_t>(heard.size())}, heard.data());
                // While one sine goes and an opposed one comes, their levels move by up to a hundredth of full
                // scale a frame.
                ASSERT_LT(largestStep(heard), 1.05 * steady + 0.008) << hertz << " " << begin << " " << length;
            }
        }
    }
}

TEST_F(WindowReaderTest, TheSeamOfAStretchedLoopIsLongerAndStillEndsAtTheBegin)
{
    constexpr std::int64_t stretchedSeam = 1323;  // 30 ms
    reader.open(sound, {{10'000}, {20'000}, true}, {10'000}, WindowReader::stretchedSeam);
    const auto pass = read(10'000);
    expectSame(std::span(pass).first(2 * (10'000 - stretchedSeam)), own(10'000, 10'000 - stretchedSeam), 2, cdRate);
    EXPECT_TRUE(reader.inSeam({20'000 - stretchedSeam}));
    EXPECT_FALSE(reader.inSeam({20'000 - stretchedSeam - 1}));
    expectSame(read(100), own(10'000, 100), 2, cdRate);
}

}  // namespace
