#include "sound/device/PulseSources.h"

#include "sound/device/CaptureRing.h"
#include "sound/device/PrivatePulse.h"
#include "sound/device/SilentServer.h"
#include "sound/device/Wakeup.h"

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;
using ::testing::HasSubstr;
using Clock = std::chrono::steady_clock;

namespace {

const QString mic = "mic.monitor";

class PulseSourcesTest : public ::testing::Test
{
protected:
    PulseSourcesTest()
        : sources(std::make_unique<PulseSources>(patient))
    {
    }

    void startServer()
    {
        ASSERT_TRUE(pulse.start());
        addOutput("mic", serverRate);
    }

    QStringList keys() const
    {
        QStringList all;
        for (const CaptureDevice& device : sources->devices())
            all << device.key;
        return all;
    }

    static std::string volumes() { return pactl({"get-source-volume", mic}); }

    static void expectVolumes(int left, int right)
    {
        EXPECT_THAT(volumes(), HasSubstr("front-left: " + std::to_string(left) + " "));
        EXPECT_THAT(volumes(), HasSubstr("front-right: " + std::to_string(right) + " "));
    }

    PrivatePulse pulse{serverRate};
    std::unique_ptr<PulseSources> sources;
};

TEST_F(PulseSourcesTest, TheDefaultSourceComesFirstAndTheOthersInTheServersOrder)
{
    startServer();
    pactl({"load-module", "module-remap-source", "master=mic.monitor", "source_name=line"});
    pactl({"set-default-source", "line"});
    EXPECT_EQ(keys(), (QStringList{"line", "speakers.monitor", mic}));
    pactl({"set-default-source", mic});
    EXPECT_EQ(keys(), (QStringList{mic, "speakers.monitor", "line"}));
}

TEST_F(PulseSourcesTest, AMonitorHasAReadableNameAndWithoutPortsIsOneLine)
{
    startServer();
    const CaptureDevice device = sources->device(mic);
    EXPECT_EQ(device.key, mic);
    EXPECT_EQ(device.name, "Monitor of MIC");
    EXPECT_EQ(device.rate, serverRate);
    EXPECT_EQ(device.volume, 100);
    ASSERT_EQ(device.lines.size(), 1U);
    EXPECT_EQ(device.lines[0].key, "");
    EXPECT_EQ(device.lines[0].name, "Monitor of MIC");
    EXPECT_EQ(device.currentLine, 0);
}

// pactl takes the server's own numbers: 65536 are 100%.
TEST_F(PulseSourcesTest, TheLevelIsThatOfTheLoudestChannelAndTheOthersKeepTheirProportion)
{
    startServer();
    pactl({"set-source-volume", mic, "40000", "20000"});
    EXPECT_EQ(sources->device(mic).volume, 61);
    sources->setVolume(mic, 50);
    expectVolumes(32768, 16384);
    EXPECT_EQ(sources->device(mic).volume, 50);
    sources->setVolume(mic, 200);
    expectVolumes(65536, 32768);
    sources->setVolume(mic, -3);
    expectVolumes(0, 0);
    EXPECT_EQ(sources->device(mic).volume, 0);
    sources->setVolume(mic, 30);
    expectVolumes(19661, 19661);
}

TEST_F(PulseSourcesTest, ALevelThatIsThereAlreadyIsLeftToTheLastDigit)
{
    startServer();
    pactl({"set-source-volume", mic, "43690"});
    EXPECT_EQ(sources->device(mic).volume, 67);
    sources->setVolume(mic, 67);
    expectVolumes(43690, 43690);
    pactl({"set-source-volume", mic, "98304"});
    EXPECT_EQ(sources->device(mic).volume, 100);
    sources->setVolume(mic, 100);
    expectVolumes(98304, 98304);
}

TEST_F(PulseSourcesTest, ASourceIsSilencedAndHeardAgainAtTheSameLevel)
{
    startServer();
    pactl({"set-source-volume", mic, "43690"});
    sources->setMuted(mic, true);
    EXPECT_EQ(pactl({"get-source-mute", mic}), "Mute: yes\n");
    EXPECT_EQ(pactl({"get-source-mute", "speakers.monitor"}), "Mute: no\n");
    sources->setMuted(mic, false);
    EXPECT_EQ(pactl({"get-source-mute", mic}), "Mute: no\n");
    expectVolumes(43690, 43690);
}

TEST_F(PulseSourcesTest, AKeyThatNamesNothingIsAnsweredAndChangesNothing)
{
    startServer();
    const std::string before = pactl({"list", "sources"});
    for (const QString& key : {QString(), QString("microphone"), QString("@"), QString(5000, 'x')}) {
        EXPECT_EQ(sources->device(key).key, "");
        EXPECT_TRUE(sources->device(key).lines.empty());
        sources->setVolume(key, 5);
        sources->setMuted(key, true);
        sources->selectLine(key, "line");
    }
    sources->selectLine(mic, "line");
    sources->selectLine(mic, "");
    EXPECT_EQ(pactl({"list", "sources"}), before);
    EXPECT_EQ(sources->device(mic).key, mic);
}

TEST_F(PulseSourcesTest, WhatIsNotThereCannotBeCaptured)
{
    CaptureRing ring{{48000}};
    Wakeup reader;
    const CaptureDevice gone{"gone", "Gone", serverRate, 100, {{{}, "Gone"}}, 0};
    const Clock::time_point begun = Clock::now();
    EXPECT_EQ(sources->capture(gone, ring, reader), nullptr);
    startServer();
    EXPECT_EQ(sources->capture(gone, ring, reader), nullptr);
    EXPECT_LT(Clock::now() - begun, patient / 2);
    EXPECT_NE(sources->capture(sources->device(mic), ring, reader), nullptr);
}

TEST_F(PulseSourcesTest, WithoutAServerTheAnswersAreEmptyAtOnceAndItIsAskedAsSoonAsItIsThere)
{
    const Clock::time_point begun = Clock::now();
    EXPECT_TRUE(sources->devices().empty());
    EXPECT_EQ(sources->device(mic).key, "");
    sources->setVolume(mic, 5);
    sources->setMuted(mic, true);
    sources->selectLine(mic, "line");
    EXPECT_LT(Clock::now() - begun, patient / 2);
    startServer();
    EXPECT_EQ(sources->device(mic).key, mic);
}

TEST_F(PulseSourcesTest, AServerThatWasAwayBetweenTwoQuestionsAnswersTheSecond)
{
    const std::function<void()> questions[] = {
        [this] { EXPECT_EQ(keys().size(), 2); },
        [this] { EXPECT_EQ(sources->device(mic).key, mic); },
        [this] {
            sources->setVolume(mic, 25);
            expectVolumes(16384, 16384);
        },
        [this] {
            sources->setMuted(mic, true);
            EXPECT_EQ(pactl({"get-source-mute", mic}), "Mute: yes\n");
        },
    };
    startServer();
    ASSERT_EQ(keys().size(), 2);
    for (const auto& question : questions) {
        pulse.kill();
        startServer();
        question();
    }
}

TEST_F(PulseSourcesTest, AServerThatIsHeldUpIsGivenUpForTheMomentAndAnswersLater)
{
    startServer();
    sources = std::make_unique<PulseSources>(200ms);
    while (sources->device(mic).key != mic) {
    }
    pulse.suspend();
    EXPECT_EQ(sources->device(mic).key, "");
    EXPECT_TRUE(sources->devices().empty());
    pulse.resume();
    const Clock::time_point begun = Clock::now();
    while (sources->device(mic).key != mic && Clock::now() - begun < patient)
        std::this_thread::sleep_for(5ms);
    EXPECT_EQ(sources->device(mic).key, mic);
}

TEST(SilentPulseSourcesTest, AServerThatNeverAnswersIsWaitedForOnceAndNotWithEachQuestion)
{
    SilentServer server;
    ASSERT_TRUE(server.works);
    constexpr auto longestWait = 100ms;
    PulseSources sources(longestWait);
    const Clock::time_point begun = Clock::now();
    for (int question = 0; question < 20; ++question) {
        EXPECT_TRUE(sources.devices().empty());
        sources.setVolume(mic, 5);
    }
    const auto taken = Clock::now() - begun;
    EXPECT_GE(taken, longestWait);
    EXPECT_LT(taken, 10s);
    // Not asked again for a second, however long this machine took for all that.
    EXPECT_LE(server.end(), 1U + static_cast<std::size_t>(taken / 1s));
}

TEST(SilentPulseSourcesTest, ACaptureThatTheServerNeverAnswersIsGivenUp)
{
    SilentServer server;
    ASSERT_TRUE(server.works);
    CaptureRing ring{{48000}};
    Wakeup reader;
    PulseSources sources;
    const Clock::time_point begun = Clock::now();
    EXPECT_EQ(sources.capture({mic, mic, serverRate, 100, {{{}, mic}}, 0}, ring, reader), nullptr);
    EXPECT_LT(Clock::now() - begun, 10s);
}

}  // namespace
