#include "sound/player/RendererBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace sound;
using namespace sound::test;

namespace {

constexpr std::int64_t fadeFrames = 221;  // 5 ms

TEST(RendererTest, AnUnchangedStereoSoundComesOutBitForBitFromItsFirstFrame)
{
    RendererBench bench(noiseSound(cdRate, 2, {50000}));
    bench.play();
    bench.render(50000);
    ASSERT_GE(bench.output.size(), bench.sound().interleaved().size());
    EXPECT_TRUE(
        std::equal(bench.sound().interleaved().begin(), bench.sound().interleaved().end(), bench.output.begin()));
}

TEST(RendererTest, AMonoSoundComesOutBitForBitOnBothSides)
{
    RendererBench bench(noiseSound(cdRate, 1, {20000}));
    bench.play();
    bench.render(20000);
    for (std::int64_t frame = 0; frame < 20000; ++frame) {
        const auto index = static_cast<std::size_t>(2 * frame);
        ASSERT_EQ(bench.output[index], bench.sound().sample(frame, 0));
        ASSERT_EQ(bench.output[index + 1], bench.sound().sample(frame, 0));
    }
}

TEST(RendererTest, BeforePlayThereIsSilence)
{
    RendererBench bench(noiseSound(cdRate, 2, {5000}));
    bench.render(3000);
    EXPECT_TRUE(std::all_of(bench.output.begin(), bench.output.end(), [](float sample) { return sample == 0; }));
    EXPECT_FALSE(bench.renderer.active());
}

TEST(RendererTest, AtItsEndTheSoundIsSilentAndTellsThatItEnded)
{
    RendererBench bench(noiseSound(cdRate, 2, {1000}));
    bench.play();
    bench.render(2000);
    EXPECT_FALSE(bench.renderer.active());
    EXPECT_TRUE(bench.heard().ended);
    EXPECT_EQ(bench.position(), 1000);
    for (std::size_t index = 2000; index < bench.output.size(); ++index)
        ASSERT_EQ(bench.output[index], 0);
}

TEST(RendererTest, TheEndIsOnlyToldWhenItHasBeenHeard)
{
    RendererBench bench(noiseSound(cdRate, 2, {1000}));
    bench.play();
    bench.render(1323);  // three blocks of 441, the end in the last
    EXPECT_FALSE(bench.heard(400).ended);
    EXPECT_TRUE(bench.heard(0).ended);
}

TEST(RendererTest, ASeekWhilePlayingIsExactBehindAShortCrossFade)
{
    RendererBench bench(noiseSound(cdRate, 2, {200000}));
    bench.play();
    bench.render(10 * bench.block());
    bench.seek(123457);
    const std::int64_t before = bench.frames();
    bench.render(20 * bench.block());
    for (std::int64_t frame = bench.block(); frame < 20 * bench.block(); ++frame) {
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (before + frame))],
                  bench.sound().sample(123457 + frame, 0));
    }
}

TEST(RendererTest, APauseFadesOutKeepsThePlaceAndFadesInThere)
{
    RendererBench bench(noiseSound(cdRate, 2, {200000}));
    bench.play();
    bench.render(10 * bench.block());
    const std::int64_t place = bench.frames();
    bench.pause();
    bench.render(10 * bench.block());
    EXPECT_FALSE(bench.renderer.active());
    EXPECT_EQ(bench.position(), static_cast<double>(place));

    bench.resume();
    const std::int64_t resumed = bench.frames();
    bench.render(10 * bench.block());
    for (std::int64_t frame = fadeFrames; frame < 10 * bench.block(); ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (resumed + frame))],
                  bench.sound().sample(place + frame, 0));
}

TEST(RendererTest, NeitherPauseNorResumeNorStopClicks)
{
    RendererBench bench(MemorySound::of(cdRate, 1, {200000}, [](std::int64_t, int) { return 0.8; }));
    bench.play();
    bench.render(5 * bench.block());
    bench.pause();
    bench.render(5 * bench.block());
    bench.resume();
    bench.render(5 * bench.block());
    bench.stop();
    bench.render(5 * bench.block());
    const std::vector<float> left = bench.left();
    // Behind the first frame, which is heard whole, the steepest place is the middle of a five-millisecond fade.
    const double steepest = 0.8 * std::numbers::pi / 2 / fadeFrames;
    EXPECT_LT(largestStep(left), steepest * 1.05);
    EXPECT_EQ(bench.position(), 0);
}

TEST(RendererTest, SeekingWhileStoppedMovesThePlaceAtOnceAndPlayStartsThereWhole)
{
    RendererBench bench(noiseSound(cdRate, 2, {100000}));
    bench.seek(5000);
    EXPECT_EQ(bench.position(), 5000);
    bench.play();
    bench.render(1000);
    for (std::int64_t frame = 0; frame < 1000; ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * frame)], bench.sound().sample(5000 + frame, 0));
}

TEST(RendererTest, WhatIsNotDecodedYetIsWaitedForInSilenceAndNothingIsLost)
{
    RendererBench bench(noiseSound(cdRate, 2, {300000}));
    bench.sound().setAvailable({0});
    bench.play(100000);
    bench.render(10 * bench.block());
    EXPECT_TRUE(bench.renderer.active());
    EXPECT_TRUE(std::all_of(bench.output.begin(), bench.output.end(), [](float sample) { return sample == 0; }));
    EXPECT_EQ(bench.position(), 100000);

    bench.sound().setAvailable({300000});
    const std::int64_t waited = bench.frames();
    bench.render(10 * bench.block());
    for (std::int64_t frame = 0; frame < 10 * bench.block(); ++frame)
        ASSERT_EQ(bench.output[static_cast<std::size_t>(2 * (waited + frame))],
                  bench.sound().sample(100000 + frame, 0));
}

TEST(RendererTest, PeaksAreThoseOfWhatIsHeardNotOfWhatIsRendered)
{
    RendererBench bench(MemorySound::of(cdRate, 2, {44100}, [](std::int64_t frame, int channel) {
        return frame < 4410 ? (channel == 0 ? 0.25 : 0.5) : 0.75;
    }));
    bench.play();
    bench.render(4410);
    EXPECT_EQ(bench.renderer.takePeaks({4410}).left, 0.0F);
    const Peaks heard = bench.renderer.takePeaks({0});
    EXPECT_EQ(heard.left, 0.25F);
    EXPECT_EQ(heard.right, 0.5F);
    EXPECT_EQ(bench.renderer.takePeaks({0}).left, 0.0F);
}

TEST(RendererTest, GainBalanceAndEqualizerReachTheSound)
{
    RendererBench bench(sineSound(cdRate, 2, 1000, 2));
    bench.settings.gain = 50;
    bench.settings.balance = -50;
    bench.settings.equalizer.count = 1;
    bench.settings.equalizer.enabled = true;
    bench.settings.equalizer.band[0] = {1000, 12, 6};
    bench.settingsChanged();
    bench.play();
    bench.render(44100);
    const std::vector<float> left = bench.left();
    const std::vector<float> right = channelOf(bench.output, 2, 1);
    const double wanted = 0.5 * 0.25 * std::pow(10, 6 / 20.0);
    EXPECT_NEAR(amplitudeAt(std::span(left).subspan(22050, 22050), cdRate, 1000), wanted, wanted * 0.01);
    EXPECT_EQ(*std::max_element(right.begin(), right.end()), 0.0F);
}

}  // namespace
