// The player engine on the sound server: what the server plays is recorded and compared with theory.

#include "sound/Eventually.h"
#include "sound/RealTimeMain.h"
#include "sound/Signals.h"
#include "sound/SoundFiles.h"
#include "sound/device/PrivatePulse.h"
#include "sound/device/SystemOutput.h"
#include "sound/player/SoundPlayerEngine.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cmath>

using namespace sound;
using namespace sound::test;
using sound::test::SoundFiles;

namespace {

constexpr SampleRate rate{44100};

class HeardTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(pulse.start());
        engine.InitPlayers(1, 0, 0, 0, 0, 0);
    }

    bool playsTo(int milliseconds)
    {
        return eventually([&] { return engine.GetPosition(0) >= milliseconds; });
    }

    SoundFiles files;
    PrivatePulse pulse{rate};
    SoundPlayerEngine engine{[] { return std::make_unique<SystemOutput>(); }};
};

TEST_F(HeardTest, AnUnchangedFileReachesTheServerBitForBit)
{
    const QString path = files.make("a.mp3", sound::test::slideWithNoise(44100, 2, 2 * 44100));
    const std::vector<float> decoded = sound::test::decodedByFfmpeg(path, 2);
    ASSERT_TRUE(pulse.startRecording());
    ASSERT_EQ(engine.LoadSound(0, path), 0);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return engine.GetPlayerStatus(0) == 3; }));
    const auto recorded = static_cast<std::int64_t>(pulse.recordedSoFar().size() / 2);
    ASSERT_TRUE(pulse.waitForFrames(recorded + 8820));
    const std::vector<float> heard = pulse.stopRecording();

    const std::int64_t first = firstSound(heard);
    const auto firstDecoded = firstSound(decoded);
    ASSERT_GE(first, 0);
    const auto frames = static_cast<std::int64_t>(decoded.size() / 2) - firstDecoded;
    ASSERT_GE(static_cast<std::int64_t>(heard.size() / 2), first + frames);
    EXPECT_TRUE(std::equal(decoded.begin() + firstDecoded * 2, decoded.end(), heard.begin() + first * 2));
}

TEST_F(HeardTest, ALoopOnTheServerHasThePeriodThatWasAskedForToTheFrame)
{
    const QString path =
        files.make("a.wav", sound::test::slideWithNoise(44100, 2, 3 * 44100), {"-c:a", "pcm_f32le"});
    const std::vector<float> decoded = sound::test::decodedByFfmpeg(path, 2);
    ASSERT_TRUE(pulse.startRecording());
    ASSERT_EQ(engine.LoadSound(0, path), 0);
    engine.PlaySoundRange(0, 1000, 1137, -1);
    const std::vector<float> begin(decoded.begin() + 88200, decoded.begin() + 88200 + 400);
    ASSERT_TRUE(eventually([&] { return frameOfMatch(pulse.recordedSoFar(), begin.data(), 400) >= 0; }));
    const std::int64_t first = frameOfMatch(pulse.recordedSoFar(), begin.data(), 400);
    constexpr std::int64_t period = 6042;  // 137 ms
    ASSERT_TRUE(pulse.waitForFrames(first + 10 * period + 400));
    const std::vector<float> heard = pulse.stopRecording();
    for (std::int64_t pass = 0; pass < 10; ++pass)
        EXPECT_TRUE(std::equal(begin.begin(), begin.end(), heard.begin() + (first + pass * period) * 2)) << pass;
}

TEST_F(HeardTest, SlowedAndRaisedWhileItPlaysTheToneIsWhatTheoryWants)
{
    const QString path = files.make("a.flac", sound::test::sine(440, 44100, 2, 20 * 44100));
    ASSERT_TRUE(pulse.startRecording());
    ASSERT_EQ(engine.LoadSound(0, path), 0);
    engine.PlaySound(0);
    ASSERT_TRUE(playsTo(500));
    engine.ChangeTempo(0, -20);
    engine.ChangePitchSemitones(0, 2);
    const int changedAt = engine.GetPosition(0);
    QElapsedTimer since;
    since.start();
    ASSERT_TRUE(playsTo(changedAt + 2400));
    // 2.4 s of the sound at four fifths of its speed are 3 s; half a buffer's error at each end.
    EXPECT_NEAR(static_cast<double>(since.elapsed()), 3000, 60);
    const std::vector<float> heard = channelOf(pulse.stopRecording(), 2, 0);
    const std::span<const float> end = std::span(heard).subspan(heard.size() - 88200);
    const double wanted = 440 * std::exp2(2 / 12.0);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(end, rate, wanted), wanted)), 0.1);
}

TEST_F(HeardTest, AServerThatDiesWhileItPlaysIsOutlivedAndHeardAgain)
{
    ASSERT_EQ(engine.LoadSound(0, files.make("a.flac", sound::test::sine(440, 44100, 2, 60 * 44100))), 0);
    engine.PlaySound(0);
    ASSERT_TRUE(playsTo(500));

    pulse.kill();
    const int killedAt = engine.GetPosition(0);
    QElapsedTimer since;
    since.start();
    ASSERT_TRUE(playsTo(killedAt + 1000));
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    // Time goes on at its own pace: a second of sound takes a second, but for the buffer that was lost.
    EXPECT_NEAR(static_cast<double>(since.elapsed()), 1000, 120);

    ASSERT_TRUE(pulse.start());
    ASSERT_TRUE(pulse.startRecording());
    ASSERT_TRUE(eventually([&] { return firstSound(pulse.recordedSoFar()) >= 0; }));
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    const int back = engine.GetPosition(0);
    EXPECT_TRUE(playsTo(back + 300));
}

TEST_F(HeardTest, ThePositionIsThatOfTheSoundThatIsHeardNow)
{
    // Silence with a burst each half second: where in time a burst is recorded tells when its place was heard.
    sound::test::TestSound bursts;
    bursts.samples.assign(static_cast<std::size_t>(8 * 44100 * 2), 0.0F);
    for (std::size_t burst = 1; burst < 16; ++burst) {
        for (std::size_t frame = 0; frame < 441; ++frame) {
            const auto level = static_cast<float>(0.5 * std::sin(0.3 * static_cast<double>(frame)));
            const std::size_t place = (burst * 22050 + frame) * 2;
            bursts.samples[place] = bursts.samples[place + 1] = level;
        }
    }
    ASSERT_EQ(engine.LoadSound(0, files.make("a.flac", bursts)), 0);
    ASSERT_TRUE(pulse.startRecording());
    engine.PlaySound(0);
    ASSERT_TRUE(playsTo(3000));

    // The first burst lies at 500 ms of the sound, so that the place at 3000 ms is recorded 2500 ms after it. The
    // recording runs some moments behind what is heard: it must not hold that place yet, but soon.
    const auto recordedFrames = [this] { return static_cast<std::int64_t>(pulse.recordedSoFar().size() / 2); };
    const std::int64_t recorded = recordedFrames();
    QElapsedTimer since;
    since.start();
    const std::int64_t place = firstSound(pulse.recordedSoFar()) + 110250;
    EXPECT_LE(recorded, place + 882);  // 20 ms
    ASSERT_TRUE(eventually([&] { return recordedFrames() >= place; }));
    EXPECT_LT(since.elapsed(), 120);
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    return sound::test::runRealTimeTests(argc, argv);
}
