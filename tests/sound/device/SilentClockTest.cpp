#include "sound/device/SilentClock.h"

#include "sound/device/AudioOutput.h"

#include <gtest/gtest.h>

#include <thread>

using namespace sound;
using namespace std::chrono_literals;

namespace {

constexpr SampleRate clockRate{48000};
constexpr FrameCount bufferFull{2880};  // 60 ms

TEST(SilentClockTest, BeforeItStartsItTakesABufferFullAndNoMore)
{
    SilentClock clock;
    clock.open(clockRate);
    EXPECT_EQ(clock.wanted(), bufferFull);
    clock.write(bufferFull);
    EXPECT_EQ(clock.wanted(), FrameCount{0});
    EXPECT_EQ(clock.delay(), bufferFull);
}

TEST(SilentClockTest, OnceStartedItPlaysAtThePaceOfTheClock)
{
    SilentClock clock;
    clock.open(clockRate);
    clock.start({0});
    const auto begun = std::chrono::steady_clock::now();
    std::int64_t written = 0;
    while (written < 48000 / 2) {
        const FrameCount wanted = clock.wanted();
        if (wanted.value == 0) {
            std::this_thread::sleep_for(clock.untilWanted({480}));
            continue;
        }
        clock.write(wanted);
        written += wanted.value;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begun;
    // Half a second of sound, less the buffer that was taken ahead.
    EXPECT_GE(elapsed.count(), 0.439);
    EXPECT_LE(clock.delay(), bufferFull);
}

TEST(SilentClockTest, WhatWasUnderWayElsewhereIsStillPlayed)
{
    SilentClock clock;
    clock.open(clockRate);
    clock.start({1200});
    EXPECT_GT(clock.delay(), FrameCount{600});
    EXPECT_LE(clock.delay(), FrameCount{1200});
}

TEST(SilentClockTest, StoppingDropsWhatIsQueued)
{
    SilentClock clock;
    clock.open(clockRate);
    clock.write(bufferFull);
    clock.start({0});
    clock.stop();
    EXPECT_EQ(clock.delay(), FrameCount{0});
    EXPECT_FALSE(clock.running());
}

}  // namespace
