#include "sound/vocals/VocalCanceller.h"

#include "sound/Signals.h"
#include "sound/vocals/StereoSounds.h"

#include <gmock/gmock.h>
#include <algorithm>
#include <cmath>
#include <random>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::size_t twoSeconds = 88200;

// Syllables: five in a second, of eight harmonics, with silence between them.
double singing(std::size_t frame)
{
    const double second = static_cast<double>(frame) / cdRate.hertz;
    const double loudness = std::max(0.0, std::sin(2 * std::numbers::pi * 2.5 * second));
    double sum = 0;
    for (int harmonic = 1; harmonic <= 8; ++harmonic)
        sum += std::sin(2 * std::numbers::pi * 311 * harmonic * second) / harmonic;
    return 0.2 * loudness * sum;
}

Stereo noise(std::size_t frames)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> sample(-0.25F, 0.25F);
    Stereo sound(2 * frames);
    std::generate(sound.begin(), sound.end(), [&] { return sample(random); });
    return sound;
}

Stereo difference(const Stereo& a, const Stereo& b)
{
    Stereo result(a.size());
    std::transform(a.begin(), a.end(), b.begin(), result.begin(), std::minus<>());
    return result;
}

}  // namespace

TEST(VocalCancellerTest, WithoutABandBetweenTheCutOffsEverythingPassesToTheBit)
{
    const Stereo sound = noise(10000);
    EXPECT_EQ(withoutVoice(sound, cdRate, {8000, 8000, 0}), sound);
    EXPECT_EQ(withoutVoice(sound, cdRate, {9000, 200, 30}), sound);
    EXPECT_EQ(withoutVoice(sound, cdRate, {22050, 30000, 0}), sound);
}

TEST(VocalCancellerTest, SilenceStaysSilence)
{
    const Stereo sound = silence(twoSeconds);
    EXPECT_EQ(withoutVoice(sound, cdRate, {}), sound);
}

TEST(VocalCancellerTest, StretchesThatBeginOnTheGridMeetBitForBit)
{
    Stereo sound = noise(60001);
    addAt(sound, 0, singing);
    const Stereo whole = withoutVoice(sound, cdRate, {});
    EXPECT_EQ(withoutVoice(sound, cdRate, {}, 1), whole);
    EXPECT_EQ(withoutVoice(sound, cdRate, {}, 3), whole);
}

TEST(VocalCancellerTest, AStretchOfOneFrameIsThatFrameOfTheSound)
{
    Stereo sound = silence(8192 * 4);
    addAt(sound, 0, singing);
    const Stereo whole = withoutVoice(sound, cdRate, {});

    VocalCanceller canceller(cdRate, {});
    ASSERT_EQ(canceller.grid().value, 8192);
    const auto around = static_cast<std::size_t>(canceller.surroundings().value);
    Stereo from(2 * (2 * around + 1));
    for (std::size_t frame = 0; frame < 2 * around + 1; ++frame) {
        const std::size_t source = frame + 8192 - around;  // wraps round far beyond the end where there is none
        if (source >= 4 * 8192)
            continue;
        from[2 * frame] = sound[2 * source];
        from[2 * frame + 1] = sound[2 * source + 1];
    }
    Stereo to(2);
    canceller.remove(from, to);
    EXPECT_NEAR(to[0], whole[2 * 8192], 1e-6);
    EXPECT_NEAR(to[1], whole[2 * 8192 + 1], 1e-6);
}

class VocalCancellerPanTest : public testing::TestWithParam<int>
{
};

TEST_P(VocalCancellerPanTest, AVoiceAloneGoesWhereItStands)
{
    Stereo sound = silence(twoSeconds);
    addAt(sound, GetParam(), singing);
    const Stereo left = withoutVoice(sound, cdRate, {200, 8000, GetParam()});
    for (const int channel : {0, 1})
        EXPECT_LT(levelOf(middleOf(left, channel)), 0.06 * levelOf(middleOf(sound, channel)) + 1e-6);
}

TEST_P(VocalCancellerPanTest, AnInstrumentAtTheSideKeepsItsLevelAndPlaceUnderAVoice)
{
    const int voice = GetParam();
    const int instrument = voice > 0 ? voice - 70 : voice + 70;
    Stereo music = silence(twoSeconds);
    addAt(music, instrument, tone(1000, cdRate));
    Stereo sound = music;
    addAt(sound, voice, singing);
    const Stereo left = withoutVoice(sound, cdRate, {200, 8000, voice});
    for (const int channel : {0, 1}) {
        const double before = amplitudeAt(middleOf(music, channel), cdRate, 1000);
        const double after = amplitudeAt(middleOf(left, channel), cdRate, 1000);
        EXPECT_NEAR(decibels(after, before), 0, 0.25) << "channel " << channel;
    }
}

TEST_P(VocalCancellerPanTest, MusicWithoutAVoiceStaysAsItIs)
{
    const int voice = GetParam();
    Stereo sound = silence(twoSeconds);
    addAt(sound, voice > 0 ? voice - 60 : voice + 60, tone(440, cdRate));
    addAt(sound, voice > 0 ? voice - 100 : voice + 100, tone(1500, cdRate));
    const Stereo changed = difference(withoutVoice(sound, cdRate, {200, 8000, voice}), sound);
    for (const int channel : {0, 1})
        EXPECT_LT(levelOf(middleOf(changed, channel)), 0.01 * levelOf(middleOf(sound, channel)) + 1e-6);
}

INSTANTIATE_TEST_SUITE_P(OfTheVoice, VocalCancellerPanTest, testing::Values(-100, -60, -30, 0, 1, 30, 60, 100),
                         [](const auto& info) {
                             return (info.param < 0 ? "Left" : "Right") + std::to_string(std::abs(info.param));
                         });

TEST(VocalCancellerTest, ANoteInTheMiddleBelowAndAboveTheCutOffsPassesUntouched)
{
    Stereo sound = silence(2 * twoSeconds);
    addAt(sound, 0, tone(200 / std::cbrt(2.0), cdRate));
    addAt(sound, 0, tone(8000 * std::cbrt(2.0), cdRate));
    const Stereo changed = difference(withoutVoice(sound, cdRate, {200, 8000, 0}), sound);
    for (const int channel : {0, 1})
        EXPECT_LT(decibels(levelOf(middleOf(changed, channel)), levelOf(middleOf(sound, channel))), -80);
}

TEST(VocalCancellerTest, WhatAVoiceTakesWithItStaysBetweenTheCutOffs)
{
    Stereo sound = noise(2 * twoSeconds);
    addAt(sound, 0, singing);
    const Stereo changed = difference(withoutVoice(sound, cdRate, {400, 6000, 0}), sound);
    const std::vector<float> left = middleOf(changed, 0);
    ASSERT_GT(levelOf(left), 0.01);
    for (const double outside : {50.0, 200.0, 311.0, 400 / std::cbrt(2.0), 6000 * std::cbrt(2.0), 10000.0, 20000.0})
        EXPECT_LT(amplitudeAt(left, cdRate, outside), 1e-5) << outside;
}

TEST(VocalCancellerTest, TheBassInTheMiddleKeepsItsHarmonicsWhereNothingElseSounds)
{
    Stereo sound = silence(twoSeconds);
    for (const int harmonic : {1, 2, 3, 4, 5, 6})
        addAt(sound, 0, tone(73.4 * harmonic, cdRate, 0.3 / harmonic));
    const Stereo left = withoutVoice(sound, cdRate, {});
    for (const int harmonic : {3, 4, 5, 6}) {
        const double before = amplitudeAt(middleOf(sound, 0), cdRate, 73.4 * harmonic);
        const double after = amplitudeAt(middleOf(left, 0), cdRate, 73.4 * harmonic);
        EXPECT_GT(decibels(after, before), -3) << harmonic;
    }
}

class VocalCancellerRateTest : public testing::TestWithParam<int>
{
};

TEST_P(VocalCancellerRateTest, AVoiceGoesAndTheSidesStay)
{
    const SampleRate other{GetParam()};
    Stereo sound = silence(2 * static_cast<std::size_t>(other.hertz));
    addAt(sound, 0, tone(1000, other));
    addAt(sound, -80, tone(1700, other));
    const Stereo left = withoutVoice(sound, other, {});
    EXPECT_LT(decibels(amplitudeAt(middleOf(left, 0), other, 1000), amplitudeAt(middleOf(sound, 0), other, 1000)),
              -25);
    EXPECT_NEAR(decibels(amplitudeAt(middleOf(left, 0), other, 1700), amplitudeAt(middleOf(sound, 0), other, 1700)),
                0, 0.1);
}

INSTANTIATE_TEST_SUITE_P(Of, VocalCancellerRateTest, testing::Values(8000, 11025, 48000, 96000, 192000),
                         testing::PrintToStringParamName());

TEST(VocalCancellerTest, AnyCutOffsAndRateGiveFiniteSamplesOfFullScaleNoise)
{
    const Stereo sound = [] {
        Stereo loud = noise(5000);
        std::for_each(loud.begin(), loud.end(), [](float& sample) { sample = sample < 0 ? -1.0F : 1.0F; });
        return loud;
    }();
    const std::vector<VoicePlace> places{{-5, 100, 0},        {0, 1, 0},        {21, 22, -100}, {20000, 22049, 100},
                                         {0, 2147483647, 50}, {1000, 1001, -1}, {19.9, 20, 0}};
    for (const VoicePlace& place : places)
        for (const int hertz : {1, 100, 8000, 44100})
            for (const float sample : withoutVoice(sound, {hertz}, place))
                ASSERT_TRUE(std::abs(sample) < 4) << place.lowCutOff << ' ' << place.highCutOff << ' ' << hertz;
}
