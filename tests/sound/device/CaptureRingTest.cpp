#include "sound/device/CaptureRing.h"

#include <gtest/gtest.h>
#include <span>
#include <thread>
#include <vector>

using namespace sound;

namespace {

std::vector<float> frames(int first, int count)
{
    std::vector<float> stereo;
    for (int frame = first; frame < first + count; ++frame) {
        stereo.push_back(static_cast<float>(frame));
        stereo.push_back(static_cast<float>(-frame));
    }
    return stereo;
}

std::vector<float> popped(CaptureRing& ring, std::size_t most)
{
    std::vector<float> stereo(most * 2);
    stereo.resize(ring.pop(stereo).size());
    return stereo;
}

TEST(CaptureRingTest, FramesComeOutAsTheyWentInOverTheEndOfTheRing)
{
    CaptureRing ring({7});
    EXPECT_TRUE(popped(ring, 10).empty());
    for (int first = 0; first < 100; first += 5) {
        ring.push(frames(first, 5));
        EXPECT_EQ(ring.waiting(), FrameCount{5});
        EXPECT_EQ(popped(ring, 3), frames(first, 3));
        EXPECT_EQ(popped(ring, 10), frames(first + 3, 2));
    }
    EXPECT_EQ(ring.lost(), FrameCount{0});
}

TEST(CaptureRingTest, WhatFindsNoRoomIsLostAndCounted)
{
    CaptureRing ring({10});
    ring.push(frames(0, 8));
    ring.push(frames(8, 5));
    EXPECT_EQ(ring.lost(), FrameCount{3});
    EXPECT_EQ(popped(ring, 20), frames(0, 10));
    ring.push(frames(50, 2));
    EXPECT_EQ(popped(ring, 20), frames(50, 2));
}

TEST(CaptureRingTest, AHoleIsSilenceOfItsLength)
{
    CaptureRing ring({10});
    ring.push(frames(1, 6));
    popped(ring, 6);
    ring.pushSilence({7});
    EXPECT_EQ(popped(ring, 20), std::vector<float>(14, 0.0F));
}

TEST(CaptureRingTest, TwoThreadsPassAMillionFramesInOrder)
{
    constexpr int count = 1'000'000;
    CaptureRing ring({1000});
    std::thread writer([&] {
        for (int first = 0; first < count; first += 100) {
            while (ring.waiting().value > 900)
                std::this_thread::yield();
            ring.push(frames(first, 100));
        }
    });
    std::vector<float> stereo(256 * 2);
    int next = 0;
    int wrong = 0;
    while (next < count) {
        const std::span<const float> got = ring.pop(stereo);
        for (std::size_t sample = 0; sample < got.size(); sample += 2, ++next)
            wrong +=
                got[sample] == static_cast<float>(next) && got[sample + 1] == static_cast<float>(-next) ? 0 : 1;
    }
    writer.join();
    EXPECT_EQ(next, count);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(ring.lost(), FrameCount{0});
}

}  // namespace
