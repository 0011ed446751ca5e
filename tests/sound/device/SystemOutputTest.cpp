#include "sound/device/SystemOutput.h"

#include "sound/RealTimeMain.h"
#include "sound/device/PrivatePulse.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <random>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr SampleRate rate{44100};
constexpr FrameCount block{441};

std::vector<float> noise(std::size_t frames)
{
    std::mt19937 generator(7);
    std::uniform_real_distribution<float> level(-0.5F, 0.5F);
    std::vector<float> samples(frames * 2);
    for (float& sample : samples)
        sample = level(generator);
    return samples;
}

// Writes until @p until says so, or ten seconds are over; returns the frames written.
std::int64_t playUntil(SystemOutput& output, const std::vector<float>& samples,
                       const std::function<bool(std::int64_t)>& until)
{
    const UrgentHere urgent;
    const Clock::time_point begun = Clock::now();
    std::int64_t written = 0;
    const auto frames = static_cast<std::int64_t>(samples.size() / 2);
    while (!until(written) && Clock::now() - begun < 10s) {
        while (output.wanted() >= block) {
            output.write(samples.data() + 2 * (written % (frames - block.value)), block);
            written += block.value;
        }
        output.wait(10ms);
    }
    return written;
}

TEST(SystemOutputTest, WithoutAServerTimeGoesOnInSilence)
{
    PrivatePulse pulse(rate);  // not started: its socket leads nowhere
    SystemOutput output;
    output.open(rate);
    output.start();
    const Clock::time_point begun = Clock::now();
    const std::int64_t written =
        playUntil(output, noise(44100), [&](std::int64_t) { return Clock::now() - begun > 1500ms; });
    // A second and a half, less the half second at most that a server is waited for.
    EXPECT_GT(written, 44100);
    EXPECT_LT(written, 44100 * 1.7);
    EXPECT_LE(output.delay(), framesIn(AudioOutput::longestDelay, rate));
}

TEST(SystemOutputTest, AWakeEndsALongWait)
{
    PrivatePulse pulse(rate);
    SystemOutput output;
    output.wake();
    const Clock::time_point begun = Clock::now();
    output.wait(20s);
    EXPECT_LT(Clock::now() - begun, 10s);
}

TEST(SystemOutputTest, FramesReachTheServerBitForBitWithinThePromisedDelay)
{
    PrivatePulse pulse(rate);
    ASSERT_TRUE(pulse.start());
    ASSERT_TRUE(pulse.startRecording());
    SystemOutput output;
    output.open(rate);
    const std::vector<float> samples = noise(44100);
    output.start();
    const std::int64_t written = playUntil(output, samples, [](std::int64_t frames) { return frames >= 35000; });
    ASSERT_GE(written, 35000);
    EXPECT_GT(output.delay().value, 0);
    EXPECT_LE(output.delay(), framesIn(60ms, rate));

    ASSERT_TRUE(pulse.waitForFrames(static_cast<std::int64_t>(pulse.recordedSoFar().size() / 2) + 8820));
    const std::vector<float> heard = pulse.stopRecording();
    const std::int64_t first = frameOfMatch(heard, samples.data(), 200);
    ASSERT_GE(first, 0);
    const std::size_t sure = static_cast<std::size_t>(written - 4410) * 2;
    ASSERT_LE(static_cast<std::size_t>(first) * 2 + sure, heard.size());
    EXPECT_TRUE(std::equal(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(sure),
                           heard.begin() + first * 2));
}

TEST(SystemOutputTest, AServerThatDiesAndComesBackIsSurvivedAndUsedAgain)
{
    PrivatePulse pulse(rate);
    ASSERT_TRUE(pulse.start());
    SystemOutput output;
    output.open(rate);
    output.start();
    const std::vector<float> samples = noise(44100);
    ASSERT_GE(playUntil(output, samples, [](std::int64_t frames) { return frames >= 8820; }), 8820);

    pulse.kill();
    const Clock::time_point killed = Clock::now();
    const std::int64_t inSilence =
        playUntil(output, samples, [&](std::int64_t) { return Clock::now() - killed > 500ms; });
    EXPECT_GT(inSilence, 44100 / 4);

    ASSERT_TRUE(pulse.start());
    ASSERT_TRUE(pulse.startRecording());
    bool sounded = false;
    playUntil(output, samples, [&](std::int64_t) {
        sounded = firstSound(pulse.recordedSoFar()) >= 0;
        return sounded;
    });
    EXPECT_TRUE(sounded);
}

}  // namespace

int main(int argc, char** argv)
{
    return sound::test::runRealTimeTests(argc, argv);
}
