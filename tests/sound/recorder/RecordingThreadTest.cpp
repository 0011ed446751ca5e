#include "sound/recorder/RecordingThread.h"

#include "sound/Comparison.h"
#include "sound/SoundFiles.h"
#include "sound/device/CaptureRing.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <algorithm>
#include <future>
#include <vector>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;

namespace {

using Event = RecordingThread::Event;

constexpr SampleRate rate{48000};
constexpr RecordingFormat wav{wavFormat(), rate, 2};

/// Milliseconds of a level; every frame can be told from its neighbours.
std::vector<float> stretch(int milliseconds, int level, int step = 1)
{
    std::vector<float> samples;
    for (int frame = 0; frame < milliseconds * 48; ++frame) {
        samples.push_back(static_cast<float>(level + step * (frame % 50)) / 32768);
        samples.push_back(static_cast<float>(-level - step * (frame % 47)) / 32768);
    }
    return samples;
}

std::vector<float> operator+(std::vector<float> one, const std::vector<float>& other)
{
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

class RecordingThreadTest : public ::testing::Test
{
protected:
    RecordingThreadTest() { thread.follow(&ring, rate); }
    ~RecordingThreadTest() override { thread.follow(nullptr, rate); }

    /// As a device would deliver it, but as fast as it goes.
    void capture(std::span<const float> stereo)
    {
        while (!stereo.empty()) {
            const std::span<const float> part = stereo.first(std::min<std::size_t>(stereo.size(), 960 * 2));
            while (ring.waiting().value > 40000)
                std::this_thread::yield();
            ring.push(part);
            thread.reader().notify();
            stereo = stereo.subspan(part.size());
        }
    }

    /// Waits until all that was asked for has been done.
    void settle() { thread.follow(&ring, rate); }

    /// The next events; waits for them.
    std::vector<Event> nextEvents()
    {
        pollfd watched{thread.eventDescriptor(), POLLIN, 0};
        EXPECT_EQ(poll(&watched, 1, 20000), 1);
        return thread.takeEvents();
    }

    void watchLevel(Milliseconds pause)
    {
        thread.change([pause](RecordingChain& chain) {
            chain.watchLevel(true);
            chain.setThreshold(3000);
            chain.setShortestPause(pause);
        });
    }

    QString path(int number) const { return files.path(QString("part %1.wav").arg(number)); }
    std::vector<float> recorded(int number) const { return decodedByFfmpeg(path(number), 2); }

    SoundFiles files;
    CaptureRing ring{{48000}};
    RecordingThread thread;
};

TEST_F(RecordingThreadTest, WhatWasCapturedBetweenBeginAndEndIsInTheFileWhenTheCallReturns)
{
    capture(stretch(100, 100));
    thread.begin(path(0), wav);
    settle();
    const auto sound = stretch(700, 9000);
    capture(sound);
    EXPECT_TRUE(thread.end());
    EXPECT_FALSE(thread.end());
    expectSame(recorded(0), sound, 2, rate);
    EXPECT_EQ(ring.lost(), FrameCount{0});
}

TEST_F(RecordingThreadTest, AnAnswerToAPauseCutsJustBehindIt)
{
    watchLevel(1000ms);
    thread.begin(path(0), wav);
    settle();
    const auto piece = stretch(300, 9000);
    const auto pause = stretch(1500, 0);
    std::thread player([&] {
        for (int number = 0; number < 8; ++number)
            capture(piece + pause);
    });
    int files = 1;
    for (int changes = 0; changes < 16; ++changes) {
        const auto events = nextEvents();
        ASSERT_EQ(events.size(), 1U);
        EXPECT_EQ(events[0], changes % 2 == 0 ? Event::Sound : Event::Silence);
        if (events[0] == Event::Silence)
            thread.goOn(path(files++), wav);
        thread.answer();
    }
    player.join();
    EXPECT_TRUE(thread.end());

    EXPECT_EQ(recorded(0).size() / 2, 1300U * 48);
    std::vector<float> all;
    for (int number = 0; number < files; ++number) {
        const auto one = recorded(number);
        if (number > 0 && number < 8) {
            EXPECT_EQ(one.size() / 2, 1800U * 48) << number;
        }
        all = all + one;
    }
    std::vector<float> wanted;
    for (int number = 0; number < 8; ++number)
        wanted = wanted + piece + pause;
    expectSame(all, wanted, 2, rate);
}

TEST_F(RecordingThreadTest, WhatIsAskedForRightAfterAnAnswerStillComesBehindTheLastFrame)
{
    watchLevel(1000ms);
    thread.begin(path(0), wav);
    settle();
    capture(stretch(300, 9000));
    EXPECT_EQ(nextEvents(), std::vector{Event::Sound});
    thread.answer();
    capture(stretch(1500, 0));
    EXPECT_EQ(nextEvents(), std::vector{Event::Silence});
    // The thread finds the answer and what follows it at once.
    std::promise<void> busy;
    thread.change([until = busy.get_future().share()](RecordingChain&) { until.wait(); });
    thread.goOn(path(1), wav);
    thread.answer();
    thread.change([](RecordingChain& chain) { chain.end(); });
    busy.set_value();
    settle();
    EXPECT_EQ(recorded(0).size() / 2, 1300U * 48);
    EXPECT_EQ(recorded(1).size() / 2, 500U * 48);
}

TEST_F(RecordingThreadTest, ABusyMainThreadIsNotWaitedForLongerThanAMoment)
{
    watchLevel(1000ms);
    thread.begin(path(0), wav);
    settle();
    capture(stretch(300, 9000) + stretch(300, 0));
    EXPECT_EQ(nextEvents(), std::vector{Event::Sound});
    // No answer: the sound is written all the same.
    while (ring.waiting() > FrameCount{0})
        std::this_thread::yield();
    EXPECT_TRUE(thread.end());
    EXPECT_EQ(recorded(0).size() / 2, 600U * 48);
}

TEST_F(RecordingThreadTest, GoingOnWithoutARecordingDoesNothing)
{
    thread.goOn(path(0), wav);
    capture(stretch(100, 1000));
    EXPECT_FALSE(thread.end());
    EXPECT_FALSE(QFile::exists(path(0)));
}

TEST_F(RecordingThreadTest, AFileThatCannotBeMadeIsTold)
{
    thread.begin("/proc/no/such.wav", wav);
    EXPECT_EQ(nextEvents(), std::vector{Event::Failed});
    EXPECT_FALSE(thread.end());
}

TEST_F(RecordingThreadTest, AnotherRingIsFollowedWhenTheFirstIsEmpty)
{
    thread.begin(path(0), wav);
    settle();
    const auto first = stretch(200, 5000);
    const auto second = stretch(200, -5000);
    capture(first);
    CaptureRing other{{48000}};
    thread.follow(&other, rate);
    ring.push(stretch(10, 1));  // into the old one, which nobody reads any more
    other.push(second);
    EXPECT_TRUE(thread.end());
    expectSame(recorded(0), first + second, 2, rate);
    thread.follow(nullptr, rate);
}

TEST_F(RecordingThreadTest, PeaksAreThoseSinceTheLastCall)
{
    capture(stretch(20, 16384, 0));
    while (ring.waiting() > FrameCount{0})
        std::this_thread::yield();
    // The thread tells them one after the other.
    Peaks peaks;
    while (peaks.left == 0 || peaks.right == 0)
        peaks = higher(peaks, thread.takePeaks());
    EXPECT_EQ(peaks.left, 0.5F);
    EXPECT_EQ(peaks.right, 0.5F);
    EXPECT_EQ(thread.takePeaks().left, 0);
}

TEST_F(RecordingThreadTest, ItsEndClosesTheFile)
{
    {
        CaptureRing own{{48000}};
        RecordingThread ending;
        ending.follow(&own, rate);
        ending.begin(path(0), wav);
        ending.follow(&own, rate);
        own.push(stretch(100, 7000));
        ending.follow(nullptr, rate);
    }
    expectSame(recorded(0), stretch(100, 7000), 2, rate);
}

}  // namespace
