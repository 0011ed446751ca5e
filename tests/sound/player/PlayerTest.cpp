#include "sound/player/Player.h"

#include "sound/Eventually.h"
#include "sound/Signals.h"
#include "sound/player/ManualOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;

namespace {

constexpr SampleRate rate{44100};

class PlayerTest : public ::testing::Test
{
protected:
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    Player player{[this] { return std::make_unique<ManualOutput>(clock); }};

    std::shared_ptr<MemorySound> load(MemorySound sound)
    {
        auto shared = std::make_shared<MemorySound>(std::move(sound));
        player.load(shared);
        return shared;
    }

    // Play, and wait until the render thread has begun.
    void play()
    {
        player.play();
        ASSERT_TRUE(eventually([this] { return clock->running(); }));
    }

    // The position, when the render thread has told of what has been played by now. Its reports are interpolated
    // with the real clock, which the manual one knows nothing of, so that it runs ahead by up to a buffer.
    bool positionComesNear(int milliseconds, int tolerance)
    {
        return eventually([&] { return std::abs(player.position() - milliseconds) <= tolerance; });
    }
};

TEST_F(PlayerTest, WithoutASoundItIsEmptyAtZero)
{
    EXPECT_EQ(player.status(), PlayerEngine::Empty);
    EXPECT_EQ(player.position(), 0);
    EXPECT_EQ(player.duration(), 0);
}

TEST_F(PlayerTest, ANewSoundStandsStoppedAtItsBeginning)
{
    load(noiseSound(rate, 2, {66150}));
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_EQ(player.position(), 0);
    EXPECT_EQ(player.duration(), 1500);
}

TEST_F(PlayerTest, EveryCommandIsAnsweredAtOnceHoweverLateTheSoundComes)
{
    load(noiseSound(rate, 2, {441000}));
    player.play();
    EXPECT_EQ(player.status(), PlayerEngine::Playing);
    player.seek(5000);
    EXPECT_EQ(player.position(), 5000);
    EXPECT_EQ(player.status(), PlayerEngine::Playing);
    player.pause();
    EXPECT_EQ(player.status(), PlayerEngine::Paused);
    EXPECT_EQ(player.position(), 5000);
    player.seek(7000);
    EXPECT_EQ(player.status(), PlayerEngine::Paused);
    EXPECT_EQ(player.position(), 7000);
    player.resume();
    EXPECT_EQ(player.status(), PlayerEngine::Playing);
    player.stop();
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_EQ(player.position(), 0);
    player.seek(1234);
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_EQ(player.position(), 1234);
    player.stop();
    EXPECT_EQ(player.position(), 0);
}

TEST_F(PlayerTest, TheSoundComesOutBitForBit)
{
    const auto sound = load(noiseSound(rate, 2, {88200}));
    play();
    clock->play(44100);
    const std::vector<float> written = clock->written();
    ASSERT_GE(written.size(), 88200U);
    EXPECT_TRUE(std::equal(written.begin(), written.begin() + 88200, sound->interleaved().begin()));
}

TEST_F(PlayerTest, ThePositionIsWhatIsHeardNotWhatIsRendered)
{
    load(noiseSound(rate, 2, {441000}));
    play();
    clock->play(44100);
    // A second has been heard; two thousand frames more are rendered.
    EXPECT_TRUE(positionComesNear(1000, 15)) << player.position();
    EXPECT_GT(clock->framesWritten(), 44100 + 1000);
}

TEST_F(PlayerTest, AtTheEndItStopsThereAndTellsOnce)
{
    load(noiseSound(rate, 2, {22050}));
    play();
    clock->play(30000);
    ASSERT_TRUE(eventually([this] { return player.status() == PlayerEngine::Stopped; }));
    EXPECT_EQ(player.position(), 500);
    EXPECT_TRUE(player.takeFinished());
    EXPECT_FALSE(player.takeFinished());
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_EQ(player.position(), 500);
    player.stop();
    EXPECT_EQ(player.position(), 0);
}

TEST_F(PlayerTest, PlayAtTheEndBeginsAnew)
{
    load(noiseSound(rate, 2, {22050}));
    play();
    clock->play(30000);
    ASSERT_TRUE(eventually([this] { return player.takeFinished(); }));
    player.play();
    EXPECT_EQ(player.status(), PlayerEngine::Playing);
    EXPECT_EQ(player.position(), 0);
}

TEST_F(PlayerTest, PlayAtAnEndThatNobodyTookNoticeOfBeginsAnewToo)
{
    const auto sound = load(noiseSound(rate, 2, {22050}));
    play();
    clock->play(30000);
    ASSERT_TRUE(eventually([this] { return player.status() == PlayerEngine::Stopped && !clock->running(); }));
    const auto before = static_cast<std::ptrdiff_t>(clock->written().size());
    play();
    EXPECT_EQ(player.status(), PlayerEngine::Playing);
    clock->play(5000);
    const std::vector<float> written = clock->written();
    EXPECT_TRUE(
        std::equal(written.begin() + before, written.begin() + before + 8000, sound->interleaved().begin()));
}

TEST_F(PlayerTest, AfterTheEndTheOutputIsStoppedAndTheThreadSleeps)
{
    load(noiseSound(rate, 2, {4410}));
    play();
    clock->play(30000);
    EXPECT_TRUE(eventually([this] { return !clock->running(); }));
}

TEST_F(PlayerTest, AReversedOrEmptyRangePlaysNothingAndStops)
{
    load(noiseSound(rate, 2, {441000}));
    player.play();
    EXPECT_FALSE(player.playWindow(3000, 2000, true));
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    player.play();
    EXPECT_FALSE(player.playWindow(2000, 2000, true));
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_FALSE(player.playWindow(11000, 12000, true));
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
}

TEST_F(PlayerTest, ARangeBeyondTheSoundIsCutToIt)
{
    const auto sound = load(noiseSound(rate, 2, {44100}));
    ASSERT_TRUE(player.playWindow(900, 5000, true));
    ASSERT_TRUE(eventually([this] { return clock->running(); }));
    clock->play(3 * 4410);
    const std::vector<float> written = clock->written();
    // A tenth of a second over and over: its first frame stands at each multiple of 4410.
    for (const std::size_t pass : {0U, 1U, 2U})
        EXPECT_EQ(written[pass * 4410 * 2], sound->sample(39690, 0));
}

TEST_F(PlayerTest, InALoopThePositionStaysInTheWindow)
{
    load(noiseSound(rate, 2, {441000}));
    ASSERT_TRUE(player.playWindow(2000, 2137, true));
    ASSERT_TRUE(eventually([this] { return clock->running(); }));
    for (int step = 0; step < 200; ++step) {
        clock->play(700);
        ASSERT_GE(player.position(), 2000);
        ASSERT_LE(player.position(), 2137);
    }
}

TEST_F(PlayerTest, ASeekBeyondTheLoopWindowGoesToItsBegin)
{
    load(noiseSound(rate, 2, {441000}));
    ASSERT_TRUE(player.playWindow(2000, 3000, true));
    player.seek(3000);
    EXPECT_EQ(player.position(), 2000);
    player.seek(2500);
    EXPECT_EQ(player.position(), 2500);
}

TEST_F(PlayerTest, AStoppedLoopPlaysOnPlainly)
{
    const auto sound = load(noiseSound(rate, 2, {441000}));
    ASSERT_TRUE(player.playWindow(1000, 1100, true));
    ASSERT_TRUE(eventually([this] { return clock->running(); }));
    player.stop();
    ASSERT_TRUE(eventually([this] {
        clock->play(500);
        return !clock->running();
    }));
    player.seek(1000);
    const auto before = static_cast<std::ptrdiff_t>(clock->written().size());
    play();
    clock->play(20000);
    const std::vector<float> written = clock->written();
    // Longer than the window, and frame after frame.
    EXPECT_TRUE(std::equal(written.begin() + before, written.begin() + before + 20000,
                           sound->interleaved().begin() + 88200));
}

TEST_F(PlayerTest, AnotherSoundReplacesTheOneThatPlays)
{
    load(noiseSound(rate, 2, {441000}));
    play();
    clock->play(10000);
    const auto next = load(noiseSound({48000}, 2, {48000}, 2));
    EXPECT_EQ(player.status(), PlayerEngine::Stopped);
    EXPECT_EQ(player.position(), 0);
    EXPECT_EQ(player.duration(), 1000);
    clock->play(10000);
    ASSERT_TRUE(eventually([this] { return clock->rate() == SampleRate{48000}; }));
    const auto before = static_cast<std::ptrdiff_t>(clock->written().size());
    play();
    clock->play(10000);
    const std::vector<float> written = clock->written();
    EXPECT_TRUE(
        std::equal(written.begin() + before, written.begin() + before + 20000, next->interleaved().begin()));
}

TEST_F(PlayerTest, AReplacedSoundIsReleasedWhenTheRenderThreadHasLetItGo)
{
    std::weak_ptr<MemorySound> first = load(noiseSound(rate, 2, {441000}));
    play();
    clock->play(10000);
    load(noiseSound(rate, 2, {44100}, 2));
    EXPECT_TRUE(eventually([&] {
        clock->play(500);
        player.takeFinished();
        return first.expired();
    }));
}

TEST_F(PlayerTest, AClosedPlayerIsEmptyAndLetsItsSoundGo)
{
    std::weak_ptr<MemorySound> sound = load(noiseSound(rate, 2, {441000}));
    play();
    clock->play(10000);
    player.close();
    EXPECT_EQ(player.status(), PlayerEngine::Empty);
    EXPECT_EQ(player.duration(), 0);
    EXPECT_EQ(player.position(), 0);
    EXPECT_TRUE(eventually([&] {
        clock->play(500);
        player.takeFinished();
        return sound.expired();
    }));
}

TEST_F(PlayerTest, SettingsHoldAcrossSounds)
{
    Settings settings;
    settings.gain = 0;
    player.change(settings);
    load(noiseSound(rate, 2, {44100}));
    play();
    clock->play(10000);
    const std::vector<float> written = clock->written();
    EXPECT_TRUE(std::all_of(written.begin(), written.end(), [](float sample) { return sample == 0; }));
}

TEST_F(PlayerTest, ATempoThatIsChangedWhilePlayingMovesThePositionAtTheNewSpeed)
{
    load(noiseSound(rate, 1, {441000}));
    play();
    clock->play(44100);
    ASSERT_TRUE(positionComesNear(1000, 15));
    Settings settings;
    settings.changes.tempo = 0.5;
    player.change(settings);
    clock->play(88200);
    // Two seconds at half speed, but for the buffer that was rendered before the change: 46 ms at full speed.
    EXPECT_TRUE(positionComesNear(1000 + 1000 + 23, 25)) << player.position();
}

TEST_F(PlayerTest, AHundredSoundsInARowWhilePlayingLeaveNothingBehind)
{
    std::vector<std::weak_ptr<MemorySound>> sounds;
    for (int index = 0; index < 100; ++index) {
        sounds.push_back(load(noiseSound(rate, 2, {4410}, static_cast<unsigned>(index))));
        player.play();
    }
    player.close();
    EXPECT_TRUE(eventually([&] {
        clock->play(500);
        player.takeFinished();
        return std::all_of(sounds.begin(), sounds.end(), [](const auto& sound) { return sound.expired(); });
    }));
}

}  // namespace
