#include "sound/editor/SourcePart.h"

#include "sound/editor/MemoryStream.h"

#include <gtest/gtest.h>

using namespace sound;
using sound::test::MemorySound;
using sound::test::MemoryStream;

namespace {

// Every sample tells its own place.
MemorySound counting(int channels, std::int64_t frames)
{
    return MemorySound::of({44100}, channels, {frames}, [channels](std::int64_t frame, int channel) {
        return static_cast<double>(frame * channels + channel + 1);
    });
}

TEST(SourcePartTest, AWholeSoundIsReadInOrderHoweverMuchIsAskedForAtATime)
{
    const MemorySound sound = counting(2, 20'000);
    for (const std::int64_t atOnce : {1, 777, 3001, 9000, 50'000}) {
        SourcePart part(std::make_unique<MemoryStream>(sound), {0}, {20'000});
        std::vector<float> read;
        std::int64_t frames = 0;
        while (true) {
            const FrameCount came = part.read({atOnce}, read);
            if (came.value == 0)
                break;
            EXPECT_EQ(came.value, std::min<std::int64_t>(atOnce, 20'000 - frames));
            frames += came.value;
        }
        EXPECT_EQ(read, sound.interleaved()) << atOnce << " at once";
        EXPECT_EQ(part.missing().value, 0);
    }
}

TEST(SourcePartTest, APartBeginsAndEndsWhereItIsTold)
{
    for (const std::int64_t begin : {1, 3001, 7000}) {
        SourcePart part(std::make_unique<MemoryStream>(counting(1, 20'000)), {begin}, {5000});
        EXPECT_EQ(part.length().value, 5000);
        std::vector<float> read;
        EXPECT_EQ(part.read({100'000}, read).value, 5000);
        ASSERT_EQ(read.size(), 5000U);
        EXPECT_EQ(read.front(), static_cast<float>(begin + 1));
        EXPECT_EQ(read.back(), static_cast<float>(begin + 5000));
        EXPECT_EQ(part.read({1}, read).value, 0);
        EXPECT_EQ(read.size(), 5000U);
    }
}

TEST(SourcePartTest, WhatIsReadIsAddedToWhatWasThere)
{
    SourcePart part(std::make_unique<MemoryStream>(counting(2, 10)), {0}, {10});
    std::vector<float> read{-1.0F};
    part.read({1}, read);
    EXPECT_EQ(read, (std::vector<float>{-1, 1, 2}));
}

TEST(SourcePartTest, WhatADamagedSoundLacksIsSilenceAndCounted)
{
    auto stream = std::make_unique<MemoryStream>(counting(2, 10'000));
    stream->endAfter({4000});
    SourcePart part(std::move(stream), {1000}, {9000});
    std::vector<float> read;
    EXPECT_EQ(part.read({2000}, read).value, 2000);
    EXPECT_EQ(part.missing().value, 0);
    EXPECT_EQ(part.read({5000}, read).value, 5000);
    EXPECT_EQ(part.missing().value, 4000);
    EXPECT_EQ(part.read({5000}, read).value, 2000);
    EXPECT_EQ(part.missing().value, 6000);
    ASSERT_EQ(read.size(), 18'000U);
    EXPECT_EQ(read[5999], 8000.0F);
    EXPECT_TRUE(std::all_of(read.begin() + 6000, read.end(), [](float sample) { return sample == 0; }));
}

TEST(SourcePartTest, ASoundThatEndsBeforeThePartBeginsIsAllMissing)
{
    auto stream = std::make_unique<MemoryStream>(counting(1, 10'000));
    stream->endAfter({4000});
    SourcePart part(std::move(stream), {6000}, {1000});
    std::vector<float> read;
    EXPECT_EQ(part.read({1000}, read).value, 1000);
    EXPECT_EQ(part.missing().value, 1000);
    EXPECT_EQ(read, std::vector<float>(1000));
}

TEST(SourcePartTest, AfterAStopNothingMoreIsDecoded)
{
    auto stream = std::make_unique<MemoryStream>(counting(1, 100'000));
    const MemoryStream& watched = *stream;
    SourcePart part(std::move(stream), {0}, {100'000});
    std::vector<float> read;
    part.read({10}, read);
    const std::int64_t before = watched.framesRead();
    part.stop();
    part.read({50'000}, read);
    EXPECT_EQ(watched.framesRead(), before);
}

}  // namespace
