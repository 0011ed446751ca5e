#include "sound/player/SoundPlayerEngineTest.h"

#include "sound/media/DecodedSound.h"

#include <gmock/gmock.h>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace sound;
using namespace sound::test;
using ::testing::ElementsAre;

namespace {

TEST_F(SoundPlayerEngineTest, BeforeInitPlayersEveryOperationFailsAsNotInitialized)
{
    EXPECT_EQ(engine.LoadSound(0, "/x.mp3"), code(EngineError::NotInitialized));
    EXPECT_EQ(engine.LastError(), -49);
    engine.PlaySound(0);
    EXPECT_EQ(engine.LastError(), -49);
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 0);
}

TEST_F(SoundPlayerEngineTest, ASecondInitPlayersIsRefused)
{
    init();
    EXPECT_EQ(engine.LastError(), 0);
    init();
    EXPECT_EQ(engine.LastError(), code(EngineError::AlreadyInitialized));
}

TEST_F(SoundPlayerEngineTest, APlayerThatIsNotThereIsAnInvalidPlayer)
{
    init(2);
    EXPECT_EQ(engine.LoadSound(2, "/x.mp3"), -1);
    EXPECT_EQ(engine.LoadSound(-1, "/x.mp3"), -1);
    EXPECT_EQ(engine.LastError(), -1);
}

TEST_F(SoundPlayerEngineTest, OnAnEmptyPlayerTheTransportDoesNothingAndSaysWhy)
{
    init();
    engine.PlaySound(0);
    EXPECT_EQ(engine.LastError(), code(EngineError::NoSoundLoaded));
    engine.PlaySoundRange(0, 0, 1000, -1);
    engine.PauseSound(0);
    engine.ResumeSound(0);
    engine.StopSound(0);
    engine.SeekSound(0, 1000);
    engine.CloseSound(0);
    EXPECT_EQ(engine.LastError(), code(EngineError::NoSoundLoaded));
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetPosition(0), 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(events.empty());
}

TEST_F(SoundPlayerEngineTest, ALoadedSoundStandsInStatusThreeAtZeroWithItsDuration)
{
    init();
    EXPECT_EQ(engine.LoadSound(0, sineFile("a.wav", 1.5)), 0);
    EXPECT_EQ(engine.LastError(), 0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPosition(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 1500);
}

TEST_F(SoundPlayerEngineTest, AFailedLoadKeepsTheOldSound)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 1.5)), 0);
    engine.PlaySound(0);
    EXPECT_EQ(engine.LoadSound(0, files.write("b.mp3", "not a sound")), code(EngineError::InvalidSoundFile));
    EXPECT_EQ(engine.LastError(), -6);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    EXPECT_EQ(engine.GetDuration(0), 1500);
    EXPECT_NE(engine.LoadSound(0, "/no/such/file.mp3"), 0);
    EXPECT_EQ(engine.GetDuration(0), 1500);
}

TEST_F(SoundPlayerEngineTest, StatusesFollowTheCommands)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    engine.PlaySound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.PauseSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 2);
    engine.PauseSound(0);  // only in status 1
    EXPECT_EQ(engine.GetPlayerStatus(0), 2);
    engine.ResumeSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.ResumeSound(0);  // only in status 2
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPosition(0), 0);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.LastError(), 0);
    engine.CloseSound(0);
    EXPECT_EQ(engine.GetPlayerStatus(0), 0);
    EXPECT_EQ(engine.GetDuration(0), 0);
}

TEST_F(SoundPlayerEngineTest, EventsComeThroughTheEventLoopAndNeverOutOfACall)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav")), 0);
    engine.PlaySound(0);
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(eventually([&] { return events.size() == 1; }));
    engine.PlaySound(0);  // plays already: nothing begins
    engine.PauseSound(0);
    engine.ResumeSound(0);
    engine.StopSound(0);
    engine.StopSound(0);  // stands already: nothing ends
    ASSERT_TRUE(eventually([&] { return events.size() == 3; }));
    QCoreApplication::processEvents();
    EXPECT_THAT(events, ElementsAre("playing 0", "playing 0", "stopped 0"));
}

TEST_F(SoundPlayerEngineTest, AtItsNaturalEndTheStatusIsThreeAndSoundFinishedCame)
{
    init();
    loadDecoded(sineFile("a.wav", 0.25));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    ASSERT_TRUE(eventually([&] { return engine.GetPlayerStatus(0) == 3; }));
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
    EXPECT_EQ(engine.GetPosition(0), 250);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPosition(0), 0);
}

TEST_F(SoundPlayerEngineTest, AStopRightBehindTheNaturalEndDoesNotHideThatItFinished)
{
    init();
    loadDecoded(sineFile("a.wav", 0.25));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    // No events meanwhile: the window's timer may come before the engine's own.
    const QDeadlineTimer patience(10000);
    while (engine.GetPlayerStatus(0) != 3 && !patience.hasExpired()) {
    }
    ASSERT_EQ(engine.GetPlayerStatus(0), 3);
    engine.StopSound(0);
    EXPECT_EQ(engine.GetPosition(0), 0);
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
}

TEST_F(SoundPlayerEngineTest, ASegmentPlaysOnceAndFinishes)
{
    init();
    loadDecoded(sineFile("a.wav", 2));
    const int begin = 500;
    EXPECT_EQ(engine.PlaySoundSegment(0, begin, 700), 0);
    EXPECT_EQ(engine.GetPosition(0), 500);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(20000);
    ASSERT_TRUE(eventually([&] { return events.size() == 2; }));
    EXPECT_THAT(events, ElementsAre("playing 0", "finished 0"));
    EXPECT_EQ(engine.GetPosition(0), 700);
}

TEST_F(SoundPlayerEngineTest, AReversedSegmentOrRangeSaysInvalidPosition)
{
    init();
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2)), 0);
    EXPECT_EQ(engine.PlaySoundSegment(0, 700, 500), code(EngineError::InvalidPosition));
    engine.PlaySoundRange(0, 700, 500, -1);
    EXPECT_EQ(engine.LastError(), code(EngineError::InvalidPosition));
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
}

TEST_F(SoundPlayerEngineTest, TwoPlayersPlayEachItsOwn)
{
    init(2);
    ASSERT_EQ(engine.LoadSound(0, sineFile("a.wav", 2)), 0);
    ASSERT_EQ(engine.LoadSound(1, sineFile("b.wav", 3)), 0);
    engine.PlaySound(1);
    EXPECT_EQ(engine.GetPlayerStatus(0), 3);
    EXPECT_EQ(engine.GetPlayerStatus(1), 1);
    EXPECT_EQ(engine.GetDuration(0), 2000);
    EXPECT_EQ(engine.GetDuration(1), 3000);
    engine.PlaySound(0);
    engine.StopSound(1);
    EXPECT_EQ(engine.GetPlayerStatus(0), 1);
    EXPECT_EQ(engine.GetPlayerStatus(1), 3);
    ASSERT_TRUE(eventually([&] { return events.size() == 3; }));
    EXPECT_THAT(events, ElementsAre("playing 1", "playing 0", "stopped 1"));
}

TEST_F(SoundPlayerEngineTest, PeaksAreReportedWhileItPlaysOnceTheMeterIsOn)
{
    init();
    engine.VuMeter().SetVuMeterMode(0, 0);
    loadDecoded(sineFile("a.wav", 5));
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(22050);
    QCoreApplication::processEvents();
    EXPECT_EQ(leftPeak, 0);
    engine.VuMeter().EnableVuMeter(0, 1);
    clock().play(22050);
    ASSERT_TRUE(eventually([&] { return leftPeak > 0; }));
    clock().play(22050);
    // A sine of half of full scale.
    ASSERT_TRUE(eventually([&] { return leftPeak > 16000; }));
    EXPECT_NEAR(leftPeak, 16384, 200);
    EXPECT_NEAR(rightPeak, 16384, 200);
}

struct HeardCase
{
    const char* name;
    float tempo;
    float rate;
    float semitones;
    double expectedHertz;
};

class HeardPitchTest : public SoundPlayerEngineTest, public ::testing::WithParamInterface<HeardCase>
{
};

TEST_P(HeardPitchTest, WhatIsHeardHasThePitchThatTheoryWants)
{
    const HeardCase& heard = GetParam();
    init();
    loadDecoded(sineFile("a.flac", 12));
    engine.ChangeTempo(0, heard.tempo);
    engine.ChangeRate(0, heard.rate);
    engine.ChangePitchCents(0, heard.semitones);
    engine.PlaySound(0);
    ASSERT_TRUE(eventually([&] { return clock().running(); }));
    clock().play(5 * 44100);
    const std::vector<float> left = channelOf(clock().written(), 2, 0);
    const std::span<const float> steady = std::span(left).subspan(44100, 4 * 44100);
    EXPECT_LT(std::abs(centsBetween(measuredFrequency(steady, {44100}, heard.expectedHertz), heard.expectedHertz)),
              0.1);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, HeardPitchTest,
    ::testing::Values(HeardCase{"slower20", -20, 0, 0, 440}, HeardCase{"slower60", -60, 0, 0, 440},
                      HeardCase{"faster60", 60, 0, 0, 440}, HeardCase{"twoSemitonesUp", 0, 0, 2, 493.8833012561241},
                      HeardCase{"anOctaveDown", 0, 0, -12, 220},
                      HeardCase{"aQuarterToneUp", 0, 0, 0.5, 452.8929841231365},
                      HeardCase{"turntable25Up", 0, 25, 0, 550}, HeardCase{"turntable60Down", 0, -60, 0, 176},
                      HeardCase{"slowerAndHigher", -20, 0, 2, 493.8833012561241},
                      HeardCase{"allThree", -20, 25, 2, 617.3541265701551},
                      HeardCase{"beyondTheRangeIsCutToIt", -99, 0, 99, 880}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
