#include "sound/device/PulseMixer.h"

#include "sound/device/PrivatePulse.h"
#include "sound/device/SilentServer.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

using namespace sound;
using namespace sound::test;
using namespace std::chrono_literals;
using ::testing::HasSubstr;
using Clock = std::chrono::steady_clock;

namespace {

/// What the server says of the volumes of its output's channels, and whether it is muted.
std::string volumes()
{
    return pactl({"get-sink-volume", "speakers"}) + pactl({"get-sink-mute", "speakers"});
}

void setVolume(const QStringList& ofChannels)
{
    pactl(QStringList{"set-sink-volume", "speakers"} + ofChannels);
}

struct VolumeRow
{
    const char* name;
    QStringList ofChannels;
    int value;
};

class EachVolume : public ::testing::TestWithParam<VolumeRow>
{
};

TEST_P(EachVolume, IsReadAndLeftAsItWas)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    setVolume(GetParam().ofChannels);
    const std::string before = volumes();
    {
        PulseMixer mixer(patient);
        ASSERT_EQ(mixer.mixerOpen(), 0);
        ASSERT_TRUE(mixer.mixerGetLineControls());
        EXPECT_EQ(mixer.mixerGetControlDetails(), GetParam().value);
    }
    EXPECT_THAT(before, HasSubstr("Volume: front-left: "));
    EXPECT_EQ(volumes(), before);
}

// pactl takes the server's own numbers: 65536 are 100%, and 32768, half of them, 50%.
INSTANTIATE_TEST_SUITE_P(Values, EachVolume,
                         ::testing::Values(VolumeRow{"Full", {"100%"}, 65535}, VolumeRow{"Silent", {"0"}, 0},
                                           VolumeRow{"AlmostSilent", {"1"}, 1},
                                           VolumeRow{"AQuarter", {"16384"}, 16384},
                                           VolumeRow{"AlmostFull", {"65535"}, 65534},
                                           VolumeRow{"AboveFullIsCut", {"150%"}, 65535},
                                           VolumeRow{"TheLoudestOfTheChannels", {"20000", "10000"}, 20000}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PulseMixerTest, ReadsTheVolumeAlsoOfAMutedOutput)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    setVolume({"16384"});
    pactl({"set-sink-mute", "speakers", "1"});
    const std::string before = volumes();
    PulseMixer mixer(patient);
    ASSERT_EQ(mixer.mixerOpen(), 0);
    ASSERT_TRUE(mixer.mixerGetLineControls());
    EXPECT_EQ(mixer.mixerGetControlDetails(), 16384);
    EXPECT_EQ(volumes(), before);
    EXPECT_THAT(before, HasSubstr("Mute: yes"));
}

TEST(PulseMixerTest, ReadsTheDefaultOutputOfSeveral)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    setVolume({"10000"});
    pactl({"load-module", "module-null-sink", "sink_name=phones"});
    pactl({"set-sink-volume", "phones", "20000"});
    pactl({"set-default-sink", "phones"});
    PulseMixer mixer(patient);
    ASSERT_EQ(mixer.mixerOpen(), 0);
    ASSERT_TRUE(mixer.mixerGetLineControls());
    EXPECT_EQ(mixer.mixerGetControlDetails(), 20000);
}

TEST(PulseMixerTest, OpensButFindsNoControlWhereTheServerHasNoOutput)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    pactl({"unload-module", "module-null-sink"});
    PulseMixer mixer(patient);
    EXPECT_EQ(mixer.mixerOpen(), 0);
    EXPECT_FALSE(mixer.mixerGetLineControls());
}

TEST(PulseMixerTest, CannotReadAnOutputThatIsGone)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    PulseMixer mixer(patient);
    ASSERT_EQ(mixer.mixerOpen(), 0);
    ASSERT_TRUE(mixer.mixerGetLineControls());
    pactl({"unload-module", "module-null-sink"});
    EXPECT_EQ(mixer.mixerGetControlDetails(), -1);
}

TEST(PulseMixerTest, CannotReadFromAServerThatIsGone)
{
    PrivatePulse pulse(serverRate);
    ASSERT_TRUE(pulse.start());
    PulseMixer mixer(patient);
    ASSERT_EQ(mixer.mixerOpen(), 0);
    ASSERT_TRUE(mixer.mixerGetLineControls());
    const Clock::time_point begun = Clock::now();
    pulse.kill();
    EXPECT_EQ(mixer.mixerGetControlDetails(), -1);
    EXPECT_LT(Clock::now() - begun, patient / 2);
}

TEST(PulseMixerTest, DoesNotOpenWithoutAServerAndKnowsItAtOnce)
{
    const PrivatePulse pulse(serverRate);  // not started: its socket leads nowhere
    PulseMixer mixer(patient);
    const Clock::time_point begun = Clock::now();
    EXPECT_NE(mixer.mixerOpen(), 0);
    EXPECT_LT(Clock::now() - begun, patient / 2);
}

TEST(PulseMixerTest, GivesAServerThatNeverAnswersUpAfterTheLongestWait)
{
    SilentServer server;
    ASSERT_TRUE(server.works);
    for (const auto longestWait : {50ms, 300ms}) {
        PulseMixer mixer(longestWait);
        const Clock::time_point begun = Clock::now();
        EXPECT_NE(mixer.mixerOpen(), 0);
        EXPECT_GE(Clock::now() - begun, longestWait);
        EXPECT_LT(Clock::now() - begun, longestWait + 10s);
    }
    EXPECT_EQ(server.end(), 2U);
}

TEST(PulseMixerTest, WaitsAThirdOfASecondAtMostUnlessToldOtherwise)
{
    SilentServer server;
    ASSERT_TRUE(server.works);
    PulseMixer mixer;
    const Clock::time_point begun = Clock::now();
    EXPECT_NE(mixer.mixerOpen(), 0);
    EXPECT_GE(Clock::now() - begun, 300ms);
    EXPECT_LE(PulseMixer::usualLongestWait, 333ms);
}

}  // namespace
